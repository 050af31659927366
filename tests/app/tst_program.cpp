#include "testkit/ProgramFixture.h"
#include "upload/UploadTask.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPlatformSurfaceEvent>
#include <QProcess>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>
#include <QSessionManager>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <csignal>

using namespace tessary;
using namespace Qt::StringLiterals;

namespace {

/// Notes how large each window is when the desktop first hears of it.
class FirstSizes : public QObject
{
public:
    FirstSizes() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::PlatformSurface &&
            static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() ==
                QPlatformSurfaceEvent::SurfaceCreated) {
            if (const auto* window = qobject_cast<QWindow*>(watched); window != nullptr) {
                sizes.insert(window, window->size());
            }
        }
        return false;
    }

    QHash<const QWindow*, QSize> sizes;
};

} // namespace

class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsUpToItsLoginScreen();
    void shortcutsWorkWhereverTheFocusIs_data();
    void shortcutsWorkWhereverTheFocusIs();
    void quitQuestionTakesBothAnswers();
    void voidQuestionSwallowsWhatWasAimedAtIt_data();
    void voidQuestionSwallowsWhatWasAimedAtIt();
    void windowIsShownInItsSizeWithTheWholeForm();
};

void ProgramTest::startsUpToItsLoginScreen()
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_LOGGING_RULES", "qt.quick.focus.debug=true");
    program.setProcessEnvironment(environment);
    program.setStandardInputFile(QProcess::nullDevice()); // as launchers do
    QByteArray said;
    connect(&program, &QProcess::readyReadStandardError, this,
            [&] { said += program.readAllStandardError(); });
    program.start(TESSARY_PROGRAM, {"-platform", "none"}); // it has no options
    // The field for the key has the keyboard when the screen has come in.
    QTRY_VERIFY2_WITH_TIMEOUT(said.contains("\"keyField\"") || program.state() == QProcess::NotRunning, said,
                              60'000);
    QVERIFY2(program.state() == QProcess::Running, said);
    const QString input = QFile::symLinkTarget(u"/proc/%1/fd/0"_s.arg(program.processId()));
    QVERIFY2(input.contains("pipe:"), qPrintable(input)); // what its tools are given
    program.terminate();
    QTRY_COMPARE(program.state(), QProcess::NotRunning);
    QCOMPARE(program.exitCode(), SIGTERM); // who asked sees why it ended
}

void ProgramTest::shortcutsWorkWhereverTheFocusIs_data()
{
    QTest::addColumn<bool>("signedIn");
    QTest::addColumn<bool>("changesKey");
    QTest::addColumn<QString>("focus"); // what has it; nothing when empty
    QTest::newRow("login") << false << false << u"keyField"_s;
    QTest::newRow("change key") << true << true << u"keyField"_s;
    QTest::newRow("name") << true << false << u"nameField"_s;
    QTest::newRow("log") << true << false << u"logText"_s;
    QTest::newRow("option") << true << false << u"formatOption:2D"_s;
    QTest::newRow("nothing") << true << false << QString();
}

void ProgramTest::shortcutsWorkWhereverTheFocusIs()
{
    QFETCH(bool, signedIn);
    QFETCH(bool, changesKey);
    QFETCH(QString, focus);
    testkit::ProgramFixture fixture;
    if (signedIn) {
        fixture.session().setApiKey(u"key"_s);
    }
    fixture.application().appManager()->setEditingAPIKey(changesKey);
    if (!focus.isEmpty()) {
        QVERIFY(fixture.driver().click(focus));
        QTRY_COMPARE(fixture.focused(), focus);
    }
    auto underWay = fixture.application().uploadActivity()->beginRegistration(); // or it would quit
    fixture.press(Qt::Key_Q, Qt::ControlModifier);
    QTRY_VERIFY(fixture.item("quitQuestion") != nullptr);
    QVERIFY(fixture.click("declineButton"));
    QTRY_VERIFY(fixture.item("quitQuestion") == nullptr);
    QTRY_COMPARE(fixture.focused(), focus);
    fixture.press(Qt::Key_N, Qt::ControlModifier);
    QTRY_COMPARE(fixture.program().windowCount(), 2);
    fixture.press(Qt::Key_W, Qt::ControlModifier);
    QTRY_COMPARE(fixture.program().windowCount(), 1);
}

void ProgramTest::quitQuestionTakesBothAnswers()
{
    testkit::ProgramFixture fixture;
    QVERIFY(fixture.showUploader());
    const auto task = std::make_shared<UploadTask>(QList<QUrl>());
    auto upload = fixture.application().uploadActivity()->beginUpload(task);
    const QSignalSpy asked(&fixture.program(), &Program::questionWanted);
    Q_EMIT qApp->commitDataRequest(*qApp->findChild<QSessionManager*>());
    QCOMPARE(asked.count(), 0);    // this one lets nobody be asked
    fixture.program().askToQuit(); // as another one does
    QVERIFY(fixture.click("declineButton"));
    QTRY_VERIFY(fixture.item("quitQuestion") == nullptr);
    QCOMPARE(fixture.program().windowCount(), 1);
    QVERIFY(!task->stop.stop_requested());

    QVERIFY(!fixture.window().close()); // the last window asks, too
    bool ended = false;
    connect(fixture.application().uploadActivity(), &UploadActivity::ended, this, [&] { ended = true; });
    QTimer::singleShot(0, &fixture.program(), [&] {
        QVERIFY(fixture.click("confirmButton"));
        QCOMPARE(fixture.program().windowCount(), 0);
        QVERIFY(task->stop.stop_requested());
        QVERIFY(!ended); // the tool is waited for
        upload.reset();
    });
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(ended);
}

void ProgramTest::voidQuestionSwallowsWhatWasAimedAtIt_data()
{
    QTest::addColumn<bool>("pressedBefore"); // it went away
    QTest::newRow("pressed before, let go after") << true;
    QTest::newRow("pressed just after") << false;
}

void ProgramTest::voidQuestionSwallowsWhatWasAimedAtIt()
{
    QFETCH(bool, pressedBefore);
    testkit::ProgramFixture fixture;
    QVERIFY(fixture.showUploader());
    auto upload = fixture.application().uploadActivity()->beginRegistration();
    fixture.press(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(fixture.driver().ready("confirmButton"));
    const QPoint place(fixture.centreOf("confirmButton").x(), fixture.centreOf("formatOption:Separate").y());
    const auto press = [&] { QTest::mousePress(&fixture.window(), Qt::LeftButton, {}, place); };
    if (pressedBefore) {
        press();
        upload.reset();
    } else {
        upload.reset();
        press();
    }
    QTest::mouseRelease(&fixture.window(), Qt::LeftButton, {}, place);
    QTRY_VERIFY(fixture.item("quitQuestion") == nullptr);
    QCOMPARE(fixture.state().selectedFileFormat(), u"Stereoscopic Left/Right"_s);
    QCOMPARE(fixture.program().windowCount(), 1);
    QTest::mouseClick(&fixture.window(), Qt::LeftButton, {}, place); // where there was something to hit
    QCOMPARE(fixture.state().selectedFileFormat(), u"Separate"_s);
}

void ProgramTest::windowIsShownInItsSizeWithTheWholeForm()
{
    QVERIFY(QGuiApplication::primaryScreen()->availableSize().height() >= 1000);
    const FirstSizes first;
    testkit::ProgramFixture fixture;
    QVERIFY(fixture.showUploader());
    QCOMPARE(first.sizes.value(&fixture.window()), fixture.window().size());
    const QList<QSize> sizes{{16, 16}, {32, 32}, {48, 48}, {64, 64}, {128, 128}};
    QTRY_COMPARE(QGuiApplication::windowIcon().availableSizes(), sizes); // after the first frame
    QCOMPARE(QGuiApplication::applicationName(), "tessary_macos_uploader");
    QCOMPARE(QGuiApplication::desktopFileName(), "tessary_macos_uploader");
    QCOMPARE(QQuickStyle::name(), "Basic"); // of the toolkit's dialogs, whatever is installed
    QCOMPARE(QQuickWindow::textRenderType(), QQuickWindow::NativeTextRendering);
    QVERIFY(fixture.click("formatOption:Separate"));
    QVERIFY(fixture.driver().ready("rightEyePicker"));
    const QQuickItem* area = fixture.item("uploadButton");
    while (!area->property("lastY").isValid()) {
        area = area->parentItem();
    }
    QCOMPARE(area->property("lastY").toDouble(), 0.0); // nothing to scroll
    const QSignalSpy ended(fixture.application().uploadActivity(), &UploadActivity::ended);
    QVERIFY(fixture.window().close()); // the last one
    QCOMPARE(ended.count(), 1);
}

int main(int argc, char** argv)
{
    // A screen with room; the usual one of this platform has not.
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" TESSARY_SOURCES "/tests/app/large-screen.json");
    const QGuiApplication application(argc, argv);
    ProgramTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_program.moc"
