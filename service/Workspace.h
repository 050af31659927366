#pragma once

#include <QByteArray>
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
    qint64 currentStreamHours{};
    bool drmEnabled{};
    bool encodingEnabled{};
    qint64 encodingSeconds{};
    bool has8k{};
    qint64 id{};
    qint64 maxStreamHours{};
    qint64 seats{};
    QString streamContainerName;
    bool streamingEnabled{};
    QStringList userIds;
    std::optional<QString> whitelabelKey; ///< always set in a record that the service sent
    QString workspaceName;
    QString workspaceOwnerId;

    /// Decodes the service's answer, which names its keys differently; keys it does not know are ignored.
    /// None for a list. Throws APIServiceError::invalidURL, after printing why, when one of the 17 values is
    /// missing, null or of the wrong type, and NotJsonError when the answer is not JSON.
    [[nodiscard]] static std::optional<Workspace> fromAnswer(const QByteArray& body);

    /// The record's own form: its members by their names, without those that are not set.
    [[nodiscard]] QJsonObject toJson() const;

    /// None when a value is missing or of the wrong type; what may be unset may be missing or null.
    [[nodiscard]] static std::optional<Workspace> fromJson(const QJsonObject& json);
};

} // namespace tessary
