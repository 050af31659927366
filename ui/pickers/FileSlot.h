#pragma once

#include "upload/FileUploaderState.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>
#include <QtQml/qqml.h>

namespace tessary::pickers {

/// The one place of the uploader's state that a picker fills. What a drop delivers arrives there also when
/// the picker is gone by then.
class FileSlot : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::FileUploaderState* state READ state WRITE setState NOTIFY fileChanged)
    Q_PROPERTY(Place place MEMBER m_place NOTIFY fileChanged)
    /// Empty while no file is chosen.
    Q_PROPERTY(QUrl file READ file NOTIFY fileChanged)
    Q_PROPERTY(bool filled READ filled NOTIFY fileChanged)
    Q_PROPERTY(QString name READ name NOTIFY fileChanged)
    Q_PROPERTY(QString kind READ kind NOTIFY fileChanged)
    /// Why the last file that was brought here was not taken, in words for a person; mostly empty.
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    enum class Place { SingleFile, LeftEye, RightEye };
    Q_ENUM(Place)

    using QObject::QObject;

    [[nodiscard]] FileUploaderState* state() const { return m_state; }

    void setState(FileUploaderState* state);

    [[nodiscard]] QUrl file() const;

    [[nodiscard]] bool filled() const { return !file().isEmpty(); }

    [[nodiscard]] QString name() const;
    [[nodiscard]] QString kind() const;

    /// A drag of these is welcome: it carries a local file.
    Q_INVOKABLE [[nodiscard]] static bool welcomes(const QList<QUrl>& items);

    /// Takes the first file of a drop; false when there is none. The file is stored in a later turn of the
    /// event loop, over whatever is there by then, and the status line is left alone.
    Q_INVOKABLE bool acceptDrop(const QList<QUrl>& items);

    /// Takes the choice of the open dialog.
    Q_INVOKABLE void choose(const QUrl& item);
    Q_INVOKABLE void clear();

    [[nodiscard]] QString problem() const { return m_problem; }

    Q_INVOKABLE void forgetProblem() { setProblem({}); }

    /// Where to start looking for a file: where the last one of this run came from, the person's videos, or
    /// the home folder.
    Q_INVOKABLE [[nodiscard]] static QUrl startFolder();

Q_SIGNALS:
    void fileChanged();
    void problemChanged();

private:
    void setProblem(const QString& problem);

    /// Whether the file can be taken; says so when it cannot.
    bool isUsable(const QUrl& file);

    QPointer<FileUploaderState> m_state; ///< goes with its screen or with its last upload
    QString m_problem;
    Place m_place = Place::SingleFile;
};

} // namespace tessary::pickers
