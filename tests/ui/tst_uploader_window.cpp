#include "testkit/ProgramFixture.h"
#include "testkit/SteppedClock.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace tessary;
using namespace Qt::StringLiterals;

namespace {

QUrl file(const char* name)
{
    return QUrl::fromLocalFile(QString::fromUtf8(name));
}

} // namespace

class UploaderWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_fixture.reset(); }

    void tabReachesEverythingInReadingOrder();
    void goneCancelButtonLeavesTheFocusAtUpload();
    void keysMoveInAGroupAndChoose();
    void progressTakesAnyNumber_data();
    void progressTakesAnyNumber();
    void logFollowsItsEndAndOtherwiseStays();
    void barComesWithWhatCanBeScrolledAndScrollsIt();
    void hiddenLogComesBackWhereItWas();
    void whatIsCutOffShowsUnderThePointer();
    void overlayShowsAndGoes();
    void headerNamesTheWorkspaceAndLeadsToTheKey();
    void quittingAsksWhileSomethingIsUnderWay();

private:
    [[nodiscard]] FileUploaderState& state() { return m_fixture->state(); }

    /// What the log scrolls in.
    [[nodiscard]] QQuickItem* logArea() const
    {
        return m_fixture->item("logText")->parentItem()->parentItem()->parentItem();
    }

    std::unique_ptr<testkit::ProgramFixture> m_fixture;
};

void UploaderWindowTest::init()
{
    m_fixture = std::make_unique<testkit::ProgramFixture>();
    QVERIFY(m_fixture->showUploader());
}

void UploaderWindowTest::tabReachesEverythingInReadingOrder()
{
    state().setSelectedFile(file("/a.mov"));
    state().setVideoName("clip");
    const QStringList expected{"workspaceBlock",
                               "detailsButton",
                               "clearButton",
                               "nameField",
                               "formatOption:Stereoscopic Left/Right",
                               "perspectiveOption:60",
                               "uploadButton",
                               "logText"};
    m_fixture->item("workspaceBlock")->forceActiveFocus(Qt::TabFocusReason);
    QStringList reached;
    for (qsizetype count = 0; count < expected.size(); ++count) {
        reached.append(m_fixture->focused());
        m_fixture->press(Qt::Key_Tab);
    }
    QCOMPARE(reached, expected);
    QCOMPARE(m_fixture->focused(), "workspaceBlock"); // and round again
}

void UploaderWindowTest::goneCancelButtonLeavesTheFocusAtUpload()
{
    QQuickWindow& window = m_fixture->window();
    state().setSelectedFile(file("/a.mov"));
    state().setVideoName("clip");
    state().enter(UploadState::Requesting);
    QVERIFY(m_fixture->driver().ready("cancelUploadButton"));
    testkit::SteppedClock clock(*qmlEngine(&window));
    m_fixture->item("cancelUploadButton")->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyPress(&window, Qt::Key_Space);
    state().enter(UploadState::Completed);
    QTRY_COMPARE(m_fixture->focused(), "uploadButton");
    QVERIFY(m_fixture->item("uploadButton")->property("visualFocus").toBool());
    // What was aimed at the other button does not upload it again, a key let go late included.
    m_fixture->press(Qt::Key_Return);
    QVERIFY(!state().isUploading());
    clock.step(501);
    QTest::keyRelease(&window, Qt::Key_Space);
    QVERIFY(!state().isUploading());
    m_fixture->press(Qt::Key_Space);
    QVERIFY(state().isUploading());
}

void UploaderWindowTest::keysMoveInAGroupAndChoose()
{
    const QString before = state().selectedFileFormat();
    m_fixture->item("nameField")->forceActiveFocus(Qt::TabFocusReason);
    m_fixture->press(Qt::Key_Tab);
    const auto reach = [this](int key, const QString& option) {
        m_fixture->press(key);
        QCOMPARE(m_fixture->focused(), "formatOption:" + option);
    };
    reach(Qt::Key_Up, "2D");
    reach(Qt::Key_Up, "2D"); // the first
    reach(Qt::Key_End, "Separate");
    reach(Qt::Key_Right, "Separate"); // the last
    reach(Qt::Key_Left, "Apple Immersive Video (.aivu)");
    reach(Qt::Key_Home, "2D");
    reach(Qt::Key_Down, before);
    reach(Qt::Key_Up, "2D");
    QCOMPARE(state().selectedFileFormat(), before); // moving chooses nothing
    m_fixture->press(Qt::Key_Tab);
    QCOMPARE(m_fixture->focused(), "perspectiveOption:60"); // out of the group
    m_fixture->press(Qt::Key_Backtab);
    QCOMPARE(m_fixture->focused(), "formatOption:" + before); // in again, at the selected one
    m_fixture->press(Qt::Key_Backtab);
    QCOMPARE(m_fixture->focused(), "nameField");
    m_fixture->press(Qt::Key_Tab);
    m_fixture->press(Qt::Key_Up);
    m_fixture->press(Qt::Key_Space);
    QCOMPARE(state().selectedFileFormat(), "2D");
    m_fixture->press(Qt::Key_Tab);
    m_fixture->press(Qt::Key_End);
    m_fixture->press(Qt::Key_Return);
    QCOMPARE(state().selectedPerspective(), "360");
}

void UploaderWindowTest::progressTakesAnyNumber_data()
{
    QTest::addColumn<double>("progress");
    QTest::addColumn<double>("width");
    QTest::newRow("none") << 0.0 << 0.0;
    QTest::newRow("half") << 0.5 << 50.0;
    QTest::newRow("beyond") << 2.5 << 250.0;
    QTest::newRow("negative") << -1.0 << 0.0;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 0.0;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 0.0;
}

void UploaderWindowTest::progressTakesAnyNumber()
{
    QFETCH(double, progress);
    QFETCH(double, width);
    state().enter(UploadState::Requesting);
    m_fixture->item("progressBar")->setProperty("progress", progress);
    QTRY_COMPARE(m_fixture->item("progressFill")->width(), width);
    QVERIFY(!m_fixture->window().grabWindow().isNull());
}

void UploaderWindowTest::logFollowsItsEndAndOtherwiseStays()
{
    QQuickItem* log = m_fixture->item("logText");
    QQuickItem* area = logArea();
    const auto place = [area] { return area->property("contentY").toDouble(); };
    const auto end = [area] { return area->property("lastY").toDouble(); };
    state().processOutput(u"line\n"_s.repeated(200));
    QTRY_COMPARE(log->property("text").toString(), state().logs());
    QVERIFY(end() > 100);
    QCOMPARE(place(), end());
    QMetaObject::invokeMethod(log, "select", Q_ARG(int, 0), Q_ARG(int, 4));
    area->setProperty("contentY", 10);
    QVERIFY(log->flags().testFlag(QQuickItem::ItemObservesViewport)); // nothing is made of what is out of it
    QSignalSpy frames(&m_fixture->window(), &QQuickWindow::afterAnimating);
    for (int count = 0; count < 100; ++count) {
        state().refreshLogs(); // announced, but the same
    }
    QTRY_VERIFY(!frames.isEmpty());
    QCOMPARE(place(), 10.0);
    QCOMPARE(log->property("selectedText").toString(), "line");
    QSignalSpy changes(log, SIGNAL(textChanged()));
    for (int count = 0; count < 100; ++count) {
        state().processOutput(u"more\n"_s);
    }
    QTRY_COMPARE(log->property("text").toString(), state().logs());
    QVERIFY2(changes.count() <= 2, qPrintable(QString::number(changes.count()))); // frames, not chunks
    QCOMPARE(place(), end());
    QCOMPARE(log->property("selectedText").toString(), "line");
}

void UploaderWindowTest::barComesWithWhatCanBeScrolledAndScrollsIt()
{
    QQuickItem* area = logArea();
    const auto bar = [this] { return m_fixture->window().findChild<QQuickItem*>("scrollBar"); };
    QVERIFY(bar() == nullptr);
    state().processOutput(u"line\n"_s.repeated(200));
    QTRY_VERIFY(bar() != nullptr);
    auto* thumb = bar()->property("contentItem").value<QQuickItem*>();
    const auto middle = [thumb] { return thumb->mapToScene(thumb->boundingRect().center()).toPoint(); };
    QTRY_VERIFY(middle().y() > area->mapToScene({0, area->height() / 2}).y()); // it follows the end
    QTest::mousePress(&m_fixture->window(), Qt::LeftButton, {}, middle());
    QTest::mouseMove(&m_fixture->window(), middle() - QPoint(0, int(area->height())));
    QCOMPARE(area->property("contentY").toDouble(), 0.0);
    QTest::mouseRelease(&m_fixture->window(), Qt::LeftButton, {}, middle());
}

void UploaderWindowTest::hiddenLogComesBackWhereItWas()
{
    QQuickItem* log = m_fixture->item("logText");
    QQuickItem* area = logArea();
    state().processOutput(u"line\n"_s.repeated(200));
    QTRY_VERIFY(area->property("contentY").toDouble() > 100);
    area->setProperty("contentY", 10);
    state().setShowDetails(false);
    QTRY_VERIFY(m_fixture->item("logText") == nullptr);
    state().processOutput(u"unseen\n"_s.repeated(20));
    state().setShowDetails(true);
    QTRY_COMPARE(log->property("text").toString(), state().logs());
    QTRY_COMPARE(m_fixture->item("log")->opacity(), 1.0);
    QCOMPARE(area->property("contentY").toDouble(), 10.0);
    state().processOutput(u"seen\n"_s);
    QTRY_COMPARE(area->property("contentY"), area->property("lastY"));
}

void UploaderWindowTest::whatIsCutOffShowsUnderThePointer()
{
    const QString message = u"Error: "_s + u"long "_s.repeated(60);
    state().setStatusMessage(message);
    QTRY_VERIFY(m_fixture->item("statusLine")->property("truncated").toBool());
    const QPoint pointer = m_fixture->centreOf("statusLine");
    QTest::mouseMove(&m_fixture->window(), pointer);
    QTRY_VERIFY(m_fixture->item("tip") != nullptr);
    const QQuickItem& tip = *m_fixture->item("tip");
    QCOMPARE(tip.property("text").toString(), message);
    const QRectF place = tip.mapRectToScene(QRectF(QPointF(), tip.size()));
    QVERIFY(m_fixture->window().contentItem()->boundingRect().contains(place));
    QTest::mouseMove(&m_fixture->window(), {450, 4});
    QTRY_VERIFY(m_fixture->item("tip") == nullptr);
    state().setStatusMessage("short");
    QTest::mouseMove(&m_fixture->window(), pointer);
    QTRY_VERIFY(!m_fixture->item("statusLine")->property("truncated").toBool());
    QVERIFY(m_fixture->item("tip") == nullptr);
}

void UploaderWindowTest::overlayShowsAndGoes()
{
    QVERIFY(m_fixture->item("successOverlay") == nullptr);
    state().setShowSuccessAnimation(true);
    QTRY_COMPARE(m_fixture->item("successOverlay")->property("amount").toDouble(), 1.0);
    QVERIFY(state().showSuccessAnimation());
    const auto click = [this] {
        QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, m_fixture->centreOf("formatOption:2D"));
    };
    QTRY_VERIFY(!state().showSuccessAnimation()); // it asked for its end itself
    click();                                      // aimed at the overlay
    QCOMPARE(state().selectedFileFormat(), "Stereoscopic Left/Right");
    QTRY_VERIFY(m_fixture->item("successOverlay") == nullptr);
    click();
    QCOMPARE(state().selectedFileFormat(), "2D");
}

void UploaderWindowTest::headerNamesTheWorkspaceAndLeadsToTheKey()
{
    QCOMPARE(m_fixture->driver().textOf("workspaceBlock"), "Loading...");
    Workspace workspace{};
    workspace.workspaceName = "<b>Lab</b>";
    m_fixture->session().setWorkspaceData(workspace);
    QCOMPARE(m_fixture->driver().textOf("workspaceBlock"), "<b>Lab</b>");
    state().setVideoName("gone with the screen");
    QVERIFY(m_fixture->click("workspaceBlock"));
    QTRY_VERIFY(m_fixture->item("cancelKeyButton") != nullptr);
    QVERIFY(m_fixture->click("cancelKeyButton"));
    QTRY_VERIFY(m_fixture->item("nameField") != nullptr);
    QCOMPARE(state().videoName(), "");
}

void UploaderWindowTest::quittingAsksWhileSomethingIsUnderWay()
{
    auto underWay = m_fixture->application().uploadActivity()->beginRegistration();
    m_fixture->press(Qt::Key_Q, Qt::ControlModifier);
    QTRY_VERIFY(m_fixture->item("quitQuestion") != nullptr);
    m_fixture->press(Qt::Key_Escape);
    QTRY_VERIFY(m_fixture->item("quitQuestion") == nullptr);
    QVERIFY(!m_fixture->window().close());
    QTRY_COMPARE(m_fixture->focused(), "declineButton");
    m_fixture->press(Qt::Key_Return);
    QTRY_VERIFY(m_fixture->item("quitQuestion") == nullptr);
    QCOMPARE(m_fixture->program().windowCount(), 1);
}

QTEST_MAIN(UploaderWindowTest)

#include "tst_uploader_window.moc"
