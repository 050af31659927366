#pragma once

#include <QByteArray>
#include <QString>

namespace tessary {

/// Why a transfer failed, as far as the tool tells. Nothing in it grants access to anything. A plain value.
struct FailureReason
{
    QString words; ///< what it was, for people
    QString line;  ///< what the tool says of it, on one line
};

/// Finds the reason in what the tool left behind. Cannot fail: where no known reason stands there, the tool's
/// own words are one.
/// @param logTail the end of its log, of any bytes, the first line cut off or not
/// @param lastWords the end of its output
[[nodiscard]] FailureReason explainFailure(const QByteArray& logTail, const QString& lastWords);

/// The text without what could grant access: queries of addresses, signatures, keys and tokens.
[[nodiscard]] QString withoutSecrets(const QString& text);

} // namespace tessary
