#pragma once

#include <QString>

#include <optional>

namespace tessary {

/// Where a screen's current upload stands, as the screen says it.
enum class UploadState {
    Ready,
    FileOrNameMissing,
    FilesOrNameMissing,
    Requesting,
    Uploading,
    Completed,
    Failed,
    Cancelled
};

/// The status line of a state.
/// @param description of what failed; the other states have none
[[nodiscard]] QString statusMessageOf(UploadState state, const QString& description = {});

/// What entering the state sets the screen's flag to; none where it leaves it as it is.
[[nodiscard]] std::optional<bool> isUploadingIn(UploadState state);

} // namespace tessary
