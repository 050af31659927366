#pragma once

#include "app/Program.h"
#include "local/Azurite.h"
#include "local/LocalService.h"

namespace tessary::local {

/// One upload from signing in to the library, made with the program's own window. Every step is printed and
/// saved as a picture.
class DemoTour
{
public:
    /// @param pictureFolder made anew; what it held is gone
    DemoTour(Program& program, LocalService& service, Azurite& azurite, QString pictureFolder);

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
    LocalService& m_service;
    Azurite& m_azurite;
    QString m_pictureFolder;
    int m_steps = 0;
};

} // namespace tessary::local
