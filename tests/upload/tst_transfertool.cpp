#include "testkit/ScriptedTool.h"
#include "testkit/TimerWatch.h"
#include "upload/TransferTool.h"
#include "upload/UploadActivity.h"

#include <QDir>
#include <QTest>

#include <array>
#include <unistd.h>

using namespace tessary;

namespace {

/// What this process reads from, as the system names it.
QByteArray ownInput()
{
    std::array<char, 256> name{};
    const ssize_t size = readlink("/proc/self/fd/0", name.data(), name.size());
    return {name.data(), static_cast<qsizetype>(size)};
}

} // namespace

class TransferToolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void outcomes_data();
    void outcomes();
    void whatTheToolIsGiven();
    void aToolThatCannotBeStarted();
    void chunksAreNotSplit();
    void aStopEndsTheTool_data();
    void aStopEndsTheTool();
    void killToolsEndsWhatIgnoresAStop();
    void theLogIsRefreshedWhileTheToolIsSilent();

private:
    /// Runs the script to its end; what it said is then in m_heard.
    TransferOutcome run(const testkit::ScriptedTool& tool, const std::stop_token& stop = {})
    {
        const QFuture<TransferOutcome> future = start(tool, stop);
        const bool ended = QTest::qWaitFor([&future] { return future.isFinished(); }, 20'000);
        return ended ? future.result() : TransferOutcome{false, Error({}, -1, QStringLiteral("never ended"))};
    }

    QFuture<TransferOutcome> start(const testkit::ScriptedTool& tool, const std::stop_token& stop)
    {
        m_heard.clear();
        m_refreshes = 0;
        return uploadFile(m_file, m_url, tool.folder(),
                          {[this](const QString& text) { m_heard.append(text); }, [this] { ++m_refreshes; }},
                          stop, m_activity);
    }

    [[nodiscard]] bool hears(const QString& text) const
    {
        return QTest::qWaitFor([this, &text] { return m_heard.join(QString()).contains(text); }, 20'000);
    }

    UploadActivity m_activity;
    QUrl m_file = QUrl::fromLocalFile(QStringLiteral("/videos/a b.mov"));
    QString m_url = QStringLiteral("https://store/blob?sig=x");
    QStringList m_heard;
    int m_refreshes = 0;
};

void TransferToolTest::outcomes_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<int>("code"); // 0 for success
    QTest::addColumn<QString>("heard");

    const auto row = [](const char* name, const char* script, int code, const char* heard) {
        QTest::newRow(name) << QByteArray(script) << code << QString::fromUtf8(heard);
    };
    row("success", "echo fine", 0, "fine\n");
    row("success with a complaint", "echo odd >&2", 0, "ERROR: odd\n");
    row("failure", "echo no; exit 2", 2, "no\n");
    row("no valid text", R"(printf 'ab\xff')", 0, "");
    row("character cut off", R"(printf 'a\xe2\x82')", 0, "");
    row("byte-order mark", R"(printf '\xef\xbb\xbfa')", 0,
        "\uFEFF\uFEFFa"); // the test's own reading drops the first
    row("tool that cannot run", "exec /does/not/exist 2>/dev/null", 127, "");
}

void TransferToolTest::outcomes()
{
    QFETCH(QByteArray, script);
    QFETCH(int, code);
    QFETCH(QString, heard);

    const TransferOutcome outcome = run(testkit::ScriptedTool(script));
    QCOMPARE(outcome.succeeded(), code == 0);
    QCOMPARE(m_heard.join(QString()), heard);
    if (code != 0) {
        const Error failure = outcome.failure.value_or(Error({}, 0, {}));
        QCOMPARE(failure.domain() + QString::number(failure.code()), QStringLiteral("AzCopy%1").arg(code));
        QCOMPARE(failure.description(), QStringLiteral("AzCopy exited with code %1").arg(code));
    }
}

void TransferToolTest::whatTheToolIsGiven()
{
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    qputenv("TESSARY_TEST_MARK", "a value\n of two lines");
    m_file = QUrl::fromLocalFile(QString::fromUtf8("/videos/a \"b\" 100% 'é' 👩‍🚀\n.mov"));
    m_url = QStringLiteral("https://store/blob?sp=cw&sig=a%2Fb%3D&x=") + QString(20'000, u'y');
    const testkit::ScriptedTool tool(R"(printf '%s\0' "$@" > "$home/arguments"
        cat /proc/$$/environ > "$home/environment"
        readlink /proc/$$/cwd /proc/$$/fd/0 > "$home/place")");
    const bool succeeded = run(tool).succeeded();
    QDir::setCurrent(before);
    QVERIFY(succeeded);
    QCOMPARE(tool.content("arguments").split('\0'),
             (QByteArrayList{"copy", m_file.toLocalFile().toUtf8(), m_url.toUtf8(), "--from-to", "LocalBlob",
                             "--log-level", "INFO", ""}));
    // The rest is this process's own.
    QByteArray environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        environment += QByteArray(*variable) + '\0';
    }
    QCOMPARE(tool.content("environment"), environment);
    QCOMPARE(tool.content("place"),
             QFile::encodeName(QFileInfo(folder.path()).canonicalFilePath()) + '\n' + ownInput() + '\n');
}

void TransferToolTest::aToolThatCannotBeStarted()
{
    const testkit::ScriptedTool tool("exit 0");
    const auto failure = [&] {
        const Error error = run(tool).failure.value_or(Error({}, -1, {}));
        return error.domain() + u' ' + QString::number(error.code());
    };
    QFile::setPermissions(tool.path("azcopy"), QFile::ReadOwner);
    QCOMPARE(failure(), QStringLiteral("QProcess 0"));
    QFile::remove(tool.path("azcopy"));
    QCOMPARE(failure(), QStringLiteral("AzCopy 1"));
    QCOMPARE(standardResourcesFolder(),
             QCoreApplication::applicationDirPath() + QStringLiteral("/resources"));
}

void TransferToolTest::chunksAreNotSplit()
{
    QVERIFY(run(testkit::ScriptedTool(R"(printf 'one\ntwo\rthree\n'; printf 'four' >&2)")).succeeded());
    QVERIFY(m_heard.contains(QStringLiteral("one\ntwo\rthree\n")));
    QVERIFY(m_heard.contains(QStringLiteral("ERROR: four")));
}

void TransferToolTest::aStopEndsTheTool_data()
{
    QTest::addColumn<QByteArray>("onTerm");
    QTest::addColumn<bool>("beforeLaunch");
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("while it runs") << QByteArray("exit 1") << false << true;
    QTest::newRow("dies of it") << QByteArray("trap - TERM; kill -TERM $$") << false << true;
    QTest::newRow("finishes all the same") << QByteArray("exit 0") << false << false;
    QTest::newRow("before the launch") << QByteArray("exit 1") << true << true;
}

void TransferToolTest::aStopEndsTheTool()
{
    QFETCH(QByteArray, onTerm);
    QFETCH(bool, beforeLaunch);
    QFETCH(bool, cancelled);

    const testkit::ScriptedTool tool("trap 'echo stopping; " + onTerm +
                                     "' TERM; echo ready; while :; do sleep 0.05; done");
    std::stop_source stop;
    if (beforeLaunch) {
        stop.request_stop();
    }
    const QFuture<TransferOutcome> future = start(tool, stop.get_token());
    if (!beforeLaunch) {
        QVERIFY(hears(QStringLiteral("ready")));
        stop.request_stop();
    }
    QTRY_VERIFY_WITH_TIMEOUT(future.isFinished(), 20'000);
    QCOMPARE(future.result().cancelled, cancelled);
    QCOMPARE(future.result().succeeded(), !cancelled);
    QVERIFY(!future.result().failure);
    QVERIFY(beforeLaunch || m_heard.join(QString()).contains(QLatin1StringView("stopping")));
}

void TransferToolTest::killToolsEndsWhatIgnoresAStop()
{
    const testkit::ScriptedTool tool("trap '' TERM; echo ready; while :; do sleep 0.05; done");
    std::stop_source stop;
    const QFuture<TransferOutcome> future = start(tool, stop.get_token());
    QVERIFY(hears(QStringLiteral("ready")));
    stop.request_stop();
    const int before = m_refreshes;
    QTRY_VERIFY(m_refreshes > before + 3); // it lives on, and the main thread with it
    QVERIFY(future.isRunning());
    Q_EMIT m_activity.killTools();
    QTRY_VERIFY_WITH_TIMEOUT(future.isFinished(), 20'000);
    QVERIFY(future.result().cancelled);
}

void TransferToolTest::theLogIsRefreshedWhileTheToolIsSilent()
{
    const testkit::ScriptedTool tool(
        "read -r -t 20 line < <(until [ -e \"$home/go\" -o ! -e \"$home\" ]; do sleep 0.05; done; echo x)");
    const testkit::TimerWatch timers;
    const QFuture<TransferOutcome> future = start(tool, {});
    QTRY_VERIFY_WITH_TIMEOUT(m_refreshes >= 5, 20'000);
    QVERIFY(timers.saw(std::chrono::milliseconds(50), Qt::PreciseTimer));
    QVERIFY(m_heard.isEmpty());
    tool.make("go");
    QTRY_VERIFY_WITH_TIMEOUT(future.isFinished(), 20'000);
}

QTEST_GUILESS_MAIN(TransferToolTest)
#include "tst_transfertool.moc"
