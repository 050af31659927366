#include "ui/pickers/FileChooser.h"

namespace tessary::pickers {

FileChooser::FileChooser(QObject* parent) : QObject(parent)
{
    using desktop::PortalFileChooser;
    connect(&m_portal, &PortalFileChooser::chosen, this, &FileChooser::waitingChanged);
    connect(&m_portal, &PortalFileChooser::dismissed, this, &FileChooser::waitingChanged);
    connect(&m_portal, &PortalFileChooser::unavailable, this, &FileChooser::waitingChanged);
    connect(&m_portal, &PortalFileChooser::chosen, this, &FileChooser::chosen);
    connect(&m_portal, &PortalFileChooser::unavailable, this, &FileChooser::toolkitWanted);
}

void FileChooser::open(QQuickWindow* window)
{
    if (!desktop::PortalFileChooser::isWanted()) {
        Q_EMIT toolkitWanted();
        return;
    }
    m_portal.open(window, tr("Choose a file"));
    Q_EMIT waitingChanged();
}

} // namespace tessary::pickers
