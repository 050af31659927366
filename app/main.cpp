#include "app/Program.h"
#include "desktop/ProcessSetup.h"

#include <QGuiApplication>

int main(int argc, char** argv)
{
    tessary::desktop::prepareProcess();
    argc = 1; // the program has no options, so the toolkit's do not count either
    const QGuiApplication application(argc, argv);
    tessary::Program program({});
    return program.run();
}
