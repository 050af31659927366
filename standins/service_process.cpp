// The local service, and a blob store where it is asked for, as a process of their own: what they use is then
// not the program's. Prints the API root and lives until its standard input ends.
//   --store               with a blob store
//   --sink MIB            with one that forgets what it gets, at most so much a second, 0 for no limit; for
//                         each upload prints when its first block came and when it was complete, in
//                         milliseconds of the monotonic clock
//   --tls CERTIFICATE KEY speaks TLS, with what these files hold as PEM, on the port of HTTPS

#include "service/Diagnostics.h"
#include "standins/Azurite.h"
#include "standins/BlobSink.h"
#include "standins/LocalService.h"

#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>

#include <array>
#include <exception>
#include <optional>
#include <stdexcept>
#include <unistd.h>

using namespace tessary;
using namespace tessary::standins;

namespace {

constexpr quint16 httpsPort = 443;

QSslConfiguration tlsConfiguration(const QString& certificatePath, const QString& keyPath)
{
    QFile keyFile(keyPath);
    const QList<QSslCertificate> certificates = QSslCertificate::fromPath(certificatePath);
    const QSslKey key(keyFile.open(QIODevice::ReadOnly) ? keyFile.readAll() : QByteArray(), QSsl::Rsa);
    if (certificates.isEmpty() || key.isNull()) {
        throw std::runtime_error("The certificate or its key cannot be read.");
    }
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificateChain(certificates);
    configuration.setPrivateKey(key);
    return configuration;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const qsizetype tls = arguments.indexOf(QStringLiteral("--tls"));
    try {
        std::optional<Azurite> azurite;
        if (arguments.contains(QStringLiteral("--store"))) {
            azurite.emplace();
            for (const LocalWorkspace& workspace : localWorkspaces()) {
                azurite->createContainer(workspace.container);
            }
        }
        std::optional<BlobSink> sink;
        if (const qsizetype rate = arguments.indexOf(QStringLiteral("--sink")); rate >= 0) {
            sink.emplace(arguments.value(rate + 1).toLongLong() * 1024 * 1024);
            QObject::connect(&*sink, &BlobSink::committed, [](double firstBlock, double commit) {
                printLine(QStringLiteral("%1 %2").arg(firstBlock, 0, 'f', 3).arg(commit, 0, 'f', 3));
            });
        }
        const BlobStore store = azurite ? azurite->store() : sink ? sink->store() : LocalService::noStore();
        LocalService service(store, tls < 0 ? 0 : httpsPort);
        if (tls >= 0) {
            service.useTls(tlsConfiguration(arguments.value(tls + 1), arguments.value(tls + 2)));
        }
        QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
        QObject::connect(&input, &QSocketNotifier::activated, &application, [] {
            std::array<char, 64> ignored{};
            if (read(STDIN_FILENO, ignored.data(), ignored.size()) <= 0) {
                QCoreApplication::quit();
            }
        });
        printLine(service.baseUrl());
        return QCoreApplication::exec();
    } catch (const std::exception& problem) {
        warnLine(QString::fromUtf8(problem.what()));
        return EXIT_FAILURE;
    }
}
