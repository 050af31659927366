#pragma once

#include "standins/BlobStore.h"
#include "standins/Fault.h"
#include "standins/ReceivedForm.h"

#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace tessary::standins {

struct RegisteredVideo
{
    qint64 id = 0;
    qint64 workspaceId = 0;
    QString uploadedUrl;
    std::optional<QString> uploadedUrlRight;
    QString fileFormat3D;
    bool is3D = false;
    qint64 perspective = 0;
    QString videoName;
};

struct LocalWorkspace
{
    QString key; ///< what a person types to sign in
    qint64 id;
    QString name;
    QString container;
};

/// The workspaces that there are.
[[nodiscard]] const std::vector<LocalWorkspace>& localWorkspaces();

/// The workspace that a key opens; null for any other key.
[[nodiscard]] const LocalWorkspace* workspaceOf(const QString& key);

/// What the local service knows and answers: signs upload URLs for a blob store and holds what was
/// registered, in memory.
class VideoLibrary
{
public:
    explicit VideoLibrary(BlobStore store) : m_store(std::move(store)) {}

    [[nodiscard]] const std::vector<RegisteredVideo>& videos() const { return m_videos; }

    /// Every upload URL that was made, in order.
    [[nodiscard]] const QStringList& issuedUrls() const { return m_issuedUrls; }

    [[nodiscard]] static Answer startupInformation(const LocalWorkspace& workspace);
    [[nodiscard]] static Answer rejection(int status, const QString& reason);
    [[nodiscard]] Answer uploadUrl(const LocalWorkspace& workspace, const ReceivedForm& form);
    [[nodiscard]] Answer registerVideo(const LocalWorkspace& workspace, const ReceivedForm& form);

    /// Each video comes with the signed address of its first file, for a look at what arrived there.
    [[nodiscard]] Answer list(const LocalWorkspace& workspace) const;

private:
    /// The signed address that was handed out for a blob; empty when there was none.
    [[nodiscard]] QString issuedUrl(const QString& blobUrl) const;

    BlobStore m_store;
    std::vector<RegisteredVideo> m_videos;
    QStringList m_issuedUrls;
};

} // namespace tessary::standins
