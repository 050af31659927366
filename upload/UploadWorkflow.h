#pragma once

#include "upload/UploadDependencies.h"
#include "upload/UploadListener.h"

#include <QList>
#include <QUrl>

#include <memory>

namespace tessary {

/// Starts one upload of the given files as a task of its own and returns before any of it has run. The task
/// asks for an upload URL per file, copies the files, and hands over to the registration; it says everything
/// to the screen, which it keeps alive. Files and upload URLs are paired in the order in which the URLs come
/// in.
void startUploadTask(std::shared_ptr<UploadListener> screen, std::shared_ptr<UploadTask> task,
                     QList<QUrl> files, UploadDependencies dependencies);

} // namespace tessary
