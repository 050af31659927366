#include "service/SASUrlResponse.h"

#include "service/Error.h"
#include "service/JsonReading.h"

#include <QJsonObject>

namespace tessary {
namespace {

enum class DecodingError { dataCorrupted, keyNotFound, typeMismatch };

Error decodingError(DecodingError error, const QString& reason)
{
    return {QStringLiteral("SASUrlResponse"), static_cast<int>(error),
            QStringLiteral("The service did not answer with an upload URL: %1.").arg(reason)};
}

} // namespace

SASUrlResponse SASUrlResponse::fromAnswer(const QByteArray& body)
{
    const JsonReading reading = readJson(body);
    if (!reading.document) {
        throw decodingError(DecodingError::dataCorrupted, reading.problem);
    }
    if (!reading.document->isObject()) {
        throw decodingError(DecodingError::typeMismatch,
                            QStringLiteral("the answer is a list, not an object"));
    }
    const QJsonObject object = reading.document->object();
    const auto found = object.constFind(QLatin1StringView("sasUrl"));
    if (found == object.constEnd()) {
        throw decodingError(DecodingError::keyNotFound, QStringLiteral("\"sasUrl\" is missing"));
    }
    const std::optional<QString> sasUrl = jsonString(*found);
    if (!sasUrl) {
        throw decodingError(DecodingError::typeMismatch, QStringLiteral("\"sasUrl\" is not a text"));
    }
    return {*sasUrl};
}

} // namespace tessary
