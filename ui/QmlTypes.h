#pragma once

#include "app/session/AppManager.h"
#include "app/session/SessionManager.h"
#include "upload/FailureReport.h"
#include "upload/FileUploaderState.h"
#include "upload/UploaderStateFactory.h"

#include <QtQml/qqml.h>

// The state types live in rooms without QML; these lines make them known to it. None is made there: a screen
// gets its state from an UploaderStateHolder, a failed upload brings its report, and of the others there is
// one for the whole run.
namespace tessary::qml {

struct AppManagerType
{
    Q_GADGET
    QML_FOREIGN(tessary::AppManager)
    QML_NAMED_ELEMENT(AppManager)
    QML_UNCREATABLE("")
};

struct SessionManagerType
{
    Q_GADGET
    QML_FOREIGN(tessary::SessionManager)
    QML_NAMED_ELEMENT(SessionManager)
    QML_UNCREATABLE("")
};

struct FailureReportType
{
    Q_GADGET
    QML_FOREIGN(tessary::FailureReport)
    QML_NAMED_ELEMENT(FailureReport)
    QML_UNCREATABLE("")
};

struct UploaderStateFactoryType
{
    Q_GADGET
    QML_FOREIGN(tessary::UploaderStateFactory)
    QML_NAMED_ELEMENT(UploaderStateFactory)
    QML_UNCREATABLE("")
};

struct FileUploaderStateType
{
    Q_GADGET
    QML_FOREIGN(tessary::FileUploaderState)
    QML_NAMED_ELEMENT(FileUploaderState)
    QML_UNCREATABLE("")
};

} // namespace tessary::qml
