#include "pickers/FileSlot.h"

#include "pickers/FileItem.h"
#include "upload/FileName.h"

#include <algorithm>

namespace tessary::pickers {
namespace {

void store(FileUploaderState& state, FileSlot::Place place, const QUrl& file)
{
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
    if (m_state != nullptr) {
        m_state->disconnect(this);
    }
    m_state = state;
    if (m_state != nullptr) {
        connect(m_state, &FileUploaderState::selectedFileChanged, this, &FileSlot::fileChanged);
        connect(m_state, &FileUploaderState::selectedFileLeftChanged, this, &FileSlot::fileChanged);
        connect(m_state, &FileUploaderState::selectedFileRightChanged, this, &FileSlot::fileChanged);
    }
    Q_EMIT fileChanged();
}

QUrl FileSlot::file() const
{
    if (m_state == nullptr) {
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

bool FileSlot::acceptDrop(const QList<QUrl>& items) const
{
    const auto first =
        std::find_if(items.begin(), items.end(), [](const QUrl& item) { return !fileUrlOf(item).isEmpty(); });
    if (first == items.end()) {
        return false;
    }
    QMetaObject::invokeMethod(
        m_state, [state = m_state, place = m_place, item = *first] { store(*state, place, fileUrlOf(item)); },
        Qt::QueuedConnection);
    return true;
}

void FileSlot::choose(const QUrl& item)
{
    const QUrl file = fileUrlOf(item);
    if (file.isEmpty()) {
        return; // a dialog may confirm without a choice, or with something that is on no disk of this machine
    }
    store(*m_state, m_place, file);
    if (m_place == Place::SingleFile) {
        m_state->setStatusMessage(QStringLiteral("Selected: ") + fileName(file));
    }
}

void FileSlot::clear()
{
    store(*m_state, m_place, {});
    if (m_place == Place::SingleFile) {
        m_state->setStatusMessage(QStringLiteral("Ready to upload"));
    }
}

} // namespace tessary::pickers
