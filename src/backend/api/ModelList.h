#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

namespace vorq {

/// The models that the backend offers beside those of the catalogue.
struct ModelList {
    QStringList ids;

    bool operator==(const ModelList&) const = default;
};

/// Ids that nobody could read or choose are left out, and so are those beyond what a menu holds.
[[nodiscard]] std::optional<ModelList> decodeModelList(QByteArrayView json);

} // namespace vorq
