#pragma once

#include <QString>
#include <QUrl>
#include <QVariant>

namespace tessary::pickers {

/// What a drag or a drop delivers, as the URL of a local file or folder: the bytes of a URL's text in UTF-8,
/// a URL, or an absolute path. Empty when the item is nothing of the kind, or is on another machine.
[[nodiscard]] QUrl fileUrlOf(const QVariant& item);

/// The bytes of the file's name are no UTF-8, so that no text, and no argument of the tool, can name it.
[[nodiscard]] bool hasUnreadableName(const QUrl& file);

/// The file's extension in upper case, and " file".
[[nodiscard]] QString fileKindOf(const QUrl& file);

} // namespace tessary::pickers
