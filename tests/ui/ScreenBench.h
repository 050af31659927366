#pragma once

#include "app/Program.h"
#include "app/UploaderStateHolder.h"
#include "local/WindowDriver.h"

#include <QMimeData>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

namespace tessary {

/// The real program with one window; unless told otherwise, over a service that refuses every connection.
class ScreenBench
{
public:
    explicit ScreenBench(const QString& baseUrl = QStringLiteral("http://127.0.0.1:9/api"),
                         const QString& resourcesFolder = {})
        : m_program({baseUrl, m_folder.path(), resourcesFolder})
    {
        if (!m_program.openWindow()) {
            qFatal("no window");
        }
    }

    [[nodiscard]] Program& program() { return m_program; }

    [[nodiscard]] tessary_macos_uploaderApp& application() { return m_program.application(); }

    [[nodiscard]] SessionManager& session() { return *application().sessionManager(); }

    [[nodiscard]] QQuickWindow& window() { return *m_program.windows().front(); }

    [[nodiscard]] local::WindowDriver driver() { return local::WindowDriver(window()); }

    [[nodiscard]] FileUploaderState& state() { return *window().findChild<UploaderStateHolder*>()->state(); }

    [[nodiscard]] QQuickItem* item(const char* name) { return driver().find(QLatin1StringView(name)); }

    [[nodiscard]] bool click(const char* name) { return driver().click(QLatin1StringView(name)); }

    /// Signs in without asking the service, and waits for the uploader screen.
    [[nodiscard]] bool showUploader(const QString& key = QStringLiteral("key"))
    {
        session().setApiKey(key);
        return driver().ready(QStringLiteral("nameField"));
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&window(), Qt::Key(key), modifiers);
    }

    /// What has the keyboard, by name.
    [[nodiscard]] QString focused()
    {
        return window().activeFocusItem() == nullptr ? QString() : window().activeFocusItem()->objectName();
    }

    [[nodiscard]] QPoint centreOf(const char* name)
    {
        return item(name)->mapToScene(item(name)->boundingRect().center()).toPoint();
    }

private:
    QTemporaryDir m_folder;
    Program m_program;
};

} // namespace tessary
