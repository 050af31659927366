#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace tessary {

/// The workspace that an API key belongs to, as the service describes it at sign-in.
struct Workspace
{
    std::optional<qint64> billingDate; ///< always set in a record that the service sent
    QString containerName;
    QString createdAt; ///< as the service words it, not read as a date
    qint64 currentStreamHours = 0;
    bool drmEnabled = false;
    bool encodingEnabled = false;
    qint64 encodingSeconds = 0;
    bool has8k = false;
    qint64 id = 0;
    qint64 maxStreamHours = 0;
    qint64 seats = 0;
    QString streamContainerName;
    bool streamingEnabled = false;
    QStringList userIds;
    std::optional<QString> whitelabelKey; ///< always set in a record that the service sent
    QString workspaceName;
    QString workspaceOwnerId;

    /// None when one of the 17 keys is missing, null or of the wrong type. Other keys are ignored.
    [[nodiscard]] static std::optional<Workspace> fromStartupInformation(const QJsonObject& answer);
};

} // namespace tessary
