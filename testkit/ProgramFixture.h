#pragma once

#include "app/Program.h"
#include "testkit/WindowDriver.h"
#include "upload/FileUploaderState.h"

#include <QByteArray>
#include <QPoint>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>

class QQuickItem;
class QQuickWindow;

namespace tessary::testkit {

/// Nothing listens on the discard port of this machine, so every request fails at once.
inline const QString unreachableService = QStringLiteral("http://127.0.0.1:9/api");

/// The real program with one window open and a temporary folder for its settings. Main thread only; the
/// constructor ends the process when the window cannot be opened.
class ProgramFixture
{
public:
    explicit ProgramFixture(const QString& baseUrl = unreachableService, const QString& resourcesFolder = {});

    [[nodiscard]] Program& program() { return m_program; }

    [[nodiscard]] tessary_macos_uploaderApp& application() { return m_program.application(); }

    [[nodiscard]] SessionManager& session() { return *application().sessionManager(); }

    /// The oldest window.
    [[nodiscard]] QQuickWindow& window() const { return *m_program.windows().front(); }

    [[nodiscard]] WindowDriver driver() const { return WindowDriver(window()); }

    /// The state of the uploader screen, which must be the one that is shown.
    [[nodiscard]] FileUploaderState& state() const;

    /// The visible item of that name; null when there is none.
    [[nodiscard]] QQuickItem* item(const char* name) const;

    [[nodiscard]] QPoint centreOf(const char* name) const;

    [[nodiscard]] bool click(const char* name) const;

    void press(int key, Qt::KeyboardModifiers modifiers = {}) const;

    /// What has the keyboard, by name.
    [[nodiscard]] QString focused() const;

    /// Types the key on the login screen and submits it; waits for the uploader screen.
    [[nodiscard]] bool signIn(const QString& key);

    /// Takes a key into use without asking the service, and waits for the uploader screen.
    [[nodiscard]] bool showUploader(const QString& key = QStringLiteral("key"));

    /// Drops the file on the form and names the video.
    [[nodiscard]] bool fillForm(const QUrl& file, const QString& videoName) const;

    /// A path in the fixture's folder, where the settings lie, too.
    [[nodiscard]] QString pathOf(const QString& name) const { return m_folder.filePath(name); }

    /// A file of that content in the fixture's folder; empty when it cannot be written.
    [[nodiscard]] QUrl makeFile(const QString& name, const QByteArray& content) const;

private:
    [[nodiscard]] bool arriveAt(const char* name) const;

    QTemporaryDir m_folder;
    Program m_program;
};

} // namespace tessary::testkit
