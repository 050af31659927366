#include "service/Diagnostics.h"

#include <QByteArray>

#include <cstdio>

namespace tessary {
namespace {

void writeLine(QStringView text, std::FILE* stream)
{
    const QByteArray line = text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stream);
    std::fflush(stream);
}

} // namespace

void printLine(QStringView text)
{
    writeLine(text, stdout);
}

void printDeserializingError(const QString& reason)
{
    printLine(QStringLiteral("Error deserializing JSON: ") + reason);
}

void warnLine(QStringView text)
{
    writeLine(text, stderr);
}

} // namespace tessary
