#include "desktop/ProcessSetup.h"

#include <QTemporaryFile>
#include <QTest>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
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

int pipeWhoseWriter(bool isThere, const QByteArray& written = {})
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0 || write(ends[1], written.constData(), size_t(written.size())) < 0) {
        return -1;
    }
    if (!isThere) {
        close(ends[1]);
    }
    return ends[0];
}

/// What a child process finds after the set-up with that standard input.
enum Finding {
    Kept = 0,
    Replaced = 1,
    SomethingToRead = 2,
    AtEnd = 4,
    CoreFilesOn = 8,
    DiesOfAPipe = 16,
    Closed = 32,
    Spilt = 64
};

int findingWith(const MakeInput& makeInput)
{
    const pid_t child = fork();
    if (child == 0) {
        const int input = makeInput();
        const int unused = fcntl(STDERR_FILENO, F_DUPFD, 3);
        close(unused);
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            close(descriptor);
        }
        if (input >= 0) {
            dup2(input, STDIN_FILENO);
        }
        struct stat before = {};
        struct stat after = {};
        fstat(input, &before);
        prepareProcess();
        fstat(STDIN_FILENO, &after);
        rlimit core{};
        getrlimit(RLIMIT_CORE, &core);
        pollfd readable{STDIN_FILENO, POLLIN, 0};
        char byte = 0;
        int finding = before.st_ino == after.st_ino ? Kept : Replaced;
        if (poll(&readable, 1, 0) > 0) {
            finding |= read(STDIN_FILENO, &byte, 1) == 1 ? SomethingToRead : AtEnd;
        }
        finding |= core.rlim_cur == 0 && core.rlim_max == 0 ? 0 : CoreFilesOn;
        finding |= std::signal(SIGPIPE, SIG_DFL) == SIG_IGN ? 0 : DiesOfAPipe;
        finding |= write(STDOUT_FILENO, "", 1) == 1 && write(STDERR_FILENO, "", 1) == 1 ? 0 : Closed;
        finding |= fcntl(STDERR_FILENO, F_DUPFD, 3) == unused ? 0 : Spilt;
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
        "null device", [] { return open("/dev/null", O_RDONLY); }, Replaced);
    row(
        "closed", [] { return -1; }, Replaced);
    row(
        "pipe at its end", [] { return pipeWhoseWriter(false); }, Replaced);
    row(
        "pipe that may bring more", [] { return pipeWhoseWriter(true); }, Kept);
    row(
        "pipe with the last of it", [] { return pipeWhoseWriter(false, "x"); }, SomethingToRead);
    row(
        "empty file", [] { return filledFile({}); }, Replaced);
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
