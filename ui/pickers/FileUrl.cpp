#include "ui/pickers/FileUrl.h"

#include "upload/FileName.h"

#include <QFileInfo>
#include <QStringDecoder>
#include <QSysInfo>

namespace tessary::pickers {
namespace {

bool isThisMachine(const QString& host)
{
    return host.isEmpty() || host.compare(QLatin1StringView("localhost"), Qt::CaseInsensitive) == 0 ||
           host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
}

/// A list of URLs may hold bare paths, which read as URLs without a scheme. What looks like an escape in one
/// is an escape, unless only a file with that very name is there.
QString barePath(const QUrl& url)
{
    const QByteArray asWritten = url.toEncoded();
    const QString path = QUrl::fromPercentEncoding(asWritten);
    const QString verbatim = QString::fromUtf8(asWritten);
    return !QFileInfo::exists(path) && QFileInfo::exists(verbatim) ? verbatim : path;
}

QUrl asFileUrl(QUrl url)
{
    if (url.isRelative() && url.path().startsWith(u'/')) {
        url = QUrl::fromLocalFile(barePath(url));
    }
    if (!url.isLocalFile() || url.path().isEmpty() || !isThisMachine(url.host())) {
        return {};
    }
    url.setHost(QStringLiteral(""));
    return url;
}

QUrl fromText(const QString& text)
{
    if (text.startsWith(u'/')) {
        return QUrl::fromLocalFile(text);
    }
    return asFileUrl(QUrl(text, QUrl::TolerantMode));
}

} // namespace

QUrl fileUrlOf(const QVariant& item)
{
    switch (item.typeId()) {
    case QMetaType::QByteArray:
        return fromText(QString::fromUtf8(item.toByteArray().split('\n').constFirst().trimmed()));
    case QMetaType::QString:
        return fromText(item.toString());
    case QMetaType::QUrl:
        return asFileUrl(item.toUrl());
    default:
        return {};
    }
}

bool hasUnreadableName(const QUrl& file)
{
    const QByteArray name = QByteArray::fromPercentEncoding(file.path(QUrl::FullyEncoded).toUtf8());
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(name);
    // Who read it before us has put that character where it could not.
    return decoder.hasError() || (text.contains(QChar::ReplacementCharacter) && !QFileInfo::exists(text));
}

QString fileKindOf(const QUrl& file)
{
    const QString name = fileName(file);
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString extension = dot > 0 ? name.sliced(dot + 1) : QString(); // a leading dot only hides a file
    return extension.toUpper() + QStringLiteral(" file");
}

} // namespace tessary::pickers
