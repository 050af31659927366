#include "standins/Azurite.h"

#include <QDeadlineTimer>
#include <QDirIterator>
#include <QEventLoop>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QStandardPaths>

#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>

namespace tessary::standins {
namespace {

constexpr int startupMilliseconds = 60'000;
constexpr int requestMilliseconds = 30'000;

[[noreturn]] void fail(const QString& problem)
{
    throw std::runtime_error(problem.toStdString());
}

/// The root in the emulator's own announcement of where it listens; empty when it is not there yet.
QString announcedRoot(const QByteArray& output)
{
    static const QRegularExpression announcement(QStringLiteral("listens on (http://[0-9.]+:[0-9]+)"));
    const auto match = announcement.match(QString::fromUtf8(output));
    return match.hasMatch() ? match.captured(1) + QStringLiteral("/devstoreaccount1") : QString();
}

} // namespace

Azurite::Azurite()
{
    if (!m_folder.isValid()) {
        fail(QStringLiteral("No temporary folder for the blob store: %1").arg(m_folder.errorString()));
    }
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    start();
}

Azurite::~Azurite()
{
    m_process.kill(); // it holds nothing worth an orderly end
    m_process.waitForFinished();
}

void Azurite::start()
{
    const QString port = QString::number(qMax(QUrl(m_store.root).port(), 0)); // 0: any that is free
    m_process.start(QStringLiteral("node"),
                    {QStringLiteral(TESSARY_AZURITE), QStringLiteral("--disableTelemetry"),
                     QStringLiteral("--skipApiVersionCheck"), QStringLiteral("--silent"),
                     QStringLiteral("--blobHost"), QStringLiteral("127.0.0.1"), QStringLiteral("--blobPort"),
                     port, QStringLiteral("--location"), m_folder.path()});

    QByteArray output;
    QString root;
    QDeadlineTimer deadline(startupMilliseconds);
    while (root.isEmpty()) {
        if (!m_process.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
            fail(QStringLiteral("The blob store did not start: %1\n%2")
                     .arg(m_process.errorString(), QString::fromUtf8(output)));
        }
        output += m_process.readAll();
        root = announcedRoot(output);
    }
    m_store.root = root;
}

void Azurite::stop()
{
    m_process.terminate(); // its data is complete when it has ended in order
    if (!m_process.waitForFinished(requestMilliseconds)) {
        fail(QStringLiteral("The blob store does not end."));
    }
}

qint64 Azurite::storedBytes() const
{
    qint64 sum = 0;
    for (QDirIterator file(m_folder.path(), QDir::Files, QDirIterator::Subdirectories); file.hasNext();) {
        sum += file.nextFileInfo().size();
    }
    return sum;
}

void Azurite::createContainer(const QString& container)
{
    send("PUT", m_store.signedContainerCreationUrl(container));
}

QByteArray Azurite::readBlob(const QString& blobUrl)
{
    const QString inside = blobUrl.mid(m_store.root.size() + 1);
    const qsizetype slash = inside.indexOf(u'/');
    if (!blobUrl.startsWith(m_store.root + u'/') || slash < 0) {
        fail(QStringLiteral("Not the address of a blob in this store: %1").arg(blobUrl));
    }
    const QString blob = QUrl::fromPercentEncoding(inside.mid(slash + 1).toUtf8());
    return send(
        "GET", m_store.signedBlobUrl(inside.left(slash), blob, QStringLiteral("r"), std::chrono::minutes(5)));
}

QByteArray Azurite::send(const QByteArray& verb, const QString& url)
{
    QNetworkRequest request(QUrl(url, QUrl::StrictMode));
    request.setTransferTimeout(requestMilliseconds);
    QNetworkReply* reply = m_network.sendCustomRequest(request, verb, QByteArray());
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    reply->deleteLater();
    const QByteArray answer = reply->readAll();
    if (reply->error() != QNetworkReply::NoError) {
        // The reply's own words would quote the address with its signature.
        fail(QStringLiteral("The blob store did not do a %1: error %2, %3")
                 .arg(QString::fromLatin1(verb))
                 .arg(reply->error())
                 .arg(QString::fromUtf8(answer)));
    }
    return answer;
}

} // namespace tessary::standins
