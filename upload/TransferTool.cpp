#include "upload/TransferTool.h"

#include "desktop/ChildProcess.h"
#include "upload/UploadActivity.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QPromise>
#include <QStringDecoder>
#include <QTimer>

#include <chrono>

namespace tessary {
namespace {

const QString toolDomain = QStringLiteral("AzCopy");

/// The chunk as text; none when it is not valid UTF-8 from its first byte to its last.
std::optional<QString> decode(const QByteArray& chunk)
{
    // Without a state, so that a character cut off at the end is an error and not kept for a next chunk.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(chunk);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

/// One run of the tool. It belongs to the activity, deletes itself when the tool has ended, and fulfils its
/// promise once, also when it goes before that.
class Transfer : public QObject
{
public:
    Transfer(TransferListener listener, std::stop_token stop, UploadActivity& activity)
        : QObject(&activity), m_listener(std::move(listener)), m_stop(std::move(stop))
    {
        m_promise.start();
        m_refresher.setTimerType(Qt::PreciseTimer);
        m_refresher.setInterval(refreshInterval);
        connect(&m_refresher, &QTimer::timeout, this, [this] { m_listener.refresh(); });

        connect(&m_process, &QProcess::readyReadStandardOutput, this,
                [this] { forward(m_process.readAllStandardOutput(), {}); });
        connect(&m_process, &QProcess::readyReadStandardError, this,
                [this] { forward(m_process.readAllStandardError(), QStringLiteral("ERROR: ")); });
        connect(&m_process, &QProcess::started, this, &Transfer::watch);
        connect(&m_process, &QProcess::errorOccurred, this, &Transfer::noticeError);
        connect(&m_process, &QProcess::finished, this, &Transfer::finish);
        connect(&activity, &UploadActivity::killTools, &m_process, &QProcess::kill);
    }

    /// Kills the tool, if it still runs, and waits for its end, which is near then.
    ~Transfer() override
    {
        m_process.disconnect(this); // what it says of its end would come to an object half gone
        fulfil({.cancelled = true});
    }

    Q_DISABLE_COPY_MOVE(Transfer)

    QFuture<TransferOutcome> start(const QString& tool, const QStringList& arguments)
    {
        QFuture<TransferOutcome> outcome = m_promise.future();
        if (!QFileInfo::exists(tool)) {
            end({.failure = Error(toolDomain, 1, QStringLiteral("AzCopy binary not found"))});
            return outcome;
        }
        m_process.setInputChannelMode(QProcess::ForwardedInputChannel);
        desktop::endWithThisProgram(m_process);
        m_process.start(tool, arguments, QIODevice::ReadOnly);
        return outcome;
    }

private:
    void watch()
    {
        m_refresher.start();
        // A stop that came before the launch is acted on here, and any later one when it comes.
        m_onStop.emplace(m_stop, [this] { m_process.terminate(); });
    }

    void forward(const QByteArray& chunk, const QString& prefix)
    {
        const std::optional<QString> text = decode(chunk);
        if (text && !text->isEmpty()) {
            m_report.hear(*text);
            m_listener.output(prefix + *text);
        }
    }

    void noticeError(QProcess::ProcessError error)
    {
        // Any other error has a running or an ended process, whose exit tells the outcome.
        if (error == QProcess::FailedToStart) {
            end({.failure = Error(QStringLiteral("QProcess"), error, m_process.errorString())});
        }
    }

    void finish(int statusOrSignal)
    {
        if (statusOrSignal == 0 && m_process.exitStatus() == QProcess::NormalExit) {
            end({});
        } else if (m_stop.stop_requested()) {
            end({.cancelled = true});
        } else {
            end({.failure = Error(toolDomain, statusOrSignal,
                                  QStringLiteral("AzCopy exited with code %1").arg(statusOrSignal)),
                 .report = m_report});
        }
    }

    void end(const TransferOutcome& outcome)
    {
        m_refresher.stop();
        m_listener = {}; // lets go of the upload now, not when this is deleted
        fulfil(outcome);
        deleteLater();
    }

    /// Only the first outcome counts.
    void fulfil(const TransferOutcome& outcome)
    {
        m_promise.addResult(outcome);
        m_promise.finish();
    }

    TransferListener m_listener;
    std::stop_token m_stop;
    QPromise<TransferOutcome> m_promise;
    ToolReport m_report;
    QTimer m_refresher;
    QProcess m_process;
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;
};

} // namespace

QString standardResourcesFolder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/resources");
}

QFuture<TransferOutcome> uploadFile(const QUrl& fileURL, const QString& sasUrl,
                                    const QString& resourcesFolder, TransferListener listener,
                                    const std::stop_token& stop, UploadActivity& activity)
{
    const QString tool = resourcesFolder + QStringLiteral("/azcopy");
    const QStringList arguments{
        QStringLiteral("copy"),      fileURL.toLocalFile(),       sasUrl,
        QStringLiteral("--from-to"), QStringLiteral("LocalBlob"), QStringLiteral("--log-level"),
        QStringLiteral("INFO"),
    };
    return (new Transfer(std::move(listener), stop, activity))->start(tool, arguments);
}

} // namespace tessary
