#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace tessary {

/// A video as the library holds it after its registration.
struct LibraryEntry
{
    qint64 id = 0;
    QString videoUrlLeft;
    QString videoName;
    qint64 workspaceId = 0;
    qint64 perspective = 0;
    QString fileFormat3D; ///< the code that was sent, not read from the answer
    bool is3D = false;

    /// None when a key is missing or has the wrong type.
    [[nodiscard]] static std::optional<LibraryEntry> fromAnswer(const QJsonObject& answer,
                                                                const QString& formatCode);
};

} // namespace tessary
