#include "upload/UploadActivity.h"

#include "service/HttpCall.h"
#include "upload/TransferWords.h"
#include "upload/UploadTask.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <iterator>

namespace tessary {

UploadActivity::~UploadActivity()
{
    blockSignals(true); // who listens may have gone before
    m_gone = true;
    m_tasks.clear();
    const QObjectList transfers = children();
    qDeleteAll(transfers);
    for (const Task& upload : uploads()) {
        upload->stop.request_stop();
    }
    endHttpSession();
    // All of it has ended, and only those who wait for it do not know yet: they hear of it while what they
    // touch is there, one after the other. None of them begins anything any more.
    do {
        QCoreApplication::sendPostedEvents();
    } while (underWay());
}

std::shared_ptr<const void> UploadActivity::beginUpload(std::shared_ptr<UploadTask> task)
{
    connect(&task->progress, &TransferProgress::changed, this, &UploadActivity::progressChanged);
    return begin(std::move(task));
}

std::shared_ptr<const void> UploadActivity::beginRegistration()
{
    return begin(nullptr);
}

std::shared_ptr<const void> UploadActivity::begin(Task task)
{
    const auto begun = m_underWay.insert(m_underWay.end(), std::move(task));
    Q_EMIT underWayChanged();
    Q_EMIT progressChanged();
    return {&*begun, [this, begun](const void* /*counted*/) { forget(begun); }};
}

void UploadActivity::forget(std::list<Task>::iterator ended)
{
    if (*ended != nullptr) {
        (*ended)->progress.end();
    }
    m_underWay.erase(ended);
    Q_EMIT underWayChanged();
    Q_EMIT progressChanged();
    announceWhenEnded();
}

UploadActivity::Bytes UploadActivity::bytes() const
{
    Bytes bytes;
    for (const Task& upload : uploads()) {
        if (!upload->stop.stop_requested()) {
            bytes.sent += upload->progress.bytesSent();
            bytes.inAll += upload->progress.bytesInAll();
        }
    }
    return bytes;
}

std::optional<double> UploadActivity::fractionSent() const
{
    const auto [sent, inAll] = bytes();
    return inAll != 0 ? std::optional(double(sent) / double(inAll)) : std::nullopt;
}

QString UploadActivity::progressInWords() const
{
    const auto [sent, inAll] = bytes();
    const std::optional<int> percent = percentOf(sent, inAll);
    return percent ? QStringLiteral("%1 % of %2 are up").arg(*percent).arg(sizeInWords(inAll)) : QString();
}

void UploadActivity::runLater(std::function<void()> task)
{
    if (m_gone) {
        return;
    }
    m_tasks.push_back(std::move(task));
    QMetaObject::invokeMethod(this, &UploadActivity::runTasks, Qt::QueuedConnection);
}

void UploadActivity::runTasks()
{
    // Each may ask for another.
    for (const std::function<void()>& task : std::exchange(m_tasks, {})) {
        task();
    }
}

void UploadActivity::endAll()
{
    m_ending = true;
    QTimer::singleShot(graceBeforeKill, this, &UploadActivity::killTools);
    for (const Task& upload : uploads()) {
        upload->stop.request_stop();
    }
    announceWhenEnded();
}

std::vector<UploadActivity::Task> UploadActivity::uploads() const
{
    std::vector<Task> uploads;
    std::copy_if(m_underWay.begin(), m_underWay.end(), std::back_inserter(uploads),
                 [](const Task& task) { return task != nullptr; });
    return uploads;
}

void UploadActivity::announceWhenEnded()
{
    if (m_ending && uploads().empty()) {
        Q_EMIT ended();
    }
}

} // namespace tessary
