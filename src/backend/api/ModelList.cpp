#include "backend/api/ModelList.h"

#include "support/json/StrictJson.h"
#include "support/text/Text.h"

#include <algorithm>
#include <vector>

namespace vorq {

using strict_json::Element;
using strict_json::Object;
using strict_json::readRequired;

namespace {

constexpr qsizetype mostModels = 40;
constexpr qsizetype longestId = 200;

struct OfferedModel {
    QString id;
};

struct OfferedModels {
    std::vector<OfferedModel> models;
};

bool isUsable(const QString& id) {
    return !id.isEmpty() && id.size() <= longestId && trimmed(id) == id &&
           std::ranges::all_of(id, [](QChar character) { return character.isPrint(); });
}

bool read(Element element, OfferedModel& model) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", model.id);
}

bool read(Element element, OfferedModels& list) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "models", list.models);
}

} // namespace

std::optional<ModelList> decodeModelList(QByteArrayView json) {
    const auto document = strict_json::decodeDocument<OfferedModels>(json);
    if (!document) return std::nullopt;
    ModelList list;
    for (const OfferedModel& model : document->models) {
        if (list.ids.size() == mostModels) break;
        if (isUsable(model.id) && !list.ids.contains(model.id)) list.ids += model.id;
    }
    return list;
}

} // namespace vorq
