#include "service/Error.h"

namespace tessary {
namespace {

Error genericError(const QString& type, int code)
{
    const QString domain = QStringLiteral("tessary_macos_uploader.") + type;
    return {domain, code,
            QStringLiteral("The operation couldn’t be completed. (%1 error %2.)").arg(domain).arg(code)};
}

} // namespace

Error::Error(QString domain, int code, QString description)
    : m_domain(std::move(domain)),
      m_code(code),
      m_description(std::move(description)),
      m_what(m_description.toUtf8())
{
}

Error caughtError()
{
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::exception& other) {
        return {
            QStringLiteral("std::exception"), 0,
            QStringLiteral("Something unexpected went wrong: %1").arg(QString::fromLocal8Bit(other.what()))};
    }
}

Error toError(APIServiceError error)
{
    return genericError(QStringLiteral("APIServiceError"), static_cast<int>(error));
}

Error toError(LibraryDataError error)
{
    return genericError(QStringLiteral("LibraryDataError"), static_cast<int>(error));
}

} // namespace tessary
