#include "app/session/AppManager.h"

namespace tessary {

void AppManager::setEditingAPIKey(bool editing)
{
    m_editingAPIKey = editing;
    Q_EMIT editingAPIKeyChanged();
}

} // namespace tessary
