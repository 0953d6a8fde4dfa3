#pragma once

#include "doubles/backend/AccountFixture.h"
#include "doubles/writing/ScriptedReplacer.h"
#include "platform/testing/ScriptedPresses.h"
#include "platform/testing/ScriptedScreens.h"
#include "platform/testing/ScriptedWorkspace.h"
#include "shell/overlay/WritingCard.h"
#include "shell/overlay/WritingToolsOverlayController.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vorq {

/// An overlay's window that only notes what becomes of it.
class ScriptedOverlayWindow final : public OverlayWindow {
  public:
    static constexpr WindowId number = 90;

    explicit ScriptedOverlayWindow(ScriptedWorkspace& workspace) : m_workspace(workspace) {}

    QSizeF size{372, 200};
    QRectF at;
    bool isShown = false;
    bool accepts = false; // the keyboard
    OverlayWindowInput* input = nullptr;
    /// "show", "hide", "take", "refuse", in order.
    std::vector<std::string> calls;

    [[nodiscard]] WindowId id() const override { return number; }
    [[nodiscard]] QSizeF wantedSize() override { return size; }
    void place(const QRectF& frame, bool, double) override { at = frame; }
    void show() override {
        isShown = true;
        calls.emplace_back("show");
    }
    void hide() override {
        isShown = false;
        calls.emplace_back("hide");
        if (m_workspace.activeWindow() == number) m_workspace.bringNoneToFront();
    }
    void takeKeyboard() override {
        accepts = true;
        calls.emplace_back("take");
        m_workspace.bringToFront(number);
    }
    void refuseKeyboard() override {
        accepts = false;
        calls.emplace_back("refuse");
    }
    void setInput(OverlayWindowInput* newInput) override { input = newInput; }

  private:
    ScriptedWorkspace& m_workspace;
};

/// Looks that find what a test sets.
class SettledLooker final : public SelectionLooker {
  public:
    std::optional<SelectionSight> sight;

    QCoro::Task<std::optional<SelectionSight>> look(std::optional<ProcessId>, QPointF,
                                                    std::stop_token) override {
        const auto given = sight;
        co_return given;
    }
};

/// The card's controller over a session of two applications, "writer" being in front with a
/// sentence highlighted, in virtual time. The user is signed in.
class OverlayFixture : public AccountFixture {
  protected:
    static constexpr ProcessId writer = 10;
    static constexpr ProcessId browser = 11;
    // The window has a number of its own, and this program owns it.
    static constexpr ProcessId ours = ScriptedOverlayWindow::number;

    OverlayFixture() {
        signIn();
        for (const ProcessId process : {writer, browser, ours})
            workspace.launch({.process = process, .identifier = {}, .name = {}});
        workspace.bringToFront(writer);
        snapshot = {.text = "The old sentence.",
                    .exactText = "The old sentence.",
                    .screenFrame = {400, 600, 300, 16},
                    .clickPoint = {550, 608},
                    .sourcePID = writer,
                    .selectedRange = TextRange{.location = 0, .length = 17},
                    .hasReliablePlacement = true};
        looker.sight = SelectionSight{.text = snapshot.text, .placement = placed()};
        make();
    }

    void make() {
        card = std::make_unique<WritingCard>(*account, *starting, nullptr);
        controller = std::make_unique<WritingToolsOverlayController>(
            WritingToolsOverlayController::Platform{clock, screens, workspace, presses, ours},
            WritingToolsOverlayController::Parts{
                window,
                *card,
                looker,
                {clock, api, *account, replacer},
                [this](std::optional<ProcessId> source, const std::stop_token&) {
                    return capture(source);
                },
                [this] { return isTrusted; }});
        QObject::connect(controller.get(), &WritingToolsOverlayController::sendToVorq,
                         [this](const QString& text, std::optional<ProcessId>) { sent += text; });
    }

    [[nodiscard]] TrackedPlacement placed() const {
        return {.screenFrame = snapshot.screenFrame, .clickPoint = snapshot.clickPoint};
    }
    QCoro::Task<SelectionSnapshot> capture(std::optional<ProcessId> source) {
        captured.push_back(source);
        if (whileCapturing) whileCapturing();
        const SelectionSnapshot given = snapshot;
        co_return given;
    }
    /// As the key does, and after the moment in which a click would belong to it.
    void pressKey() {
        controller->handleKey(writer);
        advance(std::chrono::milliseconds(200));
    }
    void advance(Clock::Duration time) {
        clock.advance(time);
        clock.settle();
    }
    void click(const ScreenPress& press) {
        presses.click(press);
        advance(Clock::Duration::zero());
    }
    void suggest(const QString& summary) {
        card->setDraft("warmer");
        card->submit();
        clock.settle();
        answerLast(200, QJsonDocument(QJsonObject{{"summary", summary},
                                                  {"feedback", ""},
                                                  {"corrections", ""},
                                                  {"sources", QJsonArray()}})
                            .toJson(QJsonDocument::Compact));
    }
    void replaceAndSettle() {
        card->replace();
        advance(std::chrono::milliseconds(100));
    }

    std::function<void()> whileCapturing;
    ScriptedScreens screens;
    ScriptedWorkspace workspace;
    ScriptedPresses presses;
    ScriptedOverlayWindow window{workspace};
    SettledLooker looker;
    ScriptedReplacer replacer;
    SelectionSnapshot snapshot;
    bool isTrusted = true;
    std::vector<std::optional<ProcessId>> captured;
    QStringList sent;
    std::unique_ptr<WritingCard> card;
    std::unique_ptr<WritingToolsOverlayController> controller;
};

} // namespace vorq
