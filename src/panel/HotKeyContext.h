#pragma once

#include "capture/selection/CapturedText.h"
#include "panel/HeldCapture.h"
#include "platform/ProcessId.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

#include <optional>

namespace vorq {

class PanelConversation;
class Permissions;
class SelectionCapture;
class SummonedPanel;

/// From the panel's hot key to the conversation that has taken up what was highlighted in the
/// application in front. What reads like a secret waits for the user's word. Main thread only.
class HotKeyContext final : public QObject {
    Q_OBJECT

  public:
    using Source = std::optional<ProcessId>;

    /// All must outlive this object.
    struct Services {
        SelectionCapture& capture;
        Permissions& permissions;
        PanelConversation& conversation;
    };

    explicit HotKeyContext(const Services& services);

    /// Shows the panel and takes up what is selected in the source, or hides it if it was up and
    /// nothing is selected. Presses that come before the former is dealt with wait; the newest of
    /// them counts, unless it finds what the former has asked about. A panel that goes meanwhile is
    /// left alone, and so is the conversation.
    void press(SummonedPanel& panel, Source source);

    /// Takes up what is highlighted in the source application, else in the one in front, or the
    /// text given instead. What was held before is dropped.
    QCoro::Task<> submitHotKeyContext(Source sourcePID, std::optional<CapturedText> prefilledText,
                                      std::stop_token stop);

    /// What was captured and waits for the user's word. It goes with the conversation.
    [[nodiscard]] HeldCapture& held() { return m_held; }
    /// The user wants the held text to be sent after all.
    void sendHeld();

  signals:
    /// The hot key has taken up text of the application, which may have no name.
    void textCaptured(const QString& application);
    /// The hot key found no text in the application, which may have no name, and why.
    void nothingCaptured(const QString& application, vorq::CaptureMiss miss);

  private:
    struct Press {
        QPointer<SummonedPanel> panel;
        Source source;
        bool hasWaited = false; // came before the former was dealt with
    };
    struct Find {
        CapturedText captured;
        Source captor;
    };

    void start(Press press);
    static QCoro::Task<> run(QPointer<HotKeyContext> self, Press press, std::stop_token stop);
    [[nodiscard]] bool repeatsLatest(const Press& press, const CapturedText& captured) const;
    static QCoro::Task<> handle(QPointer<HotKeyContext> self, Press press, std::stop_token stop);
    QCoro::Task<Find> find(Source source, bool isTrusted, std::stop_token stop);
    void dealWith(const Find& found, bool isTrusted);
    void takeUp(const QString& text, const QString& application);
    void greet(const QString& application, CaptureMiss miss, bool isTrusted);
    void log(bool isTrusted, Source source, const CapturedText& captured);

    Services m_services;
    HeldCapture m_held;
    std::optional<Press> m_next;
    TaskSlot m_task;
};

} // namespace vorq
