#pragma once

#include "doubles/backend/AccountFixture.h"
#include "doubles/writing/ScriptedReplacer.h"
#include "writing/WritingToolsModel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <gmock/gmock.h>

#include <memory>

namespace vorq {

/// A session of the writing tools over a scripted backend, in virtual time, signed in.
class WritingFixture : public AccountFixture {
  protected:
    WritingFixture() {
        signIn();
        open();
    }

    void open() {
        writing = std::make_unique<WritingToolsModel>(
            WritingToolsModel::Services{clock, api, *account, *usedReplacer}, selection);
        WritingToolsModel* opened = writing.get();
        const auto note = [this](const char* name) { return [this, name] { heard += name; }; };
        QObject::connect(opened, &WritingToolsModel::replaceStarted, opened, note("started"));
        QObject::connect(opened, &WritingToolsModel::replaceFinished, opened, note("finished"));
        QObject::connect(opened, &WritingToolsModel::replaced, opened, note("replaced"));
        QObject::connect(opened, &WritingToolsModel::undone, opened, note("undone"));
        QObject::connect(opened, &WritingToolsModel::contentChange, opened, note("content"));
        QObject::connect(opened, &WritingToolsModel::promptFocusTokenChanged, opened,
                         note("focus"));
        QObject::connect(opened, &WritingToolsModel::sendToVorq, opened,
                         [this](const QString& text) { sent += text; });
        writing->record(WritingToolsInteraction::Kind::opened());
    }

    void say(const QString& prompt) {
        writing->setDraftPrompt(prompt);
        if (writing) writing->submitPrompt();
        clock.settle();
    }

    static QByteArray analysis(const QString& summary) {
        return QJsonDocument(QJsonObject{{"summary", summary},
                                         {"feedback", ""},
                                         {"corrections", ""},
                                         {"sources", QJsonArray()}})
            .toJson(QJsonDocument::Compact);
    }
    void answer(const QString& summary) { answerLast(200, analysis(summary)); }
    /// Says it and has the backend answer.
    void suggest(const QString& prompt, const QString& summary) {
        say(prompt);
        answer(summary);
    }

    /// What was sent last.
    [[nodiscard]] QVariantMap body() const { return transport.last().json(); }
    [[nodiscard]] QString sentPrompt() const { return body()["prompt"].toString(); }
    [[nodiscard]] QString suggestion() const { return writing->suggestion(); }
    [[nodiscard]] QString error() const { return writing->errorLine(); }

    WritingSelection selection{.originalText = QStringLiteral("The old sentence."),
                               .sourcePID = 42,
                               .window = static_cast<WindowId>(42),
                               .selectedRange = TextRange{.location = 3, .length = 17},
                               .clickPoint = QPointF(10, 20),
                               .selectionScreenFrame = {0, 0, 40, 14},
                               .selectionReliable = true};
    ScriptedReplacer replacer;
    SelectionReplacer* usedReplacer = &replacer;
    QStringList heard;
    QStringList sent;
    std::unique_ptr<WritingToolsModel> writing;
};

} // namespace vorq
