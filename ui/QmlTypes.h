#pragma once

#include "app/session/AppManager.h"
#include "app/session/SessionManager.h"
#include "upload/FailureReport.h"
#include "upload/FileUploaderState.h"
#include "upload/UploaderStateFactory.h"

#include <QtQml/qqml.h>

// The state types live in rooms without QML; these lines make them known to it.
namespace tessary::qml {

struct AppManagerType
{
    Q_GADGET
    QML_FOREIGN(tessary::AppManager)
    QML_NAMED_ELEMENT(AppManager)
    QML_UNCREATABLE("There is one for the whole run.")
};

struct SessionManagerType
{
    Q_GADGET
    QML_FOREIGN(tessary::SessionManager)
    QML_NAMED_ELEMENT(SessionManager)
    QML_UNCREATABLE("There is one for the whole run.")
};

struct FailureReportType
{
    Q_GADGET
    QML_FOREIGN(tessary::FailureReport)
    QML_NAMED_ELEMENT(FailureReport)
    QML_UNCREATABLE("It comes with an upload that failed.")
};

struct UploaderStateFactoryType
{
    Q_GADGET
    QML_FOREIGN(tessary::UploaderStateFactory)
    QML_NAMED_ELEMENT(UploaderStateFactory)
    QML_UNCREATABLE("There is one for the whole run.")
};

struct FileUploaderStateType
{
    Q_GADGET
    QML_FOREIGN(tessary::FileUploaderState)
    QML_NAMED_ELEMENT(FileUploaderState)
    QML_UNCREATABLE("A screen gets its state from an UploaderStateHolder.")
};

} // namespace tessary::qml
