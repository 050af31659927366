#pragma once

#include "upload/TransferProgress.h"

#include <QList>
#include <QUrl>

#include <stop_token>

namespace tessary {

/// One upload: how it is cancelled, which reaches its requests and its transfers, not its registration, and
/// how far it is. Main thread only.
struct UploadTask
{
    explicit UploadTask(const QList<QUrl>& files) : progress(files) {}

    std::stop_source stop;
    TransferProgress progress;
};

} // namespace tessary
