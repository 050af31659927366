#include "desktop/ProcessSetup.h"

#include <QTemporaryFile>
#include <QTest>

#include <array>
#include <fcntl.h>
#include <functional>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tessary::desktop;

namespace {

using MakeInput = std::function<int()>;

int filledFile(const QByteArray& content)
{
    QTemporaryFile file;
    if (!file.open() || file.write(content) != content.size() || !file.flush()) {
        return -1;
    }
    return open(qPrintable(file.fileName()), O_RDONLY);
}

int pipeWhoseWriter(bool isThere)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return -1;
    }
    if (!isThere) {
        close(ends[1]);
    }
    return ends[0];
}

/// What a child process finds after the set-up with that standard input; exit statuses of it.
enum Finding { Idle = 0, SomethingToRead = 1, AtEnd = 2, CoreFilesOn = 3 };

int findingWith(const MakeInput& makeInput)
{
    const pid_t child = fork();
    if (child == 0) {
        const int input = makeInput();
        close(STDIN_FILENO);
        if (input >= 0) {
            dup2(input, STDIN_FILENO);
        }
        prepareProcess();
        rlimit core{};
        getrlimit(RLIMIT_CORE, &core);
        pollfd readable{STDIN_FILENO, POLLIN, 0};
        char byte = 0;
        int finding = Idle;
        if (core.rlim_cur != 0) {
            finding = CoreFilesOn;
        } else if (poll(&readable, 1, 0) > 0) {
            finding = read(STDIN_FILENO, &byte, 1) == 1 ? SomethingToRead : AtEnd;
        }
        _exit(finding);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

} // namespace

class ProcessSetupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standardInput_data();
    void standardInput();
};

void ProcessSetupTest::standardInput_data()
{
    QTest::addColumn<MakeInput>("makeInput");
    QTest::addColumn<int>("finding");
    const auto row = [](const char* name, const MakeInput& makeInput, int finding) {
        QTest::newRow(name) << makeInput << finding;
    };
    row(
        "null device", [] { return open("/dev/null", O_RDONLY); }, Idle);
    row(
        "closed", [] { return -1; }, Idle);
    row(
        "pipe at its end", [] { return pipeWhoseWriter(false); }, Idle);
    row(
        "pipe that may bring more", [] { return pipeWhoseWriter(true); }, Idle);
    row(
        "empty file", [] { return filledFile({}); }, Idle);
    row(
        "file with content is left alone", [] { return filledFile("x"); }, SomethingToRead);
}

void ProcessSetupTest::standardInput()
{
    QFETCH(MakeInput, makeInput);
    QFETCH(int, finding);
    QCOMPARE(findingWith(makeInput), finding);
}

QTEST_GUILESS_MAIN(ProcessSetupTest)
#include "tst_processsetup.moc"
