#pragma once

#include <QObject>

namespace tessary {

/// What the windows share besides the session. Every assignment is announced, also one that changes nothing.
class AppManager : public QObject
{
    Q_OBJECT
    /// The change-key screen is to be shown in place of the uploader.
    Q_PROPERTY(bool editingAPIKey READ editingAPIKey WRITE setEditingAPIKey NOTIFY editingAPIKeyChanged)

public:
    using QObject::QObject;

    [[nodiscard]] bool editingAPIKey() const { return m_editingAPIKey; }

    void setEditingAPIKey(bool editing);

Q_SIGNALS:
    void editingAPIKeyChanged();

private:
    bool m_editingAPIKey = false;
};

} // namespace tessary
