#include "upload/TransferProgress.h"

#include "upload/TransferLog.h"

#include <QFileInfo>
#include <QtNumeric>

namespace tessary {
namespace {

QList<qint64> sizesOf(const QList<QUrl>& files)
{
    QList<qint64> sizes;
    for (const QUrl& file : files) {
        sizes.append(QFileInfo(file.toLocalFile()).size());
    }
    return sizes;
}

} // namespace

TransferProgress::TransferProgress(const QList<QUrl>& files, Clock clock)
    : m_clock(std::move(clock)), m_estimate(sizesOf(files), m_clock().awake), m_asleep(m_clock().asleep)
{
    connect(&m_update, &QTimer::timeout, this, &TransferProgress::update);
}

void TransferProgress::hear(std::size_t file, const QString& output)
{
    const std::optional<TransferReport> report = readTransferReport(output);
    if (!report) {
        return;
    }
    constexpr double whole = 100;
    const desktop::ClockReading now = m_clock();
    if (now.asleep - m_asleep >= std::chrono::seconds(1)) {
        m_asleep = now.asleep;
        m_estimate.startAnew(now.awake);
    }
    // What cannot be read is 0, too: the share stays, and the throughput may still move.
    const double fraction = report->percentage == 0 ? qQNaN() : report->percentage / whole;
    m_estimate.report(file, fraction, report->throughput.value_or(QString()), now.awake);
    if (m_update.intervalAsDuration() != updateInterval) {
        m_update.start(updateInterval);
    }
}

void TransferProgress::update()
{
    const TransferEstimate::Time now = m_clock().awake;
    m_timeLeft.take(m_estimate.timeLeft(now));
    const std::optional<int> percent = percentOf(bytesSent(), bytesInAll());
    if (percent) {
        QString left = m_timeLeft.inFull();
        QString leftInBrief = m_timeLeft.inBrief();
        if (const auto still = m_estimate.standstill(now)) {
            left = leftInBrief = standstillInWords(*still);
        } else if (!left.isEmpty()) {
            left += QLatin1StringView(" left");
        }
        m_inBrief = QStringLiteral("%1 %").arg(*percent);
        m_inWords = m_inBrief + QLatin1StringView(" of ") + sizeInWords(bytesInAll());
        if (!left.isEmpty()) {
            m_inWords += QLatin1StringView(", ") + left;
            m_inBrief += QStringLiteral(" · ") + leftInBrief;
        }
    }
    m_update.start(idleInterval);
    Q_EMIT changed();
}

} // namespace tessary
