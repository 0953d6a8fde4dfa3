#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>

namespace vorq {

/// One thing that happened in a writing session.
struct WritingToolsInteraction {
    struct Kind {
        enum class Event : std::uint8_t {
            Asked,                ///< an instruction goes to the backend; with its words
            SelectionTextChanged, ///< with the new selection
            Opened,
            RejectedTake,
            AcceptedReplace,
            HighlightMoved,
        };
        Event event = Event::Opened;
        /// "" where the event has none.
        QString text;

        [[nodiscard]] static Kind asked(const QString& words) { return {Event::Asked, words}; }
        [[nodiscard]] static Kind selectionTextChanged(const QString& selection) {
            return {Event::SelectionTextChanged, selection};
        }
        [[nodiscard]] static Kind opened() { return {Event::Opened, {}}; }
        [[nodiscard]] static Kind rejectedTake() { return {Event::RejectedTake, {}}; }
        [[nodiscard]] static Kind acceptedReplace() { return {Event::AcceptedReplace, {}}; }
        [[nodiscard]] static Kind highlightMoved() { return {Event::HighlightMoved, {}}; }

        bool operator==(const Kind&) const = default;
    };

    QDateTime at;
    Kind kind;

    /// How the model is told of it, with the time of day where the writer is.
    [[nodiscard]] QString promptLine() const;

    bool operator==(const WritingToolsInteraction&) const = default;
};

} // namespace vorq
