#pragma once

#include "capture/selection/AccessibleSelection.h"
#include "capture/selection/CaptureBudget.h"
#include "capture/selection/CaptureMiss.h"
#include "capture/selection/CaptureThread.h"
#include "platform/PrimarySelection.h"

#include <QObject>
#include <QStringList>

#include <expected>
#include <functional>
#include <optional>

namespace vorq {

class CaptureGate;

/// What an application was found to have selected.
struct SelectionReading {
    /// The application that was asked; nothing if whatever has the focus was.
    std::optional<ProcessId> source;
    /// By accessibility, trimmed where the caller asked for that.
    QString text;
    std::optional<AXCapture> capture;
    /// Accessibility said that nothing is selected.
    bool isNothingSelected = false;
    /// A field for passwords has the focus: nothing may be captured, by no way.
    bool isPassword = false;
    /// Accessibility did not answer in time.
    bool isUnanswered = false;
    /// Where what has the focus is, in accessibility coordinates, where the caller asked for that.
    std::optional<QRectF> focusedFrame;
    /// Where the text was read that may be columns of several lines.
    QStringList lines;
    /// PRIMARY, where accessibility did not suffice.
    std::optional<PrimarySelection::Highlight> highlight;

    /// The text of the highlight, trimmed and without what stands for images; "" for none.
    [[nodiscard]] QString highlightedText() const;

    /// Whether accessibility alone told it, and not as what may be columns.
    [[nodiscard]] bool tellsWholeText() const { return !text.isEmpty() && lines.isEmpty(); }

    /// Why it has no text.
    [[nodiscard]] CaptureMiss miss() const {
        return isUnanswered ? CaptureMiss::NoAnswer : CaptureMiss::NothingHighlighted;
    }
};

/// Reads a selection by accessibility and as PRIMARY, each on a thread of its own, within the time
/// that a capture has. What is asked and when that is enough is the caller's. Main thread only.
class SelectionReader final : public QObject {
    Q_OBJECT

  public:
    /// Accessibility is so far ahead: most applications have answered by then, and need not be
    /// asked for PRIMARY at all. That is then read beside it, since an application that is slow to
    /// answer one is slow to answer both. What shows web pages hands passwords out as PRIMARY and
    /// is asked for it only once accessibility has told, or has taken too long to tell, what has
    /// the focus.
    static constexpr std::chrono::milliseconds headStart{30};

    struct Services {
        Clock& clock;
        Accessibility& accessibility;
        PrimarySelection& primary;
        const CaptureGate& gate;
    };

    /// Asks accessibility. Runs on the reading thread, so it owns what it uses.
    using Ask = std::function<void(const CaptureSource&, SelectionReading&)>;
    using IsEnough = std::function<bool(const SelectionReading&)>;

    /// The services must outlive this object and whatever it has under way.
    explicit SelectionReader(const Services& services);

    [[nodiscard]] CaptureBudget beginBudget() const { return CaptureBudget(m_services.clock); }

    /// Reads both. The highlight is not waited for, and is none, where what accessibility told is
    /// enough, or is that nothing is selected. What does not come in time, or once this object is
    /// gone, is as if it were not there.
    QCoro::Task<SelectionReading> read(std::optional<ProcessId> source, CaptureBudget budget,
                                       Ask ask, IsEnough isEnough, std::stop_token stop);

    /// Reads both for a key, in the time that a capture has, and with the lines of what may be
    /// columns. A miss where the source may not be asked or hides what is typed into it, and once
    /// stopped.
    QCoro::Task<std::expected<SelectionReading, CaptureMiss>>
    readForKey(std::optional<ProcessId> source, Ask ask, IsEnough isEnough, std::stop_token stop);

    /// Reads by accessibility alone.
    QCoro::Task<SelectionReading> readAccessibility(std::optional<ProcessId> source, Ask ask,
                                                    Clock::Duration limit, std::stop_token stop);

    /// The same for what can wait: it yields nothing once a capture of the user's needs the thread.
    QCoro::Task<SelectionReading> readInBackground(std::optional<ProcessId> source, Ask ask,
                                                   Clock::Duration limit, std::stop_token stop);

  private:
    using Highlight = std::optional<PrimarySelection::Highlight>;

    [[nodiscard]] Clock::Duration headStartOf(ProcessId process) const;
    [[nodiscard]] bool isStale(const Highlight& highlight, ProcessId process) const;

    // Begins after the head start, or when that is ended.
    QCoro::Task<Highlight> readPrimary(std::optional<ProcessId> source, CaptureBudget budget,
                                       std::stop_token headStartEnd, std::stop_token stop);

    QCoro::Task<SelectionReading> askThread(std::optional<ProcessId> source, Ask ask,
                                            Clock::Duration limit, std::stop_token stop);

    Services m_services;
    std::stop_source m_background;
    CaptureThread m_accessibilityThread;
    CaptureThread m_primaryThread;
};

} // namespace vorq
