#pragma once

#include <QByteArray>
#include <QString>

#include <exception>
#include <optional>

namespace vorq {

/// What the backend client throws. The message is a sentence for the user.
class BackendError : public std::exception {
  public:
    explicit BackendError(QString message);

    [[nodiscard]] const QString& message() const { return m_message; }
    [[nodiscard]] const char* what() const noexcept override { return m_utf8.constData(); }

  private:
    QString m_message;
    QByteArray m_utf8;
};

/// A call that the backend refused or that did not get through to it.
class ServiceError final : public BackendError {
  public:
    enum class Kind { RequestFailed, NotSignedIn, InvalidResponse };

    /// The status is that of the response, nothing where none came; the field is what of the
    /// request the backend names, "" for nothing.
    [[nodiscard]] static ServiceError
    requestFailed(QString message, std::optional<int> status = std::nullopt, QString field = {});
    [[nodiscard]] static ServiceError notSignedIn();
    [[nodiscard]] static ServiceError invalidResponse();

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] std::optional<int> status() const { return m_status; }
    [[nodiscard]] const QString& field() const { return m_field; }

  private:
    ServiceError(Kind kind, QString message, std::optional<int> status = std::nullopt,
                 QString field = {})
        : BackendError(std::move(message)),
          m_kind(kind),
          m_status(status),
          m_field(std::move(field)) {}

    Kind m_kind;
    std::optional<int> m_status;
    QString m_field;
};

/// A sign-in in the browser that came to nothing. The label names the kind of sign-in.
class SignInError final : public BackendError {
  public:
    enum class Kind { MissingAuthorizeURL, MissingAuthCode, TimedOut, Failed, Cancelled };

    [[nodiscard]] static SignInError missingAuthorizeURL(const QString& label);
    [[nodiscard]] static SignInError missingAuthCode(const QString& label);
    [[nodiscard]] static SignInError timedOut(const QString& label);
    [[nodiscard]] static SignInError failed(QString message);
    [[nodiscard]] static SignInError cancelled();

    [[nodiscard]] Kind kind() const { return m_kind; }

  private:
    SignInError(Kind kind, QString message) : BackendError(std::move(message)), m_kind(kind) {}

    Kind m_kind;
};

/// A transfer that failed below HTTP, in the platform's own words.
class TransferError final : public BackendError {
  public:
    using BackendError::BackendError;
};

/// The operation was stopped by its stop token.
class OperationCancelled final : public BackendError {
  public:
    OperationCancelled();
};

} // namespace vorq
