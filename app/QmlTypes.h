#pragma once

#include "app/AppManager.h"
#include "app/KeyForm.h"
#include "app/Program.h"
#include "app/SessionManager.h"
#include "app/UploaderStateHolder.h"
#include "app/tessary_macos_uploaderApp.h"
#include "upload/FileUploaderState.h"
#include "upload/UploadActivity.h"

#include <QtQml/qqml.h>

// The state types live in a library without QML; these lines make them known to it.
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

struct UploadActivityType
{
    Q_GADGET
    QML_FOREIGN(tessary::UploadActivity)
    QML_NAMED_ELEMENT(UploadActivity)
    QML_UNCREATABLE("There is one for the whole run.")
};

struct ApplicationType
{
    Q_GADGET
    QML_FOREIGN(tessary::tessary_macos_uploaderApp)
    QML_NAMED_ELEMENT(UploaderApp)
    QML_UNCREATABLE("There is one for the whole run.")
};

struct ProgramType
{
    Q_GADGET
    QML_FOREIGN(tessary::Program)
    QML_NAMED_ELEMENT(Program)
    QML_UNCREATABLE("There is one for the whole run.")
};

struct FileUploaderStateType
{
    Q_GADGET
    QML_FOREIGN(tessary::FileUploaderState)
    QML_NAMED_ELEMENT(FileUploaderState)
    QML_UNCREATABLE("A screen gets its state from an UploaderStateHolder.")
};

struct UploaderStateHolderType
{
    Q_GADGET
    QML_FOREIGN(tessary::UploaderStateHolder)
    QML_NAMED_ELEMENT(UploaderStateHolder)
};

struct KeyFormType
{
    Q_GADGET
    QML_FOREIGN(tessary::KeyForm)
    QML_NAMED_ELEMENT(KeyForm)
};

struct ChangeKeyFormType
{
    Q_GADGET
    QML_FOREIGN(tessary::ChangeKeyForm)
    QML_NAMED_ELEMENT(ChangeKeyForm)
};

} // namespace tessary::qml
