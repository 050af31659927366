#include "testkit/ProgramFixture.h"

#include <QGuiApplication>
#include <QMimeData>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStyleHints>
#include <QTest>

using namespace tessary;
using namespace Qt::StringLiterals;

namespace {

QUrl file(const char* name)
{
    return QUrl::fromLocalFile(QString::fromUtf8(name));
}

} // namespace

class UploaderFormTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_fixture.reset(); }

    void uploadButtonFollowsTheInputs_data();
    void uploadButtonFollowsTheInputs();
    void choosingAFormatClearsWhatItDoesNotUse();
    void secondPressHitsNothingThatMovedThere();
    void immersiveFormatFixesThePerspective();
    void dropTakesTheFirstFileLaterAndSilently();
    void eyesAreIndependentAndStayDropTargets();
    void dialogChoiceAndClearWriteTheStatus();
    void formIsDisabledWhileUploading();
    void hoverShows();
    void dragAndPointerWriteOneHoverFlag();
    void hoverFlagOutlivesThePresentation();

private:
    [[nodiscard]] FileUploaderState& state() { return m_fixture->state(); }

    std::unique_ptr<testkit::ProgramFixture> m_fixture;
};

void UploaderFormTest::init()
{
    m_fixture = std::make_unique<testkit::ProgramFixture>();
    QVERIFY(m_fixture->showUploader());
}

void UploaderFormTest::uploadButtonFollowsTheInputs_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("zones");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("ready");
    QTest::newRow("nothing") << "2D" << QStringList() << "" << false;
    QTest::newRow("a space is a name") << "2D" << QStringList("filePicker") << " " << true;
    QTest::newRow("one eye") << "Separate" << QStringList("leftEyePicker") << "clip" << false;
    QTest::newRow("both eyes") << "Separate" << QStringList{"leftEyePicker", "rightEyePicker"} << "clip"
                               << true;
}

void UploaderFormTest::uploadButtonFollowsTheInputs()
{
    QFETCH(QString, format);
    QFETCH(QStringList, zones);
    QFETCH(QString, name);
    QFETCH(bool, ready);
    QVERIFY(m_fixture->driver().click("formatOption:" + format));
    for (const QString& zone : zones) {
        QVERIFY(m_fixture->driver().drop(zone, {file("/clip.mov")}));
    }
    if (!name.isEmpty()) {
        QVERIFY(m_fixture->driver().type("nameField", name));
    }
    QTRY_COMPARE(m_fixture->item("uploadButton")->isEnabled(), ready);
    QCOMPARE(m_fixture->item("uploadButton")->opacity(), ready ? 1.0 : 0.7);
    state().enter(UploadState::Requesting);
    QVERIFY(!m_fixture->item("uploadButton")->isEnabled());
    QCOMPARE(m_fixture->item("uploadButton")->opacity(), ready ? 1.0 : 0.7);
    QCOMPARE(m_fixture->driver().textOf("uploadButton"), "Uploading...");
}

void UploaderFormTest::choosingAFormatClearsWhatItDoesNotUse()
{
    state().setSelectedFile(file("/clip.mov"));
    QVERIFY(m_fixture->click("formatOption:Separate"));
    QVERIFY(state().selectedFile().isEmpty());
    QTRY_VERIFY(m_fixture->item("filePicker") == nullptr && m_fixture->item("leftEyePicker") != nullptr);
    state().setSelectedFileLeft(file("/l.mov"));
    state().setSelectedFile(file("/late.mov"));
    QVERIFY(m_fixture->click("formatOption:Separate")); // pressed again, it acts again
    QVERIFY(state().selectedFile().isEmpty());
    QVERIFY(!state().selectedFileLeft().isEmpty());
    QVERIFY(m_fixture->click("formatOption:2D"));
    QVERIFY(state().selectedFileLeft().isEmpty());
}

void UploaderFormTest::secondPressHitsNothingThatMovedThere()
{
    const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(60'000); // this machine may be slow
    QVERIFY(m_fixture->click("formatOption:2D"));
    state().setSelectedFileLeft(file("/late.mov"));
    QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, m_fixture->centreOf("formatOption:2D"));
    QVERIFY(state().selectedFileLeft().isEmpty()); // the same option acts again

    QVERIFY(m_fixture->driver().ready("formatOption:Separate"));
    const QPoint place = m_fixture->centreOf("formatOption:Separate");
    QVERIFY(m_fixture->click("formatOption:Separate"));
    QTRY_VERIFY(m_fixture->centreOf("formatOption:Separate").y() > place.y() + 50);
    QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, place);
    QCOMPARE(state().selectedFileFormat(), "Separate");
    QVERIFY(m_fixture->click("perspectiveOption:180")); // elsewhere
    QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, place);
    QVERIFY(state().selectedFileFormat() != "Separate"); // something to hit was there
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(interval);
}

void UploaderFormTest::immersiveFormatFixesThePerspective()
{
    QVERIFY(m_fixture->click("perspectiveOption:360"));
    QVERIFY(m_fixture->click("formatOption:Apple Immersive Video (.aivu)"));
    QCOMPARE(state().selectedPerspective(), "180");
    QTRY_VERIFY(m_fixture->item("perspectiveOption:180") == nullptr);
    QVERIFY(m_fixture->click("formatOption:2D"));
    QTRY_VERIFY(m_fixture->item("perspectiveOption:180") != nullptr);
    QVERIFY(m_fixture->item("perspectiveOption:180")->property("selected").toBool());
}

void UploaderFormTest::dropTakesTheFirstFileLaterAndSilently()
{
    state().setStatusMessage("as before");
    QVERIFY(m_fixture->driver().drop("filePicker", {file("/100%\n🎥.mov"), file("/b.mov")}));
    state().setSelectedFile({});
    QTRY_COMPARE(state().selectedFile(), file("/100%\n🎥.mov")); // late, and over what was there
    QTRY_COMPARE(m_fixture->driver().textOf("clearButton"), "Remove 100% 🎥.mov"); // in one line
    QCOMPARE(state().statusMessage(), "as before");
    QVERIFY(!m_fixture->driver().drop("filePicker", {file("/c.mov")})); // filled, it takes none
    state().setSelectedFile({});
    QVERIFY(!m_fixture->driver().drop("filePicker", {QUrl("https://example.org/a.mov")}));
}

void UploaderFormTest::eyesAreIndependentAndStayDropTargets()
{
    QVERIFY(m_fixture->click("formatOption:Separate"));
    for (const char* name : {"/a.mov", "/b.mov"}) {
        QVERIFY(m_fixture->driver().drop("leftEyePicker", {file(name)}));
        QTRY_COMPARE(state().selectedFileLeft(), file(name));
    }
    QVERIFY(state().selectedFileRight().isEmpty());
}

void UploaderFormTest::dialogChoiceAndClearWriteTheStatus()
{
    QVERIFY(m_fixture->click("filePicker"));
    QObject* dialog = nullptr;
    QTRY_VERIFY((dialog = m_fixture->item("filePicker")->findChild<QObject*>("openFileDialog")) != nullptr);
    QTRY_VERIFY(dialog->property("visible").toBool());
    QVERIFY(QMetaObject::invokeMethod(dialog, "close"));
    QVERIFY(QMetaObject::invokeMethod(dialog, "rejected"));
    QVERIFY(QMetaObject::invokeMethod(dialog, "accepted")); // confirmed without a choice
    QVERIFY(state().selectedFile().isEmpty());
    QCOMPARE(state().statusMessage(), statusMessageOf(UploadState::Ready));

    const QTemporaryDir folder;
    const QString path = folder.filePath("clip.mov");
    QVERIFY(QFile(path).open(QIODevice::WriteOnly)); // the dialog takes what there is
    QVERIFY(dialog->setProperty("selectedFile", QUrl::fromLocalFile(path)));
    QVERIFY(QMetaObject::invokeMethod(dialog, "accepted"));
    QCOMPARE(state().statusMessage(), "Selected: clip.mov");
    QVERIFY(m_fixture->click("clearButton"));
    QVERIFY(state().selectedFile().isEmpty());
    QCOMPARE(state().statusMessage(), statusMessageOf(UploadState::Ready));
}

void UploaderFormTest::formIsDisabledWhileUploading()
{
    QVERIFY(m_fixture->click("formatOption:Separate"));
    QVERIFY(m_fixture->driver().drop("leftEyePicker", {file("/l.mov")}));
    QTRY_VERIFY(m_fixture->item("clearButton") != nullptr);
    state().enter(UploadState::Requesting);
    for (const char* name : {"formatOption:2D", "perspectiveOption:360", "clearButton", "nameField"}) {
        QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, m_fixture->centreOf(name));
    }
    m_fixture->press(Qt::Key_X);
    QCOMPARE(state().selectedFileFormat(), "Separate");
    QCOMPARE(state().selectedPerspective(), "60");
    QCOMPARE(state().selectedFileLeft(), file("/l.mov"));
    QCOMPARE(state().videoName(), "");
    QMimeData data;
    data.setUrls({file("/other.mov")});
    const QPoint zone = m_fixture->centreOf("leftEyePicker");
    QDragEnterEvent enter(zone, Qt::CopyAction, &data, Qt::LeftButton, {});
    QDropEvent drop(zone, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&m_fixture->window(), &enter);
    QVERIFY(!enter.isAccepted());
    QCoreApplication::sendEvent(&m_fixture->window(), &drop);
    QCoreApplication::processEvents(); // in which a drop would arrive
    QCOMPARE(state().selectedFileLeft(), file("/l.mov"));
    QVERIFY(m_fixture->click("cancelUploadButton")); // it lies outside the form
    QVERIFY(!state().isUploading());
    QVERIFY(m_fixture->item("cancelUploadButton") == nullptr && m_fixture->item("progressBar") == nullptr);
}

void UploaderFormTest::hoverShows()
{
    QTest::mouseMove(&m_fixture->window(), m_fixture->centreOf("formatOption:2D"));
    QTRY_VERIFY(state().hoverStates().value("2D").toBool() && !state().isHeaderHovered());
    QTest::mouseMove(&m_fixture->window(), m_fixture->centreOf("workspaceBlock"));
    QTRY_VERIFY(state().isHeaderHovered());
    QVERIFY(!state().hoverStates().value("2D").toBool());
    QTRY_COMPARE(m_fixture->item("workspaceBlock")->scale(), 1.02);
    QTest::mouseMove(&m_fixture->window(), m_fixture->centreOf("logText"));
    QTRY_VERIFY(!state().isHeaderHovered());
}

void UploaderFormTest::dragAndPointerWriteOneHoverFlag()
{
    const auto hovered = [this] { return m_fixture->item("filePicker")->property("isHovered").toBool(); };
    QMimeData data;
    data.setUrls({file("/a.mov")});
    QDragEnterEvent enter(m_fixture->centreOf("filePicker"), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&m_fixture->window(), &enter);
    QVERIFY(hovered());
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&m_fixture->window(), &leave);
    QVERIFY(!hovered());
    QVERIFY(m_fixture->driver().drop("filePicker", {file("/a.mov")}));
    QTest::mouseMove(&m_fixture->window(), m_fixture->centreOf("logText"));
    QTRY_VERIFY(!hovered());
}

/// It is kept when a file is chosen and when it is cleared, and right again as soon as the pointer is heard
/// of.
void UploaderFormTest::hoverFlagOutlivesThePresentation()
{
    const auto hovered = [this] { return m_fixture->item("filePicker")->property("isHovered").toBool(); };
    QTest::mouseMove(&m_fixture->window(), m_fixture->centreOf("filePicker"));
    QTRY_VERIFY(hovered());
    state().setSelectedFile(file("/a.mov"));
    QVERIFY(hovered());
    QTRY_VERIFY(m_fixture->item("clearButton") != nullptr);
    QVERIFY(hovered());
    QTest::mouseMove(&m_fixture->window(), m_fixture->centreOf("logText"));
    state().setSelectedFile({});
    QTRY_VERIFY(!hovered());
    QTest::mouseMove(&m_fixture->window(), m_fixture->centreOf("filePicker"));
    QTRY_VERIFY(hovered());
    state().setSelectedFile(file("/a.mov"));
    QVERIFY(m_fixture->click("clearButton")); // which lies beyond the empty zone
    QVERIFY(m_fixture->centreOf("filePicker").x() < m_fixture->item("nameField")->width() / 2);
    QTest::mouseMove(&m_fixture->window(), m_fixture->centreOf("logText"));
    QTRY_VERIFY(!hovered());
}

QTEST_MAIN(UploaderFormTest)

#include "tst_uploader_form.moc"
