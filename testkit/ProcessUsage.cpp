#include "testkit/ProcessUsage.h"

#include <QDir>
#include <QFile>

#include <sys/resource.h>

namespace tessary::testkit {
namespace {

QByteArray contentOf(const QString& file)
{
    QFile source(file);
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

/// A value of /proc/self/status; sizes are given there in units of 1024 bytes.
qint64 statusValue(const QByteArray& status, const QByteArray& name)
{
    const qsizetype at = status.indexOf('\n' + name + ':');
    const QByteArray line = status.mid(at + 1, status.indexOf('\n', at + 1) - at - 1);
    return line.simplified().split(' ').value(1).toLongLong();
}

QList<qint64> childProcesses()
{
    QList<qint64> found;
    // Every thread lists the children that it started.
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        for (const QByteArray& id :
             contentOf(threads.filePath(thread) + QStringLiteral("/children")).simplified().split(' ')) {
            if (!id.isEmpty()) {
                found.append(id.toLongLong());
            }
        }
    }
    return found;
}

std::chrono::microseconds durationOf(const timeval& time)
{
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

} // namespace

ProcessUsage takeProcessUsage()
{
    const QByteArray status = '\n' + contentOf(QStringLiteral("/proc/self/status"));
    const auto descriptors = QDir(QStringLiteral("/proc/self/fd"))
                                 .entryList(QDir::Files | QDir::System | QDir::Dirs | QDir::NoDotAndDotDot);
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return {statusValue(status, "VmRSS") * 1024,
            statusValue(status, "VmHWM") * 1024,
            static_cast<int>(descriptors.size()),
            static_cast<int>(statusValue(status, "Threads")),
            childProcesses(),
            durationOf(usage.ru_utime) + durationOf(usage.ru_stime)};
}

} // namespace tessary::testkit
