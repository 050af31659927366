#pragma once

#include "upload/UploaderStateFactory.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <memory>

namespace tessary {

/// A screen's share in its uploader state: made with the screen, gone with it. The state itself stays for as
/// long as an upload needs it.
class UploaderStateHolder : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// Set once, by the screen that declares the holder.
    Q_PROPERTY(tessary::UploaderStateFactory* factory READ factory WRITE setFactory NOTIFY stateChanged)
    Q_PROPERTY(tessary::FileUploaderState* state READ state NOTIFY stateChanged)

public:
    using QObject::QObject;

    [[nodiscard]] UploaderStateFactory* factory() const { return m_factory; }

    void setFactory(UploaderStateFactory* factory);

    /// Null until the factory is set.
    [[nodiscard]] FileUploaderState* state() const { return m_state.get(); }

Q_SIGNALS:
    void stateChanged();

private:
    UploaderStateFactory* m_factory = nullptr;
    std::shared_ptr<FileUploaderState> m_state;
};

} // namespace tessary
