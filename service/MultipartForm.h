#pragma once

#include <QByteArray>
#include <QString>

namespace tessary {

/// "Boundary-" and a fresh random UUID in upper case: 45 characters.
[[nodiscard]] QByteArray makeBoundary();

/// Appends one part to the body. Name and value go in verbatim, as UTF-8: nothing is quoted or escaped.
void appendFormField(const QString& name, const QString& value, QByteArray& body, const QByteArray& boundary);

/// Appends the line that ends the body.
void appendClosingLine(QByteArray& body, const QByteArray& boundary);

} // namespace tessary
