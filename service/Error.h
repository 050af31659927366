#pragma once

#include <QByteArray>
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

/// invalidURL: a request's address is none, or the answer to a sign-in is no workspace. noData belongs to the
/// vocabulary of the service's clients; nothing here throws it.
enum class APIServiceError { invalidURL, noData };
/// A workspace lacks a value. Workspace::fromAnswer() prints its name and throws invalidURL in its place.
enum class NoWorkspaceDataError { noData };
/// noData: the answer to a registration is a list, or lacks a value. The latter is thrown as insertError,
/// like an answer that is not JSON.
enum class LibraryDataError { noData, insertError };

/// The error that is being handled, as one with a description, whatever it was. Called in a catch block.
[[nodiscard]] Error caughtError();

/// The case as an error: its domain is the type's qualified name, its code the case's index, and its
/// description the generic text that is built from both.
[[nodiscard]] Error toError(APIServiceError error);
[[nodiscard]] Error toError(LibraryDataError error);

/// APIServiceError::invalidURL for an answer that is not even JSON, as a gateway's page. Only its type tells
/// it from one for JSON that is no workspace.
class NotJsonError : public Error
{
public:
    NotJsonError() : Error(toError(APIServiceError::invalidURL)) {}
};

} // namespace tessary
