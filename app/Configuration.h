#pragma once

#include "app/session/StoredApiKey.h"
#include "service/APIService.h"
#include "upload/TransferTool.h"

#include <QString>

namespace tessary {

/// Where the program finds its service, its settings and its resources. The defaults are the shipped
/// program's, which nothing changes; tests and the demo give others.
struct Configuration
{
    QString baseUrl = standardBaseUrl();
    QString settingsFolder = StoredApiKey::standardFolder();
    QString resourcesFolder = standardResourcesFolder();
};

} // namespace tessary
