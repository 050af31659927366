#pragma once

#include "app/DesktopFeedback.h"
#include "app/tessary_macos_uploaderApp.h"
#include "desktop/CaretRest.h"

#include <QObject>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSessionManager>

#include <memory>
#include <vector>

class QQuickWindow;

namespace tessary {

/// Windows over one application object. Lives on the main thread, below a QGuiApplication.
class Program : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int windowCount READ windowCount NOTIFY windowCountChanged)

public:
    explicit Program(const Configuration& configuration);
    ~Program() override;
    Q_DISABLE_COPY_MOVE(Program)

    /// Opens one more window, with a screen of its own. False, and a report on standard error, when its
    /// description cannot be loaded.
    Q_INVOKABLE bool openWindow();

    /// Closes every window, ends the running tools, and then the application loop.
    Q_INVOKABLE void quit();

    /// Asks in the oldest window, which comes to the front, whether to quit. There is a window.
    void askToQuit();

    /// Opens the first window and runs the application loop to its end; returns the exit status.
    int run();

    [[nodiscard]] tessary_macos_uploaderApp& application() { return m_application; }

    /// The open windows, oldest first. A window that is closed is gone; with the last one the program quits.
    [[nodiscard]] std::vector<QQuickWindow*> windows() const;

    [[nodiscard]] int windowCount() const { return static_cast<int>(m_windows.size()); }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void windowCountChanged();

    /// People are to be asked in that window whether to quit.
    void questionWanted(QQuickWindow* window);

private:
    void forgetWindow(const QQuickWindow* window);
    void answerSession(QSessionManager& session);
    void show(quint64 screen, const QString& token);

    tessary_macos_uploaderApp m_application;
    DesktopFeedback m_desktopFeedback;
    desktop::CaretRest m_caretRest;
    QQmlEngine m_engine; ///< after the state it shows, so that it goes first
    QQmlComponent m_windowComponent;
    std::vector<std::unique_ptr<QQuickWindow>> m_windows;
};

} // namespace tessary
