#pragma once

#include <QByteArray>
#include <QString>

namespace tessary {

/// Where one file is to be copied: a URL that carries its own permission, so it is never printed or shown.
struct SASUrlResponse
{
    QString sasUrl;

    /// Decodes the service's answer. Throws Error in the domain "SASUrlResponse" with words that tell what
    /// was wrong with the answer, never its content.
    [[nodiscard]] static SASUrlResponse fromAnswer(const QByteArray& body);
};

} // namespace tessary
