#include "conformance/Ops.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <string>
#include <vector>

namespace vorq::conformance {
namespace {

QJsonValue member(const QJsonObject& object, const char* key, QJsonValue::Type type) {
    const QJsonValue value = object.value(QLatin1StringView(key));
    if (value.type() != type)
        throw MalformedInput(std::string("\"") + key + "\" is missing or of another type");
    return value;
}

std::vector<double> numbersOf(const QJsonObject& object, const char* key, std::size_t count) {
    std::vector<double> numbers;
    for (const QJsonValue& value : arrayOf(object, key)) {
        if (!value.isDouble()) throw MalformedInput(std::string("\"") + key + "\" holds no number");
        numbers.push_back(value.toDouble());
    }
    if (numbers.size() != count)
        throw MalformedInput(std::string("\"") + key + "\" is of another length");
    return numbers;
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

double numberOf(const QJsonObject& object, const char* key) {
    return member(object, key, QJsonValue::Double).toDouble();
}

QRectF rectOf(const QJsonObject& object, const char* key) {
    const std::vector<double> numbers = numbersOf(object, key, 4);
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

QPointF pointOf(const QJsonObject& object, const char* key) {
    const std::vector<double> numbers = numbersOf(object, key, 2);
    return {numbers[0], numbers[1]};
}

QJsonArray jsonOf(const QRectF& rect) {
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

bool has(const QJsonObject& object, const char* key) {
    const QJsonValue value = object.value(QLatin1StringView(key));
    return !value.isUndefined() && !value.isNull();
}

std::optional<QString> optionalStringOf(const QJsonObject& object, const char* key) {
    if (!has(object, key)) return std::nullopt;
    return stringOf(object, key);
}

QJsonValue parsed(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (document.isArray()) return document.array();
    return document.object();
}

} // namespace vorq::conformance
