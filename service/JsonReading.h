#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QString>

#include <optional>

namespace tessary {

/// A parsed document, or why the bytes are none (in words for a person, without quoting the bytes).
struct JsonReading
{
    std::optional<QJsonDocument> document;
    QString problem;
};

/// Parses a whole document whose top level is an object or an array.
[[nodiscard]] JsonReading readJson(const QByteArray& bytes);

/// A number that converts exactly to 64 bits: 7 and 7.0, not 7.5, 1e30, true or null.
[[nodiscard]] std::optional<qint64> jsonInteger(const QJsonValue& value);

/// As jsonInteger(); true and false also read, as 1 and 0.
[[nodiscard]] std::optional<qint64> jsonIntegerOrBool(const QJsonValue& value);

/// true or false; the numbers 1 and 0 also read.
[[nodiscard]] std::optional<bool> jsonBool(const QJsonValue& value);

[[nodiscard]] std::optional<QString> jsonString(const QJsonValue& value);

} // namespace tessary
