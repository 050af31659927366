#include "testkit/ProgramFixture.h"
#include "ui/pickers/FileSlot.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDir>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using namespace tessary;
using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;

/// A portal on this test's own session bus.
class FakePortal : public QDBusVirtualObject
{
public:
    enum class Manner { Offers, HasNoVersion, HasVersionZero, RefusesToOpen, OpensLate, IsSilent, IsAbsent };

    explicit FakePortal(Manner manner) : m_manner(manner)
    {
        m_bus.registerVirtualObject("/", this, QDBusConnection::SubPath);
        if (manner != Manner::IsAbsent) {
            m_bus.registerService(service);
        }
    }

    ~FakePortal() override
    {
        die();
        m_bus.unregisterObject("/", QDBusConnection::UnregisterTree);
    }

    Q_DISABLE_COPY_MOVE(FakePortal)

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        if (message.interface() == "org.freedesktop.portal.Settings") {
            return false;
        }
        calls.append(message.interface().section('.', -1) + '.' + message.member());
        if (message.member() == "Close") {
            closed = message.path();
        }
        if (m_manner == Manner::IsSilent) {
            return true;
        }
        const QVariantList arguments = message.arguments();
        if (arguments == QVariantList{"org.freedesktop.portal.FileChooser", "version"} &&
            m_manner != Manner::HasNoVersion) {
            const uint version = m_manner == Manner::HasVersionZero ? 0 : 3;
            return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(version))));
        }
        if (message.member() == "OpenFile" && m_manner != Manner::RefusesToOpen) {
            title = arguments.value(1).toString();
            const auto options = qdbus_cast<QVariantMap>(arguments.value(2));
            modal = options.value("modal").toBool();
            request = u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(
                message.service().mid(1).replace('.', '_'), options.value("handle_token").toString());
            m_opened = message.createReply(QVariant::fromValue(QDBusObjectPath(request)));
            return m_manner == Manner::OpensLate || bus.send(m_opened);
        }
        return bus.send(message.createErrorReply(QDBusError::UnknownMethod, "not here"));
    }

    void respond(uint response, const QStringList& uris)
    {
        auto signal = QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
        signal.setArguments({response, QVariantMap{{"uris", uris}}});
        m_bus.send(signal);
    }

    void openNow() { m_bus.send(m_opened); }

    void die() { m_bus.unregisterService(service); }

    QStringList calls;
    QString request;
    QString closed;
    QString title;
    bool modal = false;

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
    QDBusMessage m_opened;
    Manner m_manner;
};

using Manner = FakePortal::Manner;

} // namespace

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
    QTest::addColumn<uint>("response");
    QTest::addColumn<QStringList>("uris");
    QTest::addColumn<QUrl>("file");
    QTest::newRow("chosen") << 0U << QStringList{"file:///a%20b%25.mov", "file:///c.mov"}
                            << QUrl::fromLocalFile("/a b%.mov");
    QTest::newRow("canceled") << 1U << QStringList("file:///a.mov") << QUrl();
    QTest::newRow("nothing") << 0U << QStringList() << QUrl();
    QTest::newRow("no file") << 0U << QStringList("https://example.org/a.mov") << QUrl();
}

void FileChoiceTest::portalDialogIsTheDefault()
{
    QFETCH(uint, response);
    QFETCH(QStringList, uris);
    QFETCH(QUrl, file);
    FakePortal portal(Manner::Offers);
    QVERIFY(m_fixture->click("filePicker"));
    QTRY_VERIFY(!portal.request.isEmpty());
    QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, m_fixture->centreOf("formatOption:2D"));
    QTest::mouseClick(&m_fixture->window(), Qt::LeftButton, {}, m_fixture->centreOf("filePicker"));
    QCOMPARE(state().selectedFileFormat(), "Stereoscopic Left/Right"); // the window waits
    portal.respond(response, uris);
    QTRY_COMPARE(state().selectedFile(), file);
    QCOMPARE(portal.title, "Choose a file");
    QVERIFY(portal.modal);
    QCOMPARE(state().statusMessage(), file.isEmpty() ? "Ready to upload" : "Selected: a b%.mov");
    QCOMPARE(portal.calls, (QStringList{"Properties.Get", "FileChooser.OpenFile"}));
    QVERIFY(toolkitDialog() == nullptr);
    QTRY_VERIFY(m_fixture->click("formatOption:2D") && state().selectedFileFormat() == "2D");
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
    row("no version", Manner::HasNoVersion, {}, {"Properties.Get"});
    row("version zero", Manner::HasVersionZero, {}, {"Properties.Get"});
    row("refused", Manner::RefusesToOpen, {}, {"Properties.Get", "FileChooser.OpenFile"});
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
    QTRY_COMPARE(portal.calls, asked);
    QCOMPARE(portal.closed, asked.contains("Request.Close") ? portal.request : QString());
}

void FileChoiceTest::unreadableNameSaysSoInTheTip()
{
    QVERIFY(m_fixture->driver().drop("filePicker", {QUrl::fromEncoded("file:///caf%E9.mov")}));
    QTRY_VERIFY(m_fixture->driver().textOf("fileProblem").contains("UTF-8"));
    QVERIFY(state().selectedFile().isEmpty());
    QCOMPARE(state().statusMessage(), "Ready to upload");
    QVERIFY(m_fixture->driver().drop("filePicker", {QUrl::fromEncoded("file:///caf%C3%A9.mov")}));
    QTRY_COMPARE(state().selectedFile(), QUrl::fromLocalFile("/café.mov"));
    state().setSelectedFile({});
    QCOMPARE(m_fixture->driver().textOf("fileProblem"), "");
}

void FileChoiceTest::slotOutlivesItsState()
{
    pickers::FileSlot slot;
    auto made = m_fixture->application().uploaderStates()->make();
    slot.setState(made.get());
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
