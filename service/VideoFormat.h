#pragma once

#include <QString>
#include <QStringList>

namespace tessary::VideoFormat {

/// The names of the frame formats, in the order in which they are offered.
[[nodiscard]] const QStringList& names();

/// The viewing perspectives in degrees, as bare digits, in the order in which they are offered.
[[nodiscard]] const QStringList& perspectives();

/// The one format whose frames come as a left-eye and a right-eye file.
[[nodiscard]] const QString& separate();

/// The one format whose perspective is fixed, and the perspective that it has.
[[nodiscard]] const QString& immersive();
[[nodiscard]] const QString& immersivePerspective();

[[nodiscard]] const QString& defaultName();
[[nodiscard]] const QString& defaultPerspective();

/// The short code that the service wants. An unknown name has the code of the default format.
[[nodiscard]] QString fileFormatCode(const QString& name);

/// False for the flat format only, so an unknown name counts as 3D.
[[nodiscard]] bool is3D(const QString& name);

/// Reads an optionally signed decimal integer of 64 bits and nothing else; 180 for any other text.
[[nodiscard]] qint64 perspectiveNumber(const QString& text);

} // namespace tessary::VideoFormat
