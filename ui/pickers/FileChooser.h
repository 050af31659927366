#pragma once

#include "desktop/PortalFileChooser.h"

#include <QObject>
#include <QQuickWindow>
#include <QUrl>
#include <QtQml/qqml.h>

namespace tessary::pickers {

/// Has one file chosen in the dialog of the desktop's portal, where that is the one to use.
class FileChooser : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// The portal is being asked or its dialog is open, above a window that knows nothing of it.
    Q_PROPERTY(bool waiting READ waiting NOTIFY waitingChanged)

public:
    explicit FileChooser(QObject* parent = nullptr);

    [[nodiscard]] bool waiting() const { return m_portal.isOpen(); }

    Q_INVOKABLE void open(QQuickWindow* window);

Q_SIGNALS:
    void waitingChanged();
    void chosen(const QUrl& file);
    /// The dialog that the toolkit has is the one to use; told within 1.5 s of opening.
    void toolkitWanted();

private:
    desktop::PortalFileChooser m_portal;
};

} // namespace tessary::pickers
