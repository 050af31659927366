#pragma once

#include "desktop/Clock.h"
#include "upload/TransferEstimate.h"
#include "upload/TransferWords.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <functional>

namespace tessary {

/// How far one upload is and how long it will take, in words, from what its tools report. It belongs to the
/// upload. Main thread only.
class TransferProgress : public QObject
{
    Q_OBJECT

public:
    using Clock = std::function<desktop::ClockReading()>;

    /// The words follow the reports that often, and that often while none comes.
    static constexpr std::chrono::milliseconds updateInterval{500};
    static constexpr std::chrono::seconds idleInterval{10};

    /// @param files whose sizes are read now; one that cannot be read has none
    explicit TransferProgress(const QList<QUrl>& files, Clock clock = desktop::readClock);

    /// Takes one chunk of a tool's output.
    /// @param file the place of the tool's file
    void hear(std::size_t file, const QString& output);

    /// The upload is over: the words stay as they are.
    void end() { m_update.stop(); }

    /// "45 % of 812 GB, about 2 h 10 min left"; empty before the first report.
    [[nodiscard]] const QString& inWords() const { return m_inWords; }

    /// "45 % · 2 h left"; empty before the first report.
    [[nodiscard]] const QString& inBrief() const { return m_inBrief; }

    [[nodiscard]] qint64 bytesSent() const { return m_estimate.bytesSent(); }

    [[nodiscard]] qint64 bytesInAll() const { return m_estimate.bytesInAll(); }

Q_SIGNALS:
    /// The words or the bytes may be others now; at most once in the update interval.
    void changed();

private:
    void update();

    Clock m_clock;
    TransferEstimate m_estimate;
    TimeLeftWords m_timeLeft;
    std::chrono::milliseconds m_asleep; ///< as last seen
    QTimer m_update{this};
    QString m_inWords;
    QString m_inBrief;
};

} // namespace tessary
