#undef QT_NO_CAST_FROM_ASCII // names and texts, everywhere
#undef QT_NO_URL_CAST_FROM_STRING

#include "ScreenBench.h"

#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>

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

    void cleanup() { m_bench.reset(); }

    void tabReachesEverythingInReadingOrder();
    void progressTakesAnyNumber_data();
    void progressTakesAnyNumber();
    void logFollowsItsEndAndOtherwiseStays();
    void detailsHideAndShow();
    void overlayShowsAndGoes();
    void headerNamesTheWorkspaceAndLeadsToTheKey();
    void quittingAsksWhileSomethingIsUnderWay();
    void colorsFollowTheDesktop();

private:
    [[nodiscard]] FileUploaderState& state() { return m_bench->state(); }

    std::unique_ptr<ScreenBench> m_bench;
};

void UploaderWindowTest::init()
{
    m_bench = std::make_unique<ScreenBench>();
    QVERIFY(m_bench->showUploader());
}

void UploaderWindowTest::tabReachesEverythingInReadingOrder()
{
    state().setSelectedFile(file("/a.mov"));
    state().setVideoName("clip");
    const QStringList expected{"workspaceBlock",
                               "detailsButton",
                               "clearButton",
                               "nameField",
                               "formatOption:2D",
                               "formatOption:Stereoscopic Left/Right",
                               "formatOption:Stereoscopic Top/Bottom",
                               "formatOption:Spatial (MV-HEVC)",
                               "formatOption:Apple Immersive Video (.aivu)",
                               "formatOption:Separate",
                               "perspectiveOption:60",
                               "perspectiveOption:180",
                               "perspectiveOption:360",
                               "uploadButton",
                               "logText"};
    m_bench->item("workspaceBlock")->forceActiveFocus(Qt::TabFocusReason);
    QStringList reached;
    for (qsizetype count = 0; count < expected.size(); ++count) {
        reached.append(m_bench->focused());
        m_bench->press(Qt::Key_Tab);
    }
    QCOMPARE(reached, expected);
    QCOMPARE(m_bench->focused(), "workspaceBlock"); // and round again
    m_bench->item("formatOption:2D")->forceActiveFocus(Qt::TabFocusReason);
    m_bench->press(Qt::Key_Space);
    QCOMPARE(state().selectedFileFormat(), "2D");
    m_bench->item("perspectiveOption:360")->forceActiveFocus(Qt::TabFocusReason);
    m_bench->press(Qt::Key_Return);
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
    state().setIsUploading(true);
    m_bench->item("progressBar")->setProperty("progress", progress);
    QTRY_COMPARE(m_bench->item("progressFill")->width(), width);
    QVERIFY(!m_bench->window().grabWindow().isNull());
}

void UploaderWindowTest::logFollowsItsEndAndOtherwiseStays()
{
    QQuickItem* log = m_bench->item("logText");
    QQuickItem* area = log->parentItem()->parentItem()->parentItem();
    const auto place = [area] { return area->property("contentY").toDouble(); };
    const auto end = [area] { return area->property("lastY").toDouble(); };
    state().processOutput(u"line\n"_s.repeated(200));
    QTRY_COMPARE(log->property("text").toString(), state().logs());
    QVERIFY(end() > 100);
    QCOMPARE(place(), end());
    QMetaObject::invokeMethod(log, "select", Q_ARG(int, 0), Q_ARG(int, 4));
    area->setProperty("contentY", 10);
    QSignalSpy frames(&m_bench->window(), &QQuickWindow::afterAnimating);
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

void UploaderWindowTest::detailsHideAndShow()
{
    QVERIFY(m_bench->click("detailsButton"));
    QTRY_VERIFY(m_bench->item("nameField") == nullptr && m_bench->item("logText") == nullptr);
    QVERIFY(m_bench->item("filePicker") != nullptr && m_bench->item("uploadButton") != nullptr);
    QCOMPARE(m_bench->driver().textOf("detailsButton"), "Show details");
    QVERIFY(m_bench->click("detailsButton"));
    QTRY_VERIFY(m_bench->item("nameField") != nullptr && m_bench->item("logText") != nullptr);
}

void UploaderWindowTest::overlayShowsAndGoes()
{
    QVERIFY(m_bench->item("successOverlay") == nullptr);
    state().setShowSuccessAnimation(true);
    QTRY_COMPARE(m_bench->item("successOverlay")->property("amount").toDouble(), 1.0);
    QVERIFY(state().showSuccessAnimation());
    QTRY_VERIFY(!state().showSuccessAnimation()); // it asked for its end itself
    QTRY_VERIFY(m_bench->item("successOverlay") == nullptr);
}

void UploaderWindowTest::headerNamesTheWorkspaceAndLeadsToTheKey()
{
    QCOMPARE(m_bench->driver().textOf("workspaceBlock"), "Loading...");
    Workspace workspace;
    workspace.workspaceName = "<b>Lab</b>";
    m_bench->session().setWorkspaceData(workspace);
    QCOMPARE(m_bench->driver().textOf("workspaceBlock"), "<b>Lab</b>");
    state().setVideoName("gone with the screen");
    QVERIFY(m_bench->click("workspaceBlock"));
    QTRY_VERIFY(m_bench->item("cancelKeyButton") != nullptr);
    QVERIFY(m_bench->click("cancelKeyButton"));
    QTRY_VERIFY(m_bench->item("nameField") != nullptr);
    QCOMPARE(state().videoName(), "");
}

void UploaderWindowTest::quittingAsksWhileSomethingIsUnderWay()
{
    auto underWay = m_bench->application().uploadActivity()->begin({});
    m_bench->press(Qt::Key_Q, Qt::ControlModifier);
    QTRY_VERIFY(m_bench->item("quitQuestion") != nullptr);
    m_bench->press(Qt::Key_Escape);
    QTRY_VERIFY(m_bench->item("quitQuestion") == nullptr);
    QVERIFY(!m_bench->window().close());
    QTRY_COMPARE(m_bench->focused(), "declineButton");
    m_bench->press(Qt::Key_Return);
    QTRY_VERIFY(m_bench->item("quitQuestion") == nullptr);
    QCOMPARE(m_bench->program().windowCount(), 1);
    m_bench->press(Qt::Key_N, Qt::ControlModifier);
    QTRY_COMPARE(m_bench->program().windowCount(), 2);
    m_bench->press(Qt::Key_W, Qt::ControlModifier); // the other window still holds the program
    QTRY_COMPARE(m_bench->program().windowCount(), 1);
}

void UploaderWindowTest::colorsFollowTheDesktop()
{
    const QPalette before = QGuiApplication::palette();
    const auto header = [this] { return m_bench->window().grabWindow().pixelColor(450, 4); };
    QGuiApplication::setPalette(QPalette(Qt::white));
    QTRY_COMPARE(header(), QColor(Qt::white));
    QGuiApplication::setPalette(QPalette(Qt::black));
    QTRY_COMPARE(header(), QColor(0x1e, 0x1e, 0x1e));
    QGuiApplication::setPalette(before);
}

QTEST_MAIN(UploaderWindowTest)

#include "tst_uploader_window.moc"
