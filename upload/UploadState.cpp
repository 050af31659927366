#include "upload/UploadState.h"

#include <array>

namespace tessary {
namespace {

struct Row
{
    QString statusMessage;
    std::optional<bool> isUploading;
};

const Row& rowOf(UploadState state)
{
    static const auto table = std::to_array<Row>({
        /* Ready */ {QStringLiteral("Ready to upload"), std::nullopt},
        /* FileOrNameMissing */ {QStringLiteral("Select a file and enter a name."), std::nullopt},
        /* FilesOrNameMissing */ {QStringLiteral("Select both files and enter a name."), std::nullopt},
        /* Requesting */ {QStringLiteral("Requesting upload URL..."), true},
        /* Uploading */ {QStringLiteral("Uploading..."), std::nullopt},
        /* Completed */ {QStringLiteral("Upload completed successfully!"), false},
        /* Failed */ {QStringLiteral("Error: "), false},
        /* Cancelled */ {QStringLiteral("Upload canceled"), false},
    });
    return table.at(static_cast<std::size_t>(state));
}

} // namespace

QString statusMessageOf(UploadState state, const QString& description)
{
    return rowOf(state).statusMessage + description;
}

std::optional<bool> isUploadingIn(UploadState state)
{
    return rowOf(state).isUploading;
}

} // namespace tessary
