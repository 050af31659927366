#pragma once

#include <QString>
#include <QUrl>
#include <QVariant>

namespace tessary::pickers {

/// What a drag or a drop delivers, as the URL of a local file or folder: the bytes of a URL's text in UTF-8,
/// a URL, or an absolute path. Empty when the item is nothing of the kind.
[[nodiscard]] QUrl fileUrlOf(const QVariant& item);

/// The file's extension in upper case, and " file".
[[nodiscard]] QString fileKindOf(const QUrl& file);

} // namespace tessary::pickers
