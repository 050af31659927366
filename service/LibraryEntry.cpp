#include "service/LibraryEntry.h"

#include "service/JsonReading.h"

namespace tessary {

std::optional<LibraryEntry> LibraryEntry::fromAnswer(const QJsonObject& answer, const QString& formatCode)
{
    const auto id = jsonInteger(answer[QLatin1StringView("id")]);
    const auto videoUrlLeft = jsonString(answer[QLatin1StringView("video_url_left")]);
    const auto videoName = jsonString(answer[QLatin1StringView("video_name")]);
    const auto workspaceId = jsonInteger(answer[QLatin1StringView("workspace_id")]);
    const auto perspective = jsonInteger(answer[QLatin1StringView("perspective")]);
    const auto is3D = jsonBool(answer[QLatin1StringView("is_3d")]);
    if (!id || !videoUrlLeft || !videoName || !workspaceId || !perspective || !is3D) {
        return std::nullopt;
    }
    return LibraryEntry{*id, *videoUrlLeft, *videoName, *workspaceId, *perspective, formatCode, *is3D};
}

} // namespace tessary
