#pragma once

#include <QByteArray>
#include <QString>

namespace tessary {

/// A video as the library holds it after its registration.
struct LibraryEntry
{
    qint64 id{};
    QString videoUrlLeft;
    QString videoName;
    qint64 workspaceId{};
    qint64 perspective{};
    QString fileFormat3D; ///< the code that was sent, not read from the answer
    bool is3D{};

    /// Decodes the service's answer. Throws LibraryDataError, after printing why: noData for a list,
    /// insertError for everything else that is no entry.
    [[nodiscard]] static LibraryEntry fromAnswer(const QByteArray& body, const QString& formatCode);
};

} // namespace tessary
