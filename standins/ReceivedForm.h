#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace tessary::standins {

/// Field names to values, verbatim.
using ReceivedForm = QHash<QString, QString>;

/// Reads a multipart form. None when the header names no boundary or the body is not framed with it.
[[nodiscard]] std::optional<ReceivedForm> readForm(const QByteArray& contentType, const QByteArray& body);

} // namespace tessary::standins
