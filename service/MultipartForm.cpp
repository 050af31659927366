#include "service/MultipartForm.h"

#include <QUuid>

namespace tessary {

QByteArray makeBoundary()
{
    return "Boundary-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toUpper();
}

void appendFormField(const QString& name, const QString& value, QByteArray& body, const QByteArray& boundary)
{
    body += "--" + boundary + "\r\n";
    body += "Content-Disposition: form-data; name=\"" + name.toUtf8() + "\"\r\n\r\n";
    body += value.toUtf8() + "\r\n";
}

void appendClosingLine(QByteArray& body, const QByteArray& boundary)
{
    body += "--" + boundary + "--\r\n";
}

} // namespace tessary
