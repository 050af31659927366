#include "desktop/ProcessSetup.h"
#include "tests/e2e/Run.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace tessary;
using namespace tessary::standins;
using testkit::WindowDriver;

namespace {

/// What happens to a file between its choice and its end.
enum class Harm { None, Removed, MadeAFolder, Shortened };

} // namespace

/// Each way in which the real tool fails, and the words that people get.
class FailuresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFailedTransferIsExplained_data();
    void aFailedTransferIsExplained();

private:
    Store m_store;
};

void FailuresTest::aFailedTransferIsExplained_data()
{
    QTest::addColumn<QString>("container");
    QTest::addColumn<QString>("permissions");
    QTest::addColumn<int>("hours"); // that the link is valid
    QTest::addColumn<Harm>("harm"); // to the file, after it was chosen
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("line"); // a part of it
    const QString harbor = localWorkspaces().front().container;
    const QString write = QStringLiteral("cw");
    const QString refused = QStringLiteral("The upload link has expired or was refused.");
    QTest::newRow("expired link") << harbor << write << -1 << Harm::None << refused << " : 403 : ";
    QTest::newRow("read-only link") << harbor << "r" << 1 << Harm::None << refused << " : 403 : ";
    QTest::newRow("no such container")
        << "nowhere" << write << 1 << Harm::None << "The place that the upload was sent to"
        << " : 404 : ";
    QTest::newRow("file gone") << harbor << write << 1 << Harm::Removed << "The file cannot be read."
                               << "no such file";
    QTest::newRow("folder") << harbor << write << 1 << Harm::MadeAFolder << "This is a folder."
                            << "directory";
    QTest::newRow("file changes") << harbor << write << 1 << Harm::Shortened
                                  << "The file changed while it was uploaded."
                                  << "UPLOADFAILED";
}

void FailuresTest::aFailedTransferIsExplained()
{
    QFETCH(QString, container);
    QFETCH(QString, permissions);
    QFETCH(int, hours);
    QFETCH(Harm, harm);
    QFETCH(QString, words);
    QFETCH(QString, line);
    Run run(m_store.store());
    QVERIFY(run.start());
    const QString url = m_store.store().signedBlobUrl(container, QStringLiteral("late.mp4"), permissions,
                                                      std::chrono::hours(hours));
    run.answerNextWith(url);
    QFile file(run.program.pathOf(QStringLiteral("late.mp4")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(harm == Harm::Shortened ? largeFile : 1000));
    QVERIFY(run.program.fillForm(QUrl::fromLocalFile(file.fileName()), QStringLiteral("Too late")));
    if (harm == Harm::Removed || harm == Harm::MadeAFolder) {
        QVERIFY(file.remove());
    }
    if (harm == Harm::MadeAFolder) {
        QVERIFY(QDir().mkdir(file.fileName()));
    }
    const qint64 stored = m_store.storedBytes();
    QVERIFY(run.program.click("uploadButton"));
    if (harm == Harm::Shortened) {
        QVERIFY(WindowDriver::await(QStringLiteral("the first blocks in the store"),
                                    [&] { return m_store.storedBytes() > stored; }));
        QVERIFY(file.resize(1000));
    }

    QVERIFY(run.program.driver().shows("statusLine", QStringLiteral("Error: AzCopy exited with code 1")));
    QVERIFY(run.program.driver().ready(QStringLiteral("uploadButton")));
    QVERIFY(WindowDriver::await(QStringLiteral("the failure in the log"), [&run] {
        return run.log().endsWith(u"Upload Error: AzCopy exited with code 1\n");
    }));
    QVERIFY(run.service.requestsTo(LocalService::registrationPath).empty());

    QVERIFY(run.program.click("whyButton"));
    QTRY_VERIFY(run.program.driver().textOf(QStringLiteral("failureWords")).startsWith(words));
    const QString shownLine = run.program.driver().textOf(QStringLiteral("failureLine"));
    QVERIFY2(shownLine.contains(line), qPrintable(shownLine));
    const QString signature = url.section(QStringLiteral("sig="), 1);
    QVERIFY(!signature.isEmpty() && !run.log().contains(signature) && !shownLine.contains(signature));
}

int main(int argc, char** argv)
{
    desktop::prepareProcess();
    const QGuiApplication application(argc, argv);
    FailuresTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_failures.moc"
