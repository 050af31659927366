#include "ui/uploader/UploaderStateHolder.h"

namespace tessary {

void UploaderStateHolder::setFactory(UploaderStateFactory* factory)
{
    m_factory = factory;
    m_state = factory->make();
    Q_EMIT stateChanged();
}

} // namespace tessary
