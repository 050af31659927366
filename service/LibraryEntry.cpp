#include "service/LibraryEntry.h"

#include "service/Diagnostics.h"
#include "service/Error.h"
#include "service/JsonReading.h"

#include <QJsonObject>

namespace tessary {
namespace {

Error insertError(const QString& reason)
{
    printDeserializingError(reason);
    return toError(LibraryDataError::insertError);
}

} // namespace

LibraryEntry LibraryEntry::fromAnswer(const QByteArray& body, const QString& formatCode)
{
    const JsonReading reading = readJson(body);
    if (!reading.document) {
        throw insertError(reading.problem);
    }
    if (!reading.document->isObject()) {
        printLine(u"Did not return the data correctly");
        throw toError(LibraryDataError::noData);
    }
    const QJsonObject answer = reading.document->object();
    const auto id = jsonInteger(answer[QLatin1StringView("id")]);
    const auto videoUrlLeft = jsonString(answer[QLatin1StringView("video_url_left")]);
    const auto videoName = jsonString(answer[QLatin1StringView("video_name")]);
    const auto workspaceId = jsonInteger(answer[QLatin1StringView("workspace_id")]);
    const auto perspective = jsonInteger(answer[QLatin1StringView("perspective")]);
    const auto is3D = jsonBool(answer[QLatin1StringView("is_3d")]);
    if (!id || !videoUrlLeft || !videoName || !workspaceId || !perspective || !is3D) {
        throw insertError(QStringLiteral("noData"));
    }
    return LibraryEntry{*id, *videoUrlLeft, *videoName, *workspaceId, *perspective, formatCode, *is3D};
}

} // namespace tessary
