#include "app/Program.h"

#include "desktop/BringToFront.h"
#include "service/Diagnostics.h"
#include "ui/uploader/UploaderStateHolder.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>

#include <algorithm>

namespace tessary {
namespace {

/// For title bars and lists of windows where they do not find it by the desktop entry, as on X11.
QIcon windowIcon()
{
    QIcon icon;
    for (const int side : {16, 32, 48, 64, 128}) {
        icon.addFile(QStringLiteral(":/qt/qml/Tessary/App/icons/%1.png").arg(side), QSize(side, side));
    }
    return icon;
}

} // namespace

Program::Program(const Configuration& configuration)
    : m_application(configuration), m_desktopFeedback(m_application), m_windowComponent(&m_engine)
{
    QGuiApplication::setApplicationName(QStringLiteral("tessary_macos_uploader"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tessary Uploader"));
    QGuiApplication::setDesktopFileName(QStringLiteral("tessary_macos_uploader"));
    QGuiApplication::setQuitOnLastWindowClosed(false); // running tools are ended first
    // As other programs draw it; the toolkit's own way makes distance fields of all letters first.
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    if (const QString style = QStringLiteral("Basic"); QQuickStyle::name() != style) {
        QQuickStyle::setStyle(style);
    }

    connect(m_application.uploadActivity(), &UploadActivity::ended, qApp, &QCoreApplication::quit,
            Qt::QueuedConnection);
    connect(&m_desktopFeedback, &DesktopFeedback::windowWanted, this, &Program::show);
    connect(qApp, &QGuiApplication::commitDataRequest, this, &Program::answerSession, Qt::DirectConnection);
    qApp->installEventFilter(this);
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    m_windowComponent.loadUrl(QUrl(QStringLiteral("qrc:/qt/qml/Tessary/App/AppWindow.qml")));
}

Program::~Program()
{
    for (const auto& window : m_windows) {
        window->disconnect(this); // a window that is deleted hides first, and there is no one left to note it
    }
}

bool Program::openWindow()
{
    std::unique_ptr<QObject> object(m_windowComponent.createWithInitialProperties({
        {QStringLiteral("program"), QVariant::fromValue(this)},
        {QStringLiteral("application"), QVariant::fromValue(&m_application)},
    }));
    auto* window = qobject_cast<QQuickWindow*>(object.get());
    if (window == nullptr) {
        warnLine(QLatin1StringView("The window could not be opened: ") + m_windowComponent.errorString());
        return false;
    }
    object.release(); // NOLINT(bugprone-unused-return-value): the window below is the same object
    m_windows.emplace_back(window);
    connect(window, &QWindow::visibleChanged, this, [this, window](bool visible) {
        if (!visible) {
            forgetWindow(window);
        }
    });
    if (QGuiApplication::windowIcon().isNull()) {
        const auto show = [] { QGuiApplication::setWindowIcon(windowIcon()); };
        // When all that people wait for in the first frame is done.
        connect(window, &QQuickWindow::frameSwapped, this, show,
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    }
    Q_EMIT windowCountChanged();
    return true;
}

void Program::quit()
{
    for (QQuickWindow* window : windows()) {
        window->hide(); // the last one to go comes here, too, which does no harm
    }
    m_application.uploadActivity()->endAll();
}

int Program::run()
{
    return openWindow() ? QCoreApplication::exec() : EXIT_FAILURE;
}

std::vector<QQuickWindow*> Program::windows() const
{
    std::vector<QQuickWindow*> all;
    std::transform(m_windows.begin(), m_windows.end(), std::back_inserter(all),
                   std::mem_fn(&std::unique_ptr<QQuickWindow>::get));
    return all;
}

bool Program::eventFilter(QObject* watched, QEvent* event)
{
    // Items are asked whether a key is theirs rather than a shortcut by an event that comes accepted. A text
    // that can only be read leaves it so, and no shortcut would work while it has the focus.
    if (event->type() == QEvent::ShortcutOverride && qobject_cast<QQuickItem*>(watched) != nullptr) {
        event->ignore();
    }
    return QObject::eventFilter(watched, event);
}

void Program::answerSession(QSessionManager& session)
{
    if (m_application.uploadActivity()->underWay() && !m_windows.empty() && session.allowsInteraction()) {
        session.cancel();
        askToQuit();
    }
}

void Program::askToQuit()
{
    QQuickWindow* window = m_windows.front().get();
    desktop::bringToFront(*window, {});
    Q_EMIT questionWanted(window);
}

void Program::show(quint64 screen, const QString& token)
{
    const auto shows = [screen](const QQuickWindow* window) {
        const auto* holder = window->findChild<UploaderStateHolder*>();
        return holder != nullptr && holder->state()->number() == screen;
    };
    const std::vector<QQuickWindow*> all = windows();
    const auto found = std::find_if(all.begin(), all.end(), shows);
    QQuickWindow* window = found != all.end() ? *found : all.empty() ? nullptr : all.front();
    if (window != nullptr) {
        desktop::bringToFront(*window, token);
    }
}

void Program::forgetWindow(const QQuickWindow* window)
{
    const auto found = std::find_if(m_windows.begin(), m_windows.end(),
                                    [window](const auto& owned) { return owned.get() == window; });
    if (found == m_windows.end()) {
        return;
    }
    found->release()->deleteLater(); // it is in the middle of its own signal
    m_windows.erase(found);
    Q_EMIT windowCountChanged();
    if (m_windows.empty()) {
        quit();
    }
}

} // namespace tessary
