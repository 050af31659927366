#pragma once

#include "app/Program.h"
#include "app/tessary_macos_uploaderApp.h"
#include "upload/UploadActivity.h"

#include <QtQml/qqml.h>

// What windows know besides their screens. There is one of each for the whole run.
namespace tessary::qml {

struct UploadActivityType
{
    Q_GADGET
    QML_FOREIGN(tessary::UploadActivity)
    QML_NAMED_ELEMENT(UploadActivity)
    QML_UNCREATABLE("")
};

struct ApplicationType
{
    Q_GADGET
    QML_FOREIGN(tessary::tessary_macos_uploaderApp)
    QML_NAMED_ELEMENT(UploaderApp)
    QML_UNCREATABLE("")
};

struct ProgramType
{
    Q_GADGET
    QML_FOREIGN(tessary::Program)
    QML_NAMED_ELEMENT(Program)
    QML_UNCREATABLE("")
};

} // namespace tessary::qml
