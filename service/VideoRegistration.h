#pragma once

#include <QString>

#include <optional>

namespace tessary {

/// What the library is told of an uploaded video.
struct VideoRegistration
{
    QString uploadedUrl; ///< the blob's address, without the permission to write it
    std::optional<QString> uploadedUrlRight;
    QString fileFormat; ///< a display name of VideoFormat, sent as its code
    bool is3D{};
    qint64 perspective{}; ///< in degrees
    QString videoName;
};

} // namespace tessary
