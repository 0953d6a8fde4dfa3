#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QRectF>
#include <QString>

#include <functional>
#include <map>
#include <stdexcept>

namespace vorq::conformance {

/// Input that an operation cannot read.
struct MalformedInput : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// From the "in" of a case to its "out". Throws MalformedInput.
using Op = std::function<QJsonValue(const QJsonObject& in)>;
using Ops = std::map<QString, Op>;

void addReplyOps(Ops& ops);
void addCommandOps(Ops& ops);
void addBackendOps(Ops& ops);
void addCaptureOps(Ops& ops);
void addShellOps(Ops& ops);
void addLibraryOps(Ops& ops);
void addWritingOps(Ops& ops);

/// A member that must be there with its type.
[[nodiscard]] QString stringOf(const QJsonObject& object, const char* key);
[[nodiscard]] bool boolOf(const QJsonObject& object, const char* key);
[[nodiscard]] qsizetype integerOf(const QJsonObject& object, const char* key);
[[nodiscard]] QJsonArray arrayOf(const QJsonObject& object, const char* key);
[[nodiscard]] QJsonObject objectOf(const QJsonObject& object, const char* key);

/// Numbers from arrays of the right length: [x, y, width, height] and [x, y].
[[nodiscard]] double numberOf(const QJsonObject& object, const char* key);
[[nodiscard]] QRectF rectOf(const QJsonObject& object, const char* key);
[[nodiscard]] QPointF pointOf(const QJsonObject& object, const char* key);
[[nodiscard]] QJsonArray jsonOf(const QRectF& rect);

/// A member that may be missing or null.
[[nodiscard]] bool has(const QJsonObject& object, const char* key);
[[nodiscard]] std::optional<QString> optionalStringOf(const QJsonObject& object, const char* key);

/// JSON text that the product wrote, read back.
[[nodiscard]] QJsonValue parsed(const QByteArray& json);

} // namespace vorq::conformance
