#pragma once

#include "platform/NotesBridge.h"
#include "support/async/Wakeup.h"

#include <utility>

namespace vorq {

/// A notes application that remembers what it is given, or refuses with a sentence. Its answers
/// come when the event loop turns; nothing of it is needed for that.
class ScriptedNotesBridge final : public NotesBridge {
  public:
    std::optional<QString> refusal;
    std::vector<std::pair<QString, QString>> notes; // title and body; identities are 1, 2, …
    bool isHanging = false;                         // keeps its answers until release()

    void release() {
        isHanging = false;
        for (const Wakeup& waiting : std::exchange(m_waiting, {}))
            waiting.fire();
    }

    QCoro::Task<std::vector<AppleNoteSummary>> listNotes(int limit, std::stop_token stop) override {
        std::vector<AppleNoteSummary> list;
        for (const auto& [title, body] : notes)
            if (!stop.stop_requested() && std::ssize(list) < limit)
                list.push_back({QString::number(list.size() + 1), title});
        return answer(std::move(list));
    }
    QCoro::Task<std::optional<QString>> noteBody(QString id, std::stop_token stop) override {
        auto* note = stop.stop_requested() ? nullptr : find(id);
        const bool isReadable = note && !note->second.isEmpty();
        return answer(isReadable ? std::optional(note->second) : std::nullopt);
    }
    QCoro::Task<Created> createNote(QString title, QString body, std::stop_token stop) override {
        if (stop.stop_requested()) return answer(Created(std::unexpected(Error())));
        if (refusal) return answer(Created(std::unexpected(*refusal)));
        notes.emplace_back(title, body);
        return answer(Created(QString::number(notes.size())));
    }
    QCoro::Task<Appended> appendToNote(QString id, QString body, std::stop_token stop) override {
        auto* note = stop.stop_requested() ? nullptr : find(id);
        if (refusal) return answer(Appended(std::unexpected(*refusal)));
        if (!note) return answer(Appended(std::unexpected(notesbridge::appendFailed)));
        note->second += QStringLiteral("\n\n") + body;
        return answer(Appended());
    }
    QCoro::Task<Reached> reach(std::stop_token stop) override {
        Reached reached = QStringLiteral("Scripted Notes");
        if (refusal || stop.stop_requested()) reached = std::unexpected(refusal.value_or(Error()));
        return answer(std::move(reached));
    }

  private:
    std::pair<QString, QString>* find(const QString& id) {
        const qsizetype index = id.toLongLong() - 1;
        const bool isKnown = index >= 0 && index < std::ssize(notes);
        return isKnown ? &notes[static_cast<std::size_t>(index)] : nullptr;
    }

    template<typename Answer>
    QCoro::Task<Answer> answer(Answer value) {
        const Wakeup answered;
        if (isHanging)
            m_waiting.push_back(answered);
        else
            answered.fire();
        co_await answered;
        co_return value;
    }

    std::vector<Wakeup> m_waiting;
};

} // namespace vorq
