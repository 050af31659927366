#include "pickers/FileItem.h"

#include "upload/FileName.h"

namespace tessary::pickers {
namespace {

QUrl asFileUrl(const QUrl& url)
{
    if (url.isLocalFile() && !url.path().isEmpty()) {
        return url;
    }
    // A list of URLs may hold bare paths, which read as URLs without a scheme.
    if (url.isRelative() && url.path().startsWith(u'/')) {
        return QUrl::fromLocalFile(url.toString());
    }
    return {};
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

QString fileKindOf(const QUrl& file)
{
    const QString name = fileName(file);
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString extension = dot > 0 ? name.sliced(dot + 1) : QString(); // a leading dot only hides a file
    return extension.toUpper() + QStringLiteral(" file");
}

} // namespace tessary::pickers
