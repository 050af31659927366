#include "ui/uploader/UploaderStateHolder.h"

#include <QQmlEngine>

namespace tessary {

void UploaderStateHolder::setFactory(UploaderStateFactory* factory)
{
    m_factory = factory;
    m_state = factory->make();
    // Without a parent the engine would take the state for its own and delete it.
    QQmlEngine::setObjectOwnership(m_state.get(), QQmlEngine::CppOwnership);
    Q_EMIT stateChanged();
}

} // namespace tessary
