#pragma once

#include "app/Program.h"
#include "standins/Azurite.h"
#include "standins/LocalService.h"

#include <QString>

namespace tessary::showcase {

/// One upload from signing in to the library, made with the program's own window. Every step is printed and
/// saved as a picture.
class DemoTour
{
public:
    /// @param pictureFolder made anew; what it held is gone
    DemoTour(Program& program, standins::LocalService& service, standins::Azurite& azurite,
             QString pictureFolder);

    /// True only when the video is in the library and its blob equals the file. Runs the event loop
    /// meanwhile.
    [[nodiscard]] bool run();

private:
    bool signIn();
    bool fillForm();
    bool upload();
    bool checkLibrary();
    bool step(const QString& what, bool done);

    Program& m_program;
    standins::LocalService& m_service;
    standins::Azurite& m_azurite;
    QString m_pictureFolder;
    int m_steps = 0;
};

} // namespace tessary::showcase
