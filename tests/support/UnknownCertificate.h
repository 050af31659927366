#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QSslConfiguration>
#include <QSslKey>

namespace tessary {

/// What a service on the loopback address speaks TLS with. Its certificate is signed by nobody but itself.
inline QSslConfiguration unknownCertificate()
{
    const auto contentOf = [](const char* file) {
        QFile pem(QStringLiteral(TESSARY_SOURCES "/tests/support/") + QLatin1StringView(file));
        return pem.open(QIODevice::ReadOnly) ? pem.readAll() : QByteArray();
    };
    QSslConfiguration configuration;
    configuration.setLocalCertificate(QSslCertificate(contentOf("unknown.pem")));
    configuration.setPrivateKey(QSslKey(contentOf("unknown.key"), QSsl::Ec));
    return configuration;
}

/// Whether this process's next connections take that certificate for a known one.
inline void trustUnknownCertificate(bool trust)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(trust ? QList{unknownCertificate().localCertificate()}
                                          : QList<QSslCertificate>());
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace tessary
