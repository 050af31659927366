#include "local/screens/Stage.h"

#include "app/KeyForm.h"
#include "app/UploaderStateHolder.h"
#include "local/WindowDriver.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QImage>
#include <QQuickItem>
#include <QTimer>

namespace tessary::screens {
namespace {

constexpr QSize windowSize(1000, 800);

} // namespace

// Nothing listens on the discard port of this machine, so every request fails at once.
Stage::Stage() : m_program({QStringLiteral("http://127.0.0.1:9/api"), m_settings.path(), m_settings.path()})
{
    if (!m_program.openWindow()) {
        qFatal("no window");
    }
    m_program.windows().front()->resize(windowSize);
}

FileUploaderState& Stage::uploader() const
{
    const auto* holder = m_program.windows().front()->findChild<UploaderStateHolder*>();
    if (holder == nullptr || holder->state() == nullptr) {
        qFatal("the uploader screen is not shown");
    }
    return *holder->state();
}

void Stage::signIn(const QString& workspaceName)
{
    session().setApiKey(QStringLiteral("key"));
    Workspace workspace;
    workspace.workspaceName = workspaceName;
    session().setWorkspaceData(workspace);
}

void Stage::failToSignIn()
{
    KeyForm form;
    form.setProperty("sessionManager", QVariant::fromValue(&session()));
    form.setApiKey(QStringLiteral("key"));
    form.submitKey();
    for (QDeadlineTimer end(5000); session().signInProblem().isEmpty() && !end.hasExpired();) {
        wait(10);
    }
}

QQuickItem* Stage::find(const QString& name) const
{
    return local::WindowDriver(*m_program.windows().front()).find(name);
}

void Stage::wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

bool Stage::save(const QString& file) const
{
    return m_program.windows().front()->grabWindow().convertToFormat(QImage::Format_RGB888).save(file);
}

} // namespace tessary::screens
