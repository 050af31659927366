#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryFile>

#include <cstdio>
#include <unistd.h>

namespace tessary {

/// Takes what is written to standard output, or to standard error, for as long as it lives, and passes it on
/// at its end: a failed comparison reports there, too.
class CapturedOutput
{
public:
    explicit CapturedOutput(std::FILE* stream = stdout) : m_stream(stream)
    {
        std::fflush(m_stream);
        if (!m_file.open() || m_before < 0 || dup2(m_file.handle(), fileno(m_stream)) < 0) {
            qFatal("The output cannot be captured.");
        }
    }

    ~CapturedOutput()
    {
        std::fflush(m_stream);
        dup2(m_before, fileno(m_stream));
        close(m_before);
        const QByteArray written = text();
        std::fwrite(written.constData(), 1, static_cast<std::size_t>(written.size()), m_stream);
    }

    Q_DISABLE_COPY_MOVE(CapturedOutput)

    /// What has reached the descriptor so far; what is still in a buffer does not count.
    [[nodiscard]] QByteArray text() const
    {
        QFile written(m_file.fileName());
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    }

private:
    std::FILE* m_stream;
    QTemporaryFile m_file;
    int m_before = dup(fileno(m_stream));
};

} // namespace tessary
