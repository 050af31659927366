#include "upload/FailureReason.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

namespace tessary {
namespace {

constexpr qsizetype longestLine = 600;

struct KnownReason
{
    const char* pattern;
    const char* words;
};

/// The first that matches counts. As AzCopy 10.32 words them, with the store's codes and the system's errors
/// in them.
constexpr std::array knownReasons{
    KnownReason{"modified during transfer|EOF. When chunk data read",
                "The file changed while it was uploaded. Upload it again when it is finished."},
    KnownReason{"no space left|InsufficientStorage|QuotaExceeded|: 507 :",
                "There is no space left for the upload."},
    KnownReason{"permission denied|no such file|operation not permitted|input/output error",
                "The file cannot be read. It may have been moved, or you may not be allowed to open it."},
    KnownReason{"cannot use directory as source", "This is a folder. Choose a single file."},
    KnownReason{"ContainerNotFound|container does not exist|container is being deleted",
                "The place that the upload was sent to does not exist any more."},
    KnownReason{
        ": 40[13] :|RESPONSE 40[13]|Authenti?cation ?Failed|Authorization(Failure|PermissionMismatch)",
        "The upload link has expired or was refused. Upload again to get a new one."},
    KnownReason{
        "dial tcp|no such host|connection re(fused|set)|network is unreachable|no route to host|i/o timeout|"
        "TLS handshake|context deadline exceeded|server misbehaving|: 50[0234] :",
        "The store cannot be reached. Check the connection to the network."},
};

QRegularExpression pattern(const QString& text)
{
    return QRegularExpression(text, QRegularExpression::CaseInsensitiveOption);
}

/// What the tool says of every job: how far it is, where its log is, and its summary.
bool isRoutine(const QString& line)
{
    static const QRegularExpression routine(
        QStringLiteral("^\\s*([\\d.]+ %, |Number of |Total Number of |Elapsed Time|Final Job Status|Log file "
                       "is located at)"));
    return line.contains(routine);
}

/// The last line that holds a match and is not said of every job; empty when there is none.
QString lastLine(const QString& text, const QRegularExpression& wanted)
{
    static const QRegularExpression lineEnd(QStringLiteral("[\\r\\n]+"));
    const QStringList lines = text.split(lineEnd, Qt::SkipEmptyParts);
    const auto found = std::find_if(lines.rbegin(), lines.rend(), [&wanted](const QString& line) {
        return line.contains(wanted) && !isRoutine(line);
    });
    return found == lines.rend() ? QString() : found->simplified();
}

QString lineOf(const QString& log, const QString& lastWords)
{
    static const QRegularExpression failed(QStringLiteral("UPLOADFAILED"));
    static const QRegularExpression error = pattern(QStringLiteral("error|fail|cannot|denied"));
    static const QRegularExpression logged(QStringLiteral("\\bERR\\b|REQUEST ERROR"));
    static const QRegularExpression anything(QStringLiteral("\\S"));

    struct Place
    {
        const QString& text;
        const QRegularExpression& wanted;
    };

    for (const Place& place : {Place{log, failed}, Place{lastWords, error}, Place{log, logged}}) {
        if (QString line = lastLine(place.text, place.wanted); !line.isEmpty()) {
            return line;
        }
    }
    return lastLine(lastWords, anything);
}

} // namespace

QString withoutSecrets(const QString& text)
{
    // An address keeps its path; what looks like a value of a signed query goes also without its address, and
    // so does any long run of the letters that keys are made of.
    static const QRegularExpression query(QStringLiteral("(\\w+://[^\\s?\"'<>]*)\\?[^\\s\"'<>]*"));
    static const QRegularExpression value = pattern(QStringLiteral(
        "(\\b(?:sig|se|st|sp|sv|sr|skoid|sktid|skt|ske|sks|skv)|"
        "[\\w-]*(?:token|key|password|secret|signature))(\"?\\s*[=:]\\s*\"?|%3d)[^\\s&\"'<>,;]+"));
    static const QRegularExpression header =
        pattern(QStringLiteral("(authorization\"?\\s*[=:]\\s*\"?)[^\"'<>]+"));
    static const QRegularExpression run(
        QStringLiteral("[A-Za-z0-9+=_%-]{40,}|[A-Za-z0-9+/]{40,}=|\\beyJ[\\w-]+(\\.[\\w-]+)+"));
    QString clean = text;
    clean.replace(query, QStringLiteral("\\1?…"));
    clean.replace(header, QStringLiteral("\\1…"));
    clean.replace(value, QStringLiteral("\\1\\2…"));
    clean.replace(run, QStringLiteral("…"));
    return clean;
}

FailureReason explainFailure(const QByteArray& logTail, const QString& lastWords)
{
    // Longer than it is shown, so that a value that is cut off is still known by its name.
    const QString line = lineOf(QString::fromUtf8(logTail), lastWords).left(4 * longestLine);
    const auto* known =
        std::find_if(knownReasons.begin(), knownReasons.end(), [&line](const KnownReason& reason) {
            return line.contains(pattern(QString::fromLatin1(reason.pattern)));
        });
    const QString shown = withoutSecrets(line).left(longestLine);
    if (known != knownReasons.end()) {
        return {QString::fromLatin1(known->words), shown};
    }
    if (shown.isEmpty()) {
        return {QStringLiteral("The tool ended without saying why."), {}};
    }
    return {QStringLiteral("The tool could not finish the upload. This is what it says:"), shown};
}

} // namespace tessary
