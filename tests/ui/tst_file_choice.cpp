#include "testkit/ProgramFixture.h"
#include "tests/support/FakePortal.h"
#include "ui/pickers/FileSlot.h"

#include <QDBusConnection>
#include <QDir>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

using namespace tessary;

using testing::FakePortal;
using Manner = FakePortal::Manner;

class FileChoiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_fixture = std::make_unique<testkit::ProgramFixture>();
        QVERIFY(m_fixture->showUploader());
    }

    void cleanup() { m_fixture.reset(); }

    void toolkitStartsWhereThePersonIs();
    void portalDialogIsTheDefault_data();
    void portalDialogIsTheDefault();
    void portalThatGoesLeavesThePickerUsable();
    void dialogGoesWithItsScreen();
    void toolkitDialogIsTheFallback_data();
    void toolkitDialogIsTheFallback();
    void unreadableNameSaysSoInTheTip();
    void slotOutlivesItsState();
    void controlOOpensTheFirstEmptyPicker();

private:
    [[nodiscard]] FileUploaderState& state() const { return m_fixture->state(); }

    [[nodiscard]] QObject* toolkitDialog() const
    {
        QObject* dialog = m_fixture->window().findChild<QObject*>("openFileDialog");
        return dialog != nullptr && dialog->property("visible").toBool() ? dialog : nullptr;
    }

    std::unique_ptr<testkit::ProgramFixture> m_fixture;
};

void FileChoiceTest::toolkitStartsWhereThePersonIs()
{
    const auto startsAt = [this] {
        const bool opened =
            m_fixture->click("filePicker") && QTest::qWaitFor([this] { return toolkitDialog() != nullptr; });
        const QUrl folder = opened ? toolkitDialog()->property("currentFolder").toUrl() : QUrl();
        QMetaObject::invokeMethod(toolkitDialog(), "close");
        return folder.adjusted(QUrl::StripTrailingSlash).toLocalFile();
    };
    QCOMPARE(startsAt(), QDir::homePath());
    QVERIFY(QDir::home().mkdir("Videos"));
    QCOMPARE(startsAt(), QDir::home().filePath("Videos"));
    const QUrl clip = m_fixture->makeFile("clip.mov", "x");
    QVERIFY(m_fixture->driver().drop("filePicker", {clip}));
    QVERIFY(m_fixture->click("clearButton"));
    QCOMPARE(startsAt(), clip.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash).toLocalFile());
}

void FileChoiceTest::portalDialogIsTheDefault_data()
{
    QTest::addColumn<int>("manner");
    QTest::addColumn<uint>("response");
    QTest::addColumn<QStringList>("uris");
    QTest::addColumn<QUrl>("file");
    const auto row = [](const char* name, Manner manner, uint response, const QStringList& uris,
                        const QUrl& file = {}) {
        QTest::newRow(name) << int(manner) << response << uris << file;
    };
    const QUrl file = QUrl::fromLocalFile("/a b%.mov");
    row("chosen", Manner::Offers, 0, {"file:///a%20b%25.mov", "file:///c.mov"}, file);
    row("chosen in what is named by the portal", Manner::NamesItself, 0, {"file:///a%20b%25.mov"}, file);
    row("chosen before it is said to be open", Manner::OpensLate, 0, {"file:///a%20b%25.mov"}, file);
    row("canceled", Manner::Offers, 1, {"file:///a.mov"});
    row("nothing", Manner::Offers, 0, {});
    row("no file", Manner::Offers, 0, {"https://example.org/a.mov"});
}

void FileChoiceTest::portalDialogIsTheDefault()
{
    QFETCH(int, manner);
    QFETCH(uint, response);
    QFETCH(QStringList, uris);
    QFETCH(QUrl, file);
    FakePortal portal{Manner(manner)};
    QVERIFY(m_fixture->click("filePicker"));
    QTRY_VERIFY(!portal.request.isEmpty());
    QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, m_fixture->centreOf("formatOption:2D"));
    QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, m_fixture->centreOf("filePicker"));
    QCOMPARE(state().selectedFileFormat(), "Stereoscopic Left/Right"); // the window waits
    // Where the request has another name, it is listened for when the answer with that name is there.
    const auto bus = QDBusConnection::sessionBus();
    QVERIFY(testing::settled(bus, QDBusConnection("portal")) &&
            testing::settled(bus, QDBusConnection("portal")));
    portal.respond(response, uris);
    QTRY_COMPARE(state().selectedFile(), file);
    QCOMPARE(portal.parent, ""); // there is a name for it only on X11
    QCOMPARE(portal.title, "Choose a file");
    QVERIFY(portal.modal);
    QCOMPARE(state().statusMessage(), file.isEmpty() ? "Ready to upload" : "Selected: a b%.mov");
    QCOMPARE(portal.calls, (QStringList{"Properties.Get", "FileChooser.OpenFile"}));
    QVERIFY(toolkitDialog() == nullptr);
    QTRY_VERIFY(m_fixture->click("formatOption:2D") && state().selectedFileFormat() == "2D");
    portal.respond(0, {"file:///again.mov"}); // to nobody
    QVERIFY(testing::settled(bus, QDBusConnection("portal")));
    QCOMPARE(state().selectedFile(), file);
}

void FileChoiceTest::portalThatGoesLeavesThePickerUsable()
{
    FakePortal portal(Manner::Offers);
    QVERIFY(m_fixture->click("filePicker"));
    QTRY_VERIFY(!portal.request.isEmpty());
    portal.die();
    QTRY_VERIFY(m_fixture->click("filePicker") &&
                QTest::qWaitFor([this] { return toolkitDialog() != nullptr; }));
}

void FileChoiceTest::dialogGoesWithItsScreen()
{
    FakePortal portal(Manner::Offers);
    QVERIFY(m_fixture->click("filePicker"));
    QTRY_VERIFY(!portal.request.isEmpty());
    m_fixture->session().setApiKey({});
    QTRY_COMPARE(portal.calls, (QStringList{"Properties.Get", "FileChooser.OpenFile", "Request.Close"}));
    QCOMPARE(portal.closed, portal.request);
}

void FileChoiceTest::toolkitDialogIsTheFallback_data()
{
    QTest::addColumn<int>("manner");
    QTest::addColumn<QByteArray>("theme"); // that the person chose
    QTest::addColumn<QStringList>("asked");
    const auto row = [](const char* name, Manner manner, const QByteArray& theme, const QStringList& asked) {
        QTest::newRow(name) << int(manner) << theme << asked;
    };
    row("no portal", Manner::IsAbsent, {}, {});
    row("silent", Manner::IsSilent, {}, {"Properties.Get"});
    row("late", Manner::OpensLate, {}, {"Properties.Get", "FileChooser.OpenFile", "Request.Close"});
    row("a theme is chosen", Manner::Offers, "gtk3", {});
}

void FileChoiceTest::toolkitDialogIsTheFallback()
{
    QFETCH(int, manner);
    QFETCH(QByteArray, theme);
    QFETCH(QStringList, asked);
    FakePortal portal{Manner(manner)};
    qputenv("QT_QPA_PLATFORMTHEME", theme);
    QVERIFY(m_fixture->click("filePicker"));
    QTRY_VERIFY(toolkitDialog() != nullptr);
    qunsetenv("QT_QPA_PLATFORMTHEME");
    if (Manner(manner) == Manner::OpensLate) {
        portal.openNow(); // what is not wanted any more
    }
    QMetaObject::invokeMethod(toolkitDialog(), "close");
    QTRY_VERIFY(m_fixture->click("formatOption:2D") && state().selectedFileFormat() == "2D");
    QTRY_COMPARE(portal.calls, asked);
    QCOMPARE(portal.closed, asked.contains("Request.Close") ? portal.request : QString());
}

void FileChoiceTest::unreadableNameSaysSoInTheTip()
{
    for (const char* letter : {"%E9", "%EF%BF%BD"}) { // as it is, and as who read it before us leaves it
        const QUrl file = QUrl::fromEncoded(QByteArray("file:///caf") + letter + ".mov");
        QVERIFY(m_fixture->driver().drop("filePicker", {file}));
        QTRY_COMPARE(m_fixture->driver().textOf("fileProblem"),
                     "The name of that file is not in UTF-8. Rename the file and try again.");
        QVERIFY(state().selectedFile().isEmpty());
        QCOMPARE(state().statusMessage(), "Ready to upload");
        m_fixture->item("filePicker")->findChild<pickers::FileSlot*>()->clear();
        QCOMPARE(m_fixture->driver().textOf("fileProblem"), "");
    }
    QVERIFY(m_fixture->driver().drop("filePicker", {QUrl::fromEncoded("file:///caf%C3%A9.mov")}));
    QTRY_COMPARE(state().selectedFile(), QUrl::fromLocalFile("/café.mov"));
}

void FileChoiceTest::slotOutlivesItsState()
{
    pickers::FileSlot slot;
    auto made = m_fixture->application().uploaderStates()->make();
    slot.setState(&state());
    slot.setState(made.get());
    const QSignalSpy changes(&slot, &pickers::FileSlot::fileChanged);
    state().setSelectedFile(QUrl("file:///of/another.mov"));
    QCOMPARE(changes.count(), 0);
    QVERIFY(slot.acceptDrop({QUrl("file:///a.mov")}));
    made.reset();
    QCoreApplication::processEvents(); // the drop arrives nowhere
    QVERIFY(slot.file().isEmpty());
    QVERIFY(!slot.acceptDrop({QUrl("file:///a.mov")}));
    slot.choose(QUrl("file:///a.mov"));
    slot.clear();
    slot.setState(nullptr);
    QVERIFY(!slot.filled());
}

void FileChoiceTest::controlOOpensTheFirstEmptyPicker()
{
    FakePortal portal(Manner::Offers);
    const auto chooses = [&](const char* file) {
        portal.request.clear();
        m_fixture->press(Qt::Key_O, Qt::ControlModifier);
        const bool opened = QTest::qWaitFor([&] { return !portal.request.isEmpty(); });
        portal.respond(0, {file});
        return opened;
    };
    QVERIFY(m_fixture->click("formatOption:Separate"));
    QVERIFY(chooses("file:///l.mov"));
    QTRY_COMPARE(state().selectedFileLeft(), QUrl("file:///l.mov"));
    state().enter(UploadState::Requesting);
    m_fixture->press(Qt::Key_O, Qt::ControlModifier);
    state().enter(UploadState::Cancelled);
    QVERIFY(chooses("file:///r.mov"));
    QTRY_COMPARE(state().selectedFileRight(), QUrl("file:///r.mov"));
    m_fixture->press(Qt::Key_O, Qt::ControlModifier); // none is empty
    QVERIFY(m_fixture->click("formatOption:2D"));
    QVERIFY(chooses("file:///one.mov"));
    QTRY_COMPARE(state().selectedFile(), QUrl("file:///one.mov"));
    QCOMPARE(portal.calls.count("FileChooser.OpenFile"), 3);
}

QTEST_MAIN(FileChoiceTest)

#include "tst_file_choice.moc"
