#include "service/JsonReading.h"

#include <QJsonParseError>

namespace tessary {

JsonReading readJson(const QByteArray& bytes)
{
    if (bytes.isEmpty()) {
        return {std::nullopt, QStringLiteral("the answer is empty")};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        return {std::nullopt, QStringLiteral("the answer is not valid JSON (%1 at byte %2 of %3)")
                                  .arg(error.errorString())
                                  .arg(error.offset)
                                  .arg(bytes.size())};
    }
    return {document, {}};
}

std::optional<qint64> jsonInteger(const QJsonValue& value)
{
    // 0 for what is no number, or one that does not convert exactly.
    const qint64 number = value.toInteger();
    return value == QJsonValue(number) ? std::optional(number) : std::nullopt;
}

std::optional<qint64> jsonIntegerOrBool(const QJsonValue& value)
{
    return value.isBool() ? std::optional<qint64>(value.toBool() ? 1 : 0) : jsonInteger(value);
}

std::optional<bool> jsonBool(const QJsonValue& value)
{
    const std::optional<qint64> number = jsonIntegerOrBool(value);
    return number == 0 || number == 1 ? std::optional(number == 1) : std::nullopt;
}

std::optional<QString> jsonString(const QJsonValue& value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

} // namespace tessary
