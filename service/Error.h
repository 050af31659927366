#pragma once

#include <QString>

#include <exception>

namespace tessary {

/// A failure with the three things that travel with it. Only the description is ever shown to a person.
class Error : public std::exception
{
public:
    Error(QString domain, int code, QString description);

    [[nodiscard]] const QString& domain() const { return m_domain; }

    [[nodiscard]] int code() const { return m_code; }

    [[nodiscard]] const QString& description() const { return m_description; }

    [[nodiscard]] const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_domain;
    int m_code;
    QString m_description;
    QByteArray m_what;
};

enum class APIServiceError { invalidURL, noData };
enum class NoWorkspaceDataError { noData };
enum class LibraryDataError { noData, insertError };

/// The error that is being handled, as one with a description, whatever it was. Called in a catch block.
[[nodiscard]] Error caughtError();

/// The case as an error: its domain is the type's qualified name, its code the case's index, and its
/// description the generic text that is built from both.
[[nodiscard]] Error toError(APIServiceError error);
[[nodiscard]] Error toError(LibraryDataError error);

} // namespace tessary
