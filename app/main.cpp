#include "app/Program.h"
#include "desktop/FontsAhead.h"
#include "desktop/ProcessSetup.h"
#include "desktop/Termination.h"

#include <QGuiApplication>

namespace {

int run(char** argv)
{
    int argc = 1; // the program has no options, so the toolkit's do not count either
    std::jthread fonts = tessary::desktop::readFontsAhead();
    const QGuiApplication application(argc, argv);
    fonts = {}; // waits for it
    tessary::Program program({});
    const tessary::desktop::Termination termination;
    QObject::connect(&termination, &tessary::desktop::Termination::requested, &program,
                     &tessary::Program::quit);
    return program.run();
}

} // namespace

int main(int /*argc*/, char** argv)
{
    tessary::desktop::prepareProcess();
    const int status = run(argv);
    tessary::desktop::endAsRequested();
    return status;
}
