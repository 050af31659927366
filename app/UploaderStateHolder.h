#pragma once

#include "app/tessary_macos_uploaderApp.h"

#include <QObject>

namespace tessary {

/// A screen's share in its uploader state: made with the screen, gone with it. The state itself stays for as
/// long as an upload needs it.
class UploaderStateHolder : public QObject
{
    Q_OBJECT
    /// Set once, by the screen that declares the holder.
    Q_PROPERTY(tessary::tessary_macos_uploaderApp* application READ application WRITE setApplication NOTIFY
                   stateChanged)
    Q_PROPERTY(tessary::FileUploaderState* state READ state NOTIFY stateChanged)

public:
    using QObject::QObject;

    [[nodiscard]] tessary_macos_uploaderApp* application() const { return m_application; }

    void setApplication(tessary_macos_uploaderApp* application);

    /// Null until the application is set.
    [[nodiscard]] FileUploaderState* state() const { return m_state.get(); }

Q_SIGNALS:
    void stateChanged();

private:
    tessary_macos_uploaderApp* m_application = nullptr;
    std::shared_ptr<FileUploaderState> m_state;
};

} // namespace tessary
