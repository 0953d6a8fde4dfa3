#pragma once

#include "backend/http/Errors.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <utility>

namespace vorq {

/// The sentence of the backend's error document, trimmed; nothing if there is none.
[[nodiscard]] std::optional<QString> parseErrorMessage(QByteArrayView body);

/// Whether the status means success, from 200 to 299.
[[nodiscard]] bool isSuccess(int status);

/// The error for a status that is no success.
[[nodiscard]] ServiceError refusal(int status, QByteArrayView body);

/// The error for a transfer that did not get through. For a backend of this computer it says how to
/// start that.
[[nodiscard]] ServiceError unreachable(const QString& baseURL);

/// The error for a successful response whose body is not the record asked for.
[[nodiscard]] ServiceError unreadable(QByteArrayView body, const QString& baseURL);

/// The record that a response carries, or a ServiceError thrown.
template<typename Record>
Record recordFromResponse(int status, QByteArrayView body, const QString& baseURL,
                          std::optional<Record> (*decode)(QByteArrayView)) {
    if (!isSuccess(status)) throw refusal(status, body);
    std::optional<Record> record = decode(body);
    if (!record) throw unreadable(body, baseURL);
    return *std::move(record);
}

} // namespace vorq
