#include "conformance/Ops.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <string>

namespace vorq::conformance {
namespace {

QJsonValue member(const QJsonObject& object, const char* key, QJsonValue::Type type) {
    const QJsonValue value = object.value(QLatin1StringView(key));
    if (value.type() != type)
        throw MalformedInput(std::string("\"") + key + "\" is missing or of another type");
    return value;
}

} // namespace

QString stringOf(const QJsonObject& object, const char* key) {
    return member(object, key, QJsonValue::String).toString();
}

bool boolOf(const QJsonObject& object, const char* key) {
    return member(object, key, QJsonValue::Bool).toBool();
}

qsizetype integerOf(const QJsonObject& object, const char* key) {
    return static_cast<qsizetype>(member(object, key, QJsonValue::Double).toInteger());
}

QJsonArray arrayOf(const QJsonObject& object, const char* key) {
    return member(object, key, QJsonValue::Array).toArray();
}

QJsonObject objectOf(const QJsonObject& object, const char* key) {
    return member(object, key, QJsonValue::Object).toObject();
}

std::optional<QString> optionalStringOf(const QJsonObject& object, const char* key) {
    const QJsonValue value = object.value(QLatin1StringView(key));
    if (value.isUndefined() || value.isNull()) return std::nullopt;
    return stringOf(object, key);
}

QJsonValue parsed(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (document.isArray()) return document.array();
    return document.object();
}

} // namespace vorq::conformance
