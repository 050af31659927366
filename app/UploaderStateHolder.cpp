#include "app/UploaderStateHolder.h"

#include <QQmlEngine>

namespace tessary {

void UploaderStateHolder::setApplication(tessary_macos_uploaderApp* application)
{
    m_application = application;
    m_state = application->makeUploaderState();
    // Without a parent the engine would take the state for its own and delete it.
    QQmlEngine::setObjectOwnership(m_state.get(), QQmlEngine::CppOwnership);
    Q_EMIT stateChanged();
}

} // namespace tessary
