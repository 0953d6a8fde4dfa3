#pragma once

#include "model/VorqFollowUp.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace vorq {

class JsonWriter;

struct AISource {
    std::optional<QString> title;
    std::optional<QString> url;

    bool operator==(const AISource&) const = default;
};

/// A reply of the backend.
struct AIAnalysis {
    QString summary;
    QString feedback;
    QString corrections;
    std::vector<AISource> sources;
    std::optional<VorqFollowUp> followUp;

    bool operator==(const AIAnalysis&) const = default;
};

/// Nothing for JSON that is not a complete analysis.
[[nodiscard]] std::optional<AIAnalysis> decodeAIAnalysis(QByteArrayView json);
void encode(const AIAnalysis& analysis, JsonWriter& writer);

/// The text that the user reads.
[[nodiscard]] QString displayText(const AIAnalysis& analysis);

/// The trimmed text, or nothing of it if it is a diagnostic of a backend without its keys.
[[nodiscard]] QString scrubDiagnostic(QStringView text);

/// The trimmed text, or nothing of it if it only says that there are no corrections.
[[nodiscard]] QString visibleCorrections(QStringView text);

} // namespace vorq
