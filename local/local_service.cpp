// The local service, and a blob store where it is asked for, as a process of their own: what they use is then
// not the program's. Prints the API root and lives until its standard input ends.

#include "local/Azurite.h"
#include "local/LocalService.h"
#include "service/Diagnostics.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <exception>
#include <optional>
#include <unistd.h>

using namespace tessary;
using namespace tessary::local;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    try {
        std::optional<Azurite> azurite;
        if (QCoreApplication::arguments().contains(QStringLiteral("--store"))) {
            azurite.emplace();
            for (const LocalWorkspace& workspace : localWorkspaces()) {
                azurite->createContainer(workspace.container);
            }
        }
        const LocalService service = azurite ? LocalService(azurite->store()) : LocalService();
        QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
        QObject::connect(&input, &QSocketNotifier::activated, &application, [] {
            std::array<char, 64> ignored{};
            if (read(STDIN_FILENO, ignored.data(), ignored.size()) <= 0) {
                QCoreApplication::quit();
            }
        });
        printLine(service.baseUrl());
        return QCoreApplication::exec();
    } catch (const std::exception& problem) {
        warnLine(QString::fromUtf8(problem.what()));
        return EXIT_FAILURE;
    }
}
