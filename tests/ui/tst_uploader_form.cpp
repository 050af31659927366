#undef QT_NO_CAST_FROM_ASCII // names and texts, everywhere
#undef QT_NO_URL_CAST_FROM_STRING

#include "ScreenBench.h"

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

    void cleanup() { m_bench.reset(); }

    void uploadButtonFollowsTheInputs_data();
    void uploadButtonFollowsTheInputs();
    void choosingAFormatClearsWhatItDoesNotUse();
    void immersiveFormatFixesThePerspective();
    void dropTakesTheFirstFileLaterAndSilently();
    void eyesAreIndependentAndStayDropTargets();
    void dialogChoiceAndClearWriteTheStatus();
    void formIsDisabledWhileUploading();
    void hoverShows();
    void dragAndPointerWriteOneHoverFlag();

private:
    [[nodiscard]] FileUploaderState& state() { return m_bench->state(); }

    std::unique_ptr<ScreenBench> m_bench;
};

void UploaderFormTest::init()
{
    m_bench = std::make_unique<ScreenBench>();
    QVERIFY(m_bench->showUploader());
}

void UploaderFormTest::uploadButtonFollowsTheInputs_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("zones");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("ready");
    QTest::newRow("nothing") << "2D" << QStringList() << "" << false;
    QTest::newRow("no name") << "2D" << QStringList("filePicker") << "" << false;
    QTest::newRow("no file") << "2D" << QStringList() << "clip" << false;
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
    QVERIFY(m_bench->driver().click("formatOption:" + format));
    for (const QString& zone : zones) {
        QVERIFY(m_bench->driver().drop(zone, {file("/clip.mov")}));
    }
    if (!name.isEmpty()) {
        QVERIFY(m_bench->driver().type("nameField", name));
    }
    QTRY_COMPARE(m_bench->item("uploadButton")->isEnabled(), ready);
    QCOMPARE(m_bench->item("uploadButton")->opacity(), ready ? 1.0 : 0.7);
    state().setIsUploading(true);
    QVERIFY(!m_bench->item("uploadButton")->isEnabled());
    QCOMPARE(m_bench->item("uploadButton")->opacity(), ready ? 1.0 : 0.7);
    QCOMPARE(m_bench->driver().textOf("uploadButton"), "Uploading...");
}

void UploaderFormTest::choosingAFormatClearsWhatItDoesNotUse()
{
    state().setSelectedFile(file("/clip.mov"));
    QVERIFY(m_bench->click("formatOption:Separate"));
    QVERIFY(state().selectedFile().isEmpty());
    QVERIFY(m_bench->item("filePicker") == nullptr && m_bench->item("leftEyePicker") != nullptr);
    state().setSelectedFileLeft(file("/l.mov"));
    state().setSelectedFile(file("/late.mov"));
    QVERIFY(m_bench->click("formatOption:Separate")); // pressed again, it acts again
    QVERIFY(state().selectedFile().isEmpty());
    QVERIFY(!state().selectedFileLeft().isEmpty());
    QVERIFY(m_bench->click("formatOption:2D"));
    QVERIFY(state().selectedFileLeft().isEmpty());
}

void UploaderFormTest::immersiveFormatFixesThePerspective()
{
    QVERIFY(m_bench->click("perspectiveOption:360"));
    QVERIFY(m_bench->click("formatOption:Apple Immersive Video (.aivu)"));
    QCOMPARE(state().selectedPerspective(), "180");
    QTRY_VERIFY(m_bench->item("perspectiveOption:180") == nullptr);
    QVERIFY(m_bench->click("formatOption:2D"));
    QTRY_VERIFY(m_bench->item("perspectiveOption:180") != nullptr);
    QVERIFY(m_bench->item("perspectiveOption:180")->property("selected").toBool());
}

void UploaderFormTest::dropTakesTheFirstFileLaterAndSilently()
{
    state().setStatusMessage("as before");
    QVERIFY(m_bench->driver().drop("filePicker", {file("/100%\n🎥.mov"), file("/b.mov")}));
    state().setSelectedFile({});
    QTRY_COMPARE(state().selectedFile(), file("/100%\n🎥.mov")); // late, and over what was there
    QCOMPARE(state().statusMessage(), "as before");
    QVERIFY(!m_bench->driver().drop("filePicker", {file("/c.mov")})); // filled, it takes none
    state().setSelectedFile({});
    QVERIFY(!m_bench->driver().drop("filePicker", {QUrl("https://example.org/a.mov")}));
}

void UploaderFormTest::eyesAreIndependentAndStayDropTargets()
{
    QVERIFY(m_bench->click("formatOption:Separate"));
    for (const char* name : {"/a.mov", "/b.mov"}) {
        QVERIFY(m_bench->driver().drop("leftEyePicker", {file(name)}));
        QTRY_COMPARE(state().selectedFileLeft(), file(name));
    }
    QVERIFY(state().selectedFileRight().isEmpty());
}

void UploaderFormTest::dialogChoiceAndClearWriteTheStatus()
{
    QVERIFY(m_bench->click("filePicker"));
    auto* dialog = m_bench->item("filePicker")->findChild<QObject*>("openFileDialog");
    QVERIFY(dialog != nullptr);
    QTRY_VERIFY(dialog->property("visible").toBool());
    QVERIFY(QMetaObject::invokeMethod(dialog, "close"));
    QVERIFY(QMetaObject::invokeMethod(dialog, "rejected"));
    QVERIFY(QMetaObject::invokeMethod(dialog, "accepted")); // confirmed without a choice
    QVERIFY(state().selectedFile().isEmpty());
    QCOMPARE(state().statusMessage(), "Ready to upload");

    const QTemporaryDir folder;
    const QString path = folder.filePath("clip.mov");
    QVERIFY(QFile(path).open(QIODevice::WriteOnly)); // the dialog takes what there is
    QVERIFY(dialog->setProperty("selectedFile", QUrl::fromLocalFile(path)));
    QVERIFY(QMetaObject::invokeMethod(dialog, "accepted"));
    QCOMPARE(state().statusMessage(), "Selected: clip.mov");
    QVERIFY(m_bench->click("clearButton"));
    QVERIFY(state().selectedFile().isEmpty());
    QCOMPARE(state().statusMessage(), "Ready to upload");
}

void UploaderFormTest::formIsDisabledWhileUploading()
{
    QVERIFY(m_bench->click("formatOption:Separate"));
    QVERIFY(m_bench->driver().drop("leftEyePicker", {file("/l.mov")}));
    QTRY_VERIFY(m_bench->item("clearButton") != nullptr);
    state().setIsUploading(true);
    for (const char* name : {"formatOption:2D", "perspectiveOption:360", "clearButton", "nameField"}) {
        QTest::mouseClick(&m_bench->window(), Qt::LeftButton, {}, m_bench->centreOf(name));
    }
    m_bench->press(Qt::Key_X);
    QCOMPARE(state().selectedFileFormat(), "Separate");
    QCOMPARE(state().selectedPerspective(), "60");
    QCOMPARE(state().selectedFileLeft(), file("/l.mov"));
    QCOMPARE(state().videoName(), "");
    QMimeData data;
    data.setUrls({file("/other.mov")});
    const QPoint zone = m_bench->centreOf("leftEyePicker");
    QDragEnterEvent enter(zone, Qt::CopyAction, &data, Qt::LeftButton, {});
    QDropEvent drop(zone, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&m_bench->window(), &enter);
    QVERIFY(!enter.isAccepted());
    QCoreApplication::sendEvent(&m_bench->window(), &drop);
    QTest::qWait(20);
    QCOMPARE(state().selectedFileLeft(), file("/l.mov"));
    QVERIFY(m_bench->click("cancelUploadButton")); // it lies outside the form
    QVERIFY(!state().isUploading());
    QVERIFY(m_bench->item("cancelUploadButton") == nullptr && m_bench->item("progressBar") == nullptr);
}

void UploaderFormTest::hoverShows()
{
    QTest::mouseMove(&m_bench->window(), m_bench->centreOf("formatOption:2D"));
    QTRY_VERIFY(state().hoverStates().value("2D").toBool());
    QTest::mouseMove(&m_bench->window(), m_bench->centreOf("workspaceBlock"));
    QTRY_VERIFY(state().isHeaderHovered());
    QVERIFY(!state().hoverStates().value("2D").toBool());
    QTRY_COMPARE(m_bench->item("workspaceBlock")->scale(), 1.02);
    QTest::mouseMove(&m_bench->window(), m_bench->centreOf("logText"));
    QTRY_VERIFY(!state().isHeaderHovered());
}

void UploaderFormTest::dragAndPointerWriteOneHoverFlag()
{
    const auto hovered = [this] { return m_bench->item("filePicker")->property("isHovered").toBool(); };
    QTest::mouseMove(&m_bench->window(), m_bench->centreOf("filePicker"));
    QTRY_VERIFY(hovered());
    QTest::mouseMove(&m_bench->window(), m_bench->centreOf("logText"));
    QTRY_VERIFY(!hovered());
    QMimeData data;
    data.setUrls({file("/a.mov")});
    QDragEnterEvent enter(m_bench->centreOf("filePicker"), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&m_bench->window(), &enter);
    QVERIFY(hovered());
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&m_bench->window(), &leave);
    QVERIFY(!hovered());
    QVERIFY(m_bench->driver().drop("filePicker", {file("/a.mov")}));
    QTest::mouseMove(&m_bench->window(), m_bench->centreOf("logText"));
    QTRY_VERIFY(!hovered());
}

QTEST_MAIN(UploaderFormTest)

#include "tst_uploader_form.moc"
