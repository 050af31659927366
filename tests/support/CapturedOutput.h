#pragma once

#include <QTemporaryFile>

#include <cstdio>
#include <unistd.h>

namespace tessary {

/// Takes what is written to standard output for as long as it lives, and passes it on at its end: a failed
/// comparison reports there, too.
class CapturedOutput
{
public:
    CapturedOutput()
    {
        std::fflush(stdout);
        if (!m_file.open() || m_before < 0 || dup2(m_file.handle(), STDOUT_FILENO) < 0) {
            qFatal("Standard output cannot be captured.");
        }
    }

    ~CapturedOutput()
    {
        std::fflush(stdout);
        dup2(m_before, STDOUT_FILENO);
        close(m_before);
        const QByteArray written = text();
        std::fwrite(written.constData(), 1, static_cast<std::size_t>(written.size()), stdout);
    }

    Q_DISABLE_COPY_MOVE(CapturedOutput)

    /// What has reached the descriptor so far; what is still in a buffer does not count.
    [[nodiscard]] QByteArray text() const
    {
        QFile written(m_file.fileName());
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    }

private:
    QTemporaryFile m_file;
    int m_before = dup(STDOUT_FILENO);
};

} // namespace tessary
