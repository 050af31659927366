#include "standins/BlobStore.h"

#include <QByteArrayList>
#include <QDateTime>
#include <QList>
#include <QMessageAuthenticationCode>
#include <QPair>
#include <QUrl>

namespace tessary::standins {
namespace {

// The emulator's one account is public knowledge and opens nothing but an emulator.
constexpr QLatin1StringView accountName("devstoreaccount1");
constexpr char accountKey[] =
    "Eby8vdM02xNOcqFlqUwJPLlmEtlCDXJ1OUzFT50uSRZ6IFsuFq2UVErCz4I6tq/K1SZFPTOtr/KBHBeksoGMGw==";
constexpr QLatin1StringView signatureVersion("2021-12-02");

using Parameters = QList<QPair<QString, QString>>;

QString encoded(const QString& text, const QByteArray& keep = {})
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, keep));
}

QString signature(const QByteArrayList& lines)
{
    const QByteArray key = QByteArray::fromBase64(accountKey);
    const QByteArray digest =
        QMessageAuthenticationCode::hash(lines.join('\n'), key, QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toBase64());
}

QString query(const Parameters& parameters)
{
    QStringList pairs;
    for (const auto& [name, value] : parameters) {
        pairs.append(name + u'=' + encoded(value));
    }
    return pairs.join(u'&');
}

QString expiry(std::chrono::seconds validFor)
{
    return QDateTime::currentDateTimeUtc().addSecs(validFor.count()).toString(Qt::ISODate);
}

} // namespace

QString BlobStore::blobUrl(const QString& container, const QString& blob) const
{
    return root + u'/' + container + u'/' + encoded(blob, "/");
}

QString BlobStore::signedBlobUrl(const QString& container, const QString& blob, const QString& permissions,
                                 std::chrono::seconds validFor) const
{
    const QString until = expiry(validFor);
    const QString resource = QStringLiteral("/blob/%1/%2/%3").arg(accountName, container, blob);
    // One line for each thing that can be signed, in a fixed order; what is left out is an empty line.
    const QString sign = signature({permissions.toUtf8(), "", until.toUtf8(), resource.toUtf8(), "", "", "",
                                    QByteArray(signatureVersion.data()), "b", "", "", "", "", "", "", ""});
    return blobUrl(container, blob) + u'?' +
           query({{QStringLiteral("sv"), signatureVersion},
                  {QStringLiteral("se"), until},
                  {QStringLiteral("sr"), QStringLiteral("b")},
                  {QStringLiteral("sp"), permissions},
                  {QStringLiteral("sig"), sign}});
}

QString BlobStore::signedContainerCreationUrl(const QString& container) const
{
    const QString until = expiry(std::chrono::minutes(5));
    const QString sign = signature({QByteArray(accountName.data()), "c", "b", "c", "", until.toUtf8(), "", "",
                                    QByteArray(signatureVersion.data()), "", ""});
    return root + u'/' + container + QStringLiteral("?restype=container&") +
           query({{QStringLiteral("sv"), signatureVersion},
                  {QStringLiteral("ss"), QStringLiteral("b")},
                  {QStringLiteral("srt"), QStringLiteral("c")},
                  {QStringLiteral("sp"), QStringLiteral("c")},
                  {QStringLiteral("se"), until},
                  {QStringLiteral("sig"), sign}});
}

} // namespace tessary::standins
