#include "desktop/Compositor.h"

#include <QGuiApplication>
#include <QProcess>
#include <QTest>

#include <xcb/xcb.h>

using namespace tessary::desktop;

/// On an X server of its own, where this test is whatever else there is.
class CompositorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whoeverOwnsTheSelectionComposites();
};

void CompositorTest::whoeverOwnsTheSelectionComposites()
{
    QVERIFY(!isComposited()); // nobody has ever named the selection
    xcb_connection_t* server = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const QByteArray name("_NET_WM_CM_S0");
    xcb_intern_atom_reply_t* atom = xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 0, static_cast<uint16_t>(name.size()), name.constData()), nullptr);
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(server)).data;
    const xcb_window_t window = xcb_generate_id(server);
    xcb_create_window(server, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    QVERIFY(!isComposited());
    xcb_set_selection_owner(server, window, atom->atom, XCB_CURRENT_TIME);
    QVERIFY(isComposited());
    xcb_destroy_window(server, window);
    QVERIFY(!isComposited());
    free(atom); // NOLINT(cppcoreguidelines-no-malloc): the library's own
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
        CompositorTest test;
        result = QTest::qExec(&test, argc, argv);
    }
    server.terminate();
    server.waitForFinished();
    return result;
}

#include "tst_compositor.moc"
