#include "desktop/BringToFront.h"
#include "desktop/Compositor.h"
#include "desktop/PortalFileChooser.h"
#include "tests/support/FakeService.h"

#include <QDBusObjectPath>
#include <QGuiApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <xcb/xcb.h>

#include <memory>

using namespace tessary::desktop;
using namespace tessary::testing;

namespace {

xcb_connection_t* display()
{
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

xcb_window_t root()
{
    return xcb_setup_roots_iterator(xcb_get_setup(display())).data->root;
}

/// Of all windows on the screen, the one above the others.
WId topWindow()
{
    const std::unique_ptr<xcb_query_tree_reply_t, decltype(&free)> tree(
        xcb_query_tree_reply(display(), xcb_query_tree(display(), root()), nullptr), free);
    return xcb_query_tree_children(tree.get())[tree->children_len - 1];
}

} // namespace

/// On an X server of its own, where this test is whatever else there is.
class X11Test : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whoeverOwnsTheSelectionComposites();
    void windowComesToTheFrontWithItsToken();
    void portalsDialogIsWaitedForUntilItIsUp_data();
    void portalsDialogIsWaitedForUntilItIsUp();
};

void X11Test::whoeverOwnsTheSelectionComposites()
{
    QVERIFY(!isComposited()); // nobody has ever named the selection
    xcb_connection_t* server = display();
    const QByteArray name("_NET_WM_CM_S0");
    xcb_intern_atom_reply_t* atom = xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 0, static_cast<uint16_t>(name.size()), name.constData()), nullptr);
    const xcb_window_t window = xcb_generate_id(server);
    xcb_create_window(server, XCB_COPY_FROM_PARENT, window, root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    QVERIFY(!isComposited());
    xcb_set_selection_owner(server, window, atom->atom, XCB_CURRENT_TIME);
    QVERIFY(isComposited());
    xcb_destroy_window(server, window);
    QVERIFY(!isComposited());
    free(atom); // NOLINT(cppcoreguidelines-no-malloc): the library's own
}

void X11Test::windowComesToTheFrontWithItsToken()
{
    constexpr const char* token = "XDG_ACTIVATION_TOKEN";
    QWindow wanted;
    QWindow other;
    wanted.showMinimized();
    other.show();
    other.requestActivate();
    QTRY_COMPARE(QGuiApplication::focusWindow(), &other);
    QCOMPARE(topWindow(), other.winId());
    QByteArray given; // while the platform is asked
    connect(&wanted, &QWindow::windowStateChanged, this, [&given] { given = qgetenv(token); });
    bringToFront(wanted, "of the press");
    QCOMPARE(wanted.windowStates(), Qt::WindowNoState);
    QCOMPARE(given, QByteArray("of the press"));
    QVERIFY(!qEnvironmentVariableIsSet(token)); // or a tool would inherit it
    QTRY_COMPARE(QGuiApplication::focusWindow(), &wanted);
    QCOMPARE(topWindow(), wanted.winId());
}

void X11Test::portalsDialogIsWaitedForUntilItIsUp_data()
{
    QTest::addColumn<QVariant>("version");
    QTest::addColumn<QVariant>("request");
    QTest::addColumn<int>("questions");
    const auto version = [](uint number) { return QVariant::fromValue(QDBusVariant(number)); };
    const auto request = QVariant::fromValue(QDBusObjectPath("/request/3"));
    QTest::newRow("up") << version(3) << request << 2;
    QTest::newRow("no portal") << version(3) << request << 0;
    QTest::newRow("version zero") << version(0) << request << 1;
    QTest::newRow("no dialog") << version(3) << QVariant(3U) << 2;
}

void X11Test::portalsDialogIsWaitedForUntilItIsUp()
{
    QFETCH(QVariant, version);
    QFETCH(QVariant, request);
    QFETCH(int, questions);
    const bool up = qstrcmp(QTest::currentDataTag(), "up") == 0;
    const QStringList names(qsizetype(questions > 0), "org.freedesktop.portal.Desktop");
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const QDBusConnection desktop = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "desktop");
    FakeService portal(desktop, names, request);
    portal.answers["Get"] = version;
    QWindow window;
    PortalFileChooser chooser(bus);
    const QSignalSpy unavailable(&chooser, &PortalFileChooser::unavailable);
    const auto* patience = chooser.findChild<QTimer*>();
    QCOMPARE(patience->intervalAsDuration(), std::chrono::milliseconds(1500));
    chooser.open(&window, {});
    QVERIFY(patience->isActive());
    // The second question goes out when the first has been answered.
    QVERIFY(settled(bus, desktop) && settled(bus, desktop));
    QCOMPARE(portal.calls.size(), questions);
    QCOMPARE(chooser.isOpen(), up);
    QVERIFY(!patience->isActive()); // people choose for as long as they like
    QCOMPARE(unavailable.count(), up ? 0 : 1);
    QVERIFY(!up || portal.arguments.at(0).toString() == QString::asprintf("x11:%llx", window.winId()));
}

int main(int argc, char** argv)
{
    QProcess server;
    server.start(QStringLiteral("Xvfb"), {QStringLiteral("-displayfd"), QStringLiteral("1")});
    if (!server.waitForReadyRead(-1)) {
        qFatal("No X server.");
    }
    qputenv("DISPLAY", ':' + server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    int result = 0;
    {
        const QGuiApplication application(argc, argv);
        X11Test test;
        result = QTest::qExec(&test, argc, argv);
    }
    server.terminate();
    server.waitForFinished();
    return result;
}

#include "tst_x11.moc"
