#include "ui/pickers/FileSlot.h"

#include "ui/pickers/FileUrl.h"
#include "upload/FileName.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace tessary::pickers {
namespace {

/// Of the whole run, all windows and all pickers.
QUrl& lastFolder()
{
    static QUrl folder;
    return folder;
}

void store(FileUploaderState& state, FileSlot::Place place, const QUrl& file)
{
    if (!file.isEmpty()) {
        lastFolder() = file.adjusted(QUrl::StripTrailingSlash).adjusted(QUrl::RemoveFilename);
    }
    switch (place) {
    case FileSlot::Place::SingleFile:
        state.setSelectedFile(file);
        break;
    case FileSlot::Place::LeftEye:
        state.setSelectedFileLeft(file);
        break;
    case FileSlot::Place::RightEye:
        state.setSelectedFileRight(file);
        break;
    }
}

} // namespace

void FileSlot::setState(FileUploaderState* state)
{
    if (!m_state.isNull()) {
        m_state->disconnect(this);
    }
    m_state = state;
    if (!m_state.isNull()) {
        connect(m_state, &FileUploaderState::selectedFileChanged, this, &FileSlot::fileChanged);
        connect(m_state, &FileUploaderState::selectedFileLeftChanged, this, &FileSlot::fileChanged);
        connect(m_state, &FileUploaderState::selectedFileRightChanged, this, &FileSlot::fileChanged);
    }
    Q_EMIT fileChanged();
}

QUrl FileSlot::file() const
{
    if (m_state.isNull()) {
        return {};
    }
    switch (m_place) {
    case Place::LeftEye:
        return m_state->selectedFileLeft();
    case Place::RightEye:
        return m_state->selectedFileRight();
    case Place::SingleFile:
        break;
    }
    return m_state->selectedFile();
}

QString FileSlot::name() const
{
    QString name = fileName(file());
    // A line break or another control character in a name must not break the one line that shows it.
    std::replace_if(
        name.begin(), name.end(), [](QChar c) { return !c.isPrint() && !c.isSurrogate(); }, u' ');
    return name;
}

QString FileSlot::kind() const
{
    return fileKindOf(file());
}

bool FileSlot::welcomes(const QList<QUrl>& items)
{
    return std::any_of(items.begin(), items.end(),
                       [](const QUrl& item) { return !fileUrlOf(item).isEmpty(); });
}

bool FileSlot::acceptDrop(const QList<QUrl>& items)
{
    const auto first =
        std::find_if(items.begin(), items.end(), [](const QUrl& item) { return !fileUrlOf(item).isEmpty(); });
    if (first == items.end() || m_state.isNull()) {
        return false;
    }
    if (const QUrl file = fileUrlOf(*first); isUsable(file)) {
        QMetaObject::invokeMethod(
            m_state, [state = m_state, place = m_place, file] { store(*state, place, file); },
            Qt::QueuedConnection);
    }
    return true;
}

void FileSlot::choose(const QUrl& item)
{
    const QUrl file = fileUrlOf(item);
    if (m_state.isNull() || file.isEmpty() || !isUsable(file)) {
        return; // a dialog may confirm without a choice, or with something that is on no disk of this machine
    }
    store(*m_state, m_place, file);
    if (m_place == Place::SingleFile) {
        m_state->setStatusMessage(QStringLiteral("Selected: ") + fileName(file));
    }
}

void FileSlot::clear()
{
    forgetProblem();
    if (m_state.isNull()) {
        return;
    }
    store(*m_state, m_place, {});
    if (m_place == Place::SingleFile) {
        m_state->setStatusMessage(statusMessageOf(UploadState::Ready));
    }
}

QUrl FileSlot::startFolder()
{
    if (!lastFolder().isEmpty()) {
        return lastFolder();
    }
    const QString videos = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    return QUrl::fromLocalFile(QFileInfo(videos).isDir() ? videos : QDir::homePath());
}

void FileSlot::setProblem(const QString& problem)
{
    if (problem != m_problem) {
        m_problem = problem;
        Q_EMIT problemChanged();
    }
}

bool FileSlot::isUsable(const QUrl& file)
{
    const bool readable = !hasUnreadableName(file);
    setProblem(readable ? QString()
                        : tr("The name of that file is not in UTF-8. Rename the file and try again."));
    return readable;
}

} // namespace tessary::pickers
