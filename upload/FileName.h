#pragma once

#include <QString>
#include <QUrl>

namespace tessary {

/// The last component of a file URL's path, decoded, extension included; a folder's too, with or without a
/// slash at its end. Empty for no URL.
[[nodiscard]] inline QString fileName(const QUrl& file)
{
    return file.adjusted(QUrl::StripTrailingSlash).fileName(QUrl::FullyDecoded);
}

} // namespace tessary
