#pragma once

#include <QString>

#include <vector>

namespace vorq {

class JsonWriter;

/// The suggestion of a reply for the next turn: a question and short answers to choose from.
struct VorqFollowUp {
    QString question;
    std::vector<QString> labels;

    bool operator==(const VorqFollowUp&) const = default;
};

void encode(const VorqFollowUp& followUp, JsonWriter& writer);

} // namespace vorq
