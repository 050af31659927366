#include "standins/LocalService.h"
#include "testkit/ProcessUsage.h"
#include "testkit/ProgramFixture.h"

#include <QQuickWindow>
#include <QTest>

using namespace tessary;

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool memoryIsOurs = false; // the sanitizer keeps what was freed
#else
constexpr bool memoryIsOurs = true;
#endif

/// Less than a tenth of what the tool writes.
constexpr qint64 memoryBound = 8LL * 1024 * 1024;

} // namespace

/// A tool that writes 100 MB as fast as it can, seen through the program's window.
class FloodTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowStaysInUse_data();
    void theWindowStaysInUse();
};

void FloodTest::theWindowStaysInUse_data()
{
    QTest::addColumn<QString>("file");
    for (const char* file : {"flood-tiny.mp4", "flood-huge.mp4", "flood-lines.mp4"}) {
        QTest::newRow(file) << QString::fromLatin1(file);
    }
}

void FloodTest::theWindowStaysInUse()
{
    QFETCH(QString, file);
    const standins::LocalService service;
    testkit::ProgramFixture fixture(service.baseUrl(), QStringLiteral(TESSARY_STAND_IN));
    QVERIFY(fixture.showUploader(standins::localWorkspaces().front().key));
    FileUploaderState& state = fixture.state();
    state.setSelectedFile(QUrl::fromLocalFile(QLatin1StringView("/videos/") + file));
    state.setVideoName(QStringLiteral("High water"));
    bool flooded = false;
    qsizetype longest = 0;
    connect(&state, &FileUploaderState::logsChanged, this, [&] {
        flooded = flooded || state.logs().contains(QLatin1StringView("flooded"));
        longest = std::max(longest, state.logs().size());
    });

    // Cancelled in the middle, with the mouse.
    QVERIFY(fixture.click("uploadButton"));
    QTRY_VERIFY(longest > 0);
    const qint64 before = testkit::takeProcessUsage().residentBytes;
    QVERIFY(fixture.click("cancelUploadButton"));
    QCOMPARE(state.statusMessage(), statusMessageOf(UploadState::Cancelled));
    QTRY_VERIFY_WITH_TIMEOUT(!fixture.application().uploadActivity()->underWay(), 20'000);
    QVERIFY(!flooded);
    QVERIFY(testkit::takeProcessUsage().children.isEmpty());

    // To its end, with the window in use meanwhile.
    int frames = 0;
    connect(&fixture.window(), &QQuickWindow::frameSwapped, this, [&frames] { ++frames; });
    QVERIFY(fixture.click("uploadButton"));
    QTRY_VERIFY(longest > 0);
    for (const bool shown : {false, true}) {
        QVERIFY(fixture.click("detailsButton"));
        QCOMPARE(state.showDetails(), shown);
    }
    QTRY_VERIFY_WITH_TIMEOUT(flooded, 300'000); // on a slow machine beside other work
    QVERIFY(frames > 0);
    QTRY_COMPARE(fixture.driver().textOf(QStringLiteral("logText")), state.logs());
    QVERIFY(state.logs().endsWith(QLatin1StringView("flooded\n\n")));
    QVERIFY(longest <= TransferLog::maxLogLength);
    const qint64 growth = testkit::takeProcessUsage().peakResidentBytes - before;
    QVERIFY2(!memoryIsOurs || growth < memoryBound, qPrintable(QString::number(growth)));

    QVERIFY(fixture.click("cancelUploadButton"));
    QTRY_VERIFY_WITH_TIMEOUT(!fixture.application().uploadActivity()->underWay(), 20'000);
    QCOMPARE(state.statusMessage(), statusMessageOf(UploadState::Cancelled));
}

QTEST_MAIN(FloodTest)
#include "tst_flood.moc"
