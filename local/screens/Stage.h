#pragma once

#include "app/Program.h"

#include <QQuickWindow>
#include <QTemporaryDir>

#include <memory>

namespace tessary::screens {

/// One window of the real program over a service that cannot be reached, to be put into any state.
class Stage
{
public:
    Stage();

    [[nodiscard]] SessionManager& session() { return *m_program.application().sessionManager(); }

    [[nodiscard]] AppManager& appManager() { return *m_program.application().appManager(); }

    /// The state of the uploader screen, which must be the one that is shown.
    [[nodiscard]] FileUploaderState& uploader() const;

    /// Signs in to a workspace of that name without asking the service.
    void signIn(const QString& workspaceName);

    /// Submits a key, as the login screen does, and waits for the check to fail.
    void failToSignIn();

    /// The item of that name in the window; null when there is none.
    [[nodiscard]] QQuickItem* find(const QString& name) const;

    /// Lets animations run.
    static void wait(int milliseconds);

    [[nodiscard]] bool save(const QString& file) const;

private:
    QTemporaryDir m_settings;
    Program m_program;
};

} // namespace tessary::screens
