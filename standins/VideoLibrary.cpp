#include "standins/VideoLibrary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

#include <algorithm>

namespace tessary::standins {
namespace {

constexpr std::chrono::hours uploadUrlValidity{4};
constexpr qint64 firstVideoId = 1001;

template <typename Json>
QByteArray compact(const Json& json)
{
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

QJsonObject toJson(const RegisteredVideo& video)
{
    QJsonObject json{{QStringLiteral("id"), video.id},
                     {QStringLiteral("workspace_id"), video.workspaceId},
                     {QStringLiteral("video_url_left"), video.uploadedUrl},
                     {QStringLiteral("file_format_3d"), video.fileFormat3D},
                     {QStringLiteral("is_3d"), video.is3D},
                     {QStringLiteral("perspective"), video.perspective},
                     {QStringLiteral("video_name"), video.videoName}};
    if (video.uploadedUrlRight) {
        json[QStringLiteral("video_url_right")] = *video.uploadedUrlRight;
    }
    return json;
}

} // namespace

const std::vector<LocalWorkspace>& localWorkspaces()
{
    static const std::vector<LocalWorkspace> workspaces{
        {QStringLiteral("harbor-demo-key"), 11, QStringLiteral("Harbor Films"), QStringLiteral("harbor")},
        {QStringLiteral("meadow-demo-key"), 12, QStringLiteral("Meadow Studio"), QStringLiteral("meadow")},
    };
    return workspaces;
}

const LocalWorkspace* workspaceOf(const QString& key)
{
    const auto& all = localWorkspaces();
    const auto found =
        std::find_if(all.begin(), all.end(), [&key](const auto& one) { return one.key == key; });
    return found == all.end() ? nullptr : &*found;
}

Answer VideoLibrary::startupInformation(const LocalWorkspace& workspace)
{
    const QJsonObject json{
        {QStringLiteral("billing_date"), 15},
        {QStringLiteral("container_name"), workspace.container},
        {QStringLiteral("created_at"), QStringLiteral("2024-05-01T09:30:00Z")},
        {QStringLiteral("current_stream_hours"), 3},
        {QStringLiteral("drm_enabled"), 0},
        {QStringLiteral("encoding_enabled"), 1},
        {QStringLiteral("encoding_seconds"), 5400},
        {QStringLiteral("has_8k"), 1},
        {QStringLiteral("id"), workspace.id},
        {QStringLiteral("max_stream_hours"), 200},
        {QStringLiteral("seats"), 5},
        {QStringLiteral("stream_container_name"), workspace.container + QStringLiteral("-stream")},
        {QStringLiteral("streaming_enabled"), 1},
        {QStringLiteral("user_ids"), QJsonArray{QStringLiteral("user-1")}},
        {QStringLiteral("whitelabel_key"), QString()},
        {QStringLiteral("workspace_name"), workspace.name},
        {QStringLiteral("workspace_owner_id"), QStringLiteral("user-1")}};
    return {200, compact(json)};
}

Answer VideoLibrary::rejection(int status, const QString& reason)
{
    return {status, compact(QJsonObject{{QStringLiteral("error"), reason}})};
}

Answer VideoLibrary::uploadUrl(const LocalWorkspace& workspace, const ReceivedForm& form)
{
    const QString fileName = form.value(QStringLiteral("uniqueFileName"));
    if (fileName.isEmpty()) {
        return rejection(400, QStringLiteral("a file name is missing"));
    }
    const QString blob = QUuid::createUuid().toString(QUuid::Id128) + u'/' + fileName;
    m_issuedUrls.append(
        m_store.signedBlobUrl(workspace.container, blob, QStringLiteral("rcw"), uploadUrlValidity));
    return {200, compact(QJsonObject{{QStringLiteral("sasUrl"), m_issuedUrls.last()}})};
}

Answer VideoLibrary::registerVideo(const LocalWorkspace& workspace, const ReceivedForm& form)
{
    RegisteredVideo video;
    video.id = firstVideoId + static_cast<qint64>(m_videos.size());
    video.workspaceId = workspace.id;
    video.uploadedUrl = form.value(QStringLiteral("uploadedUrl"));
    if (form.contains(QStringLiteral("uploadedUrlRight"))) {
        video.uploadedUrlRight = form.value(QStringLiteral("uploadedUrlRight"));
    }
    video.fileFormat3D = form.value(QStringLiteral("fileFormat3D"));
    video.is3D = form.value(QStringLiteral("is3D")) == u"true";
    bool isNumber = false;
    video.perspective = form.value(QStringLiteral("perspective")).toLongLong(&isNumber);
    video.videoName = form.value(QStringLiteral("videoName"));
    if (video.uploadedUrl.isEmpty() || video.fileFormat3D.isEmpty() || video.videoName.isEmpty() ||
        !isNumber) {
        return rejection(400, QStringLiteral("the description of the video is incomplete"));
    }
    m_videos.push_back(video);
    return {200, compact(toJson(video))};
}

Answer VideoLibrary::list(const LocalWorkspace& workspace) const
{
    QJsonArray json;
    for (const RegisteredVideo& video : m_videos) {
        if (video.workspaceId == workspace.id) {
            QJsonObject entry = toJson(video);
            entry[QStringLiteral("signed_url_left")] = issuedUrl(video.uploadedUrl);
            json.append(entry);
        }
    }
    return {200, compact(json)};
}

QString VideoLibrary::issuedUrl(const QString& blobUrl) const
{
    const auto issued = std::find_if(m_issuedUrls.begin(), m_issuedUrls.end(),
                                     [&](const QString& url) { return url.startsWith(blobUrl + u'?'); });
    return issued == m_issuedUrls.end() ? QString() : *issued;
}

} // namespace tessary::standins
