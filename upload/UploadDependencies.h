#pragma once

#include "service/APIService.h"

#include <functional>
#include <optional>

namespace tessary {

class UploadActivity;

/// What an upload needs from outside its screen. A plain value; what it points at outlives every upload.
struct UploadDependencies
{
    std::function<std::optional<QString>()> apiKey; ///< the key in use, asked for at each request
    UploadActivity* activity;
    APIService apiService;
    QString resourcesFolder; ///< where the transfer tool lies
};

} // namespace tessary
