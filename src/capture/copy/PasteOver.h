#pragma once

#include "capture/copy/ClipboardLoan.h"
#include "capture/copy/SelectionWrite.h"
#include "capture/copy/SourceFocus.h"
#include "capture/selection/CaptureThread.h"
#include "capture/selection/CopyShortcut.h"
#include "platform/Accessibility.h"
#include "support/async/TurnQueue.h"

#include <QObject>

#include <expected>
#include <functional>
#include <optional>

namespace vorq {

class CaptureLog;

/// Puts a text in the place of a selection in another application: by accessibility, else by
/// pasting; the other way round where the application takes a write for several steps to undo. Main
/// thread only.
///
/// Nothing is written unless what was seen is still there right before. What was there before is
/// kept for one undo.
class PasteOver final : public QObject {
    Q_OBJECT

  public:
    struct Services {
        Clock& clock;
        Accessibility& accessibility;
        Pasteboard& pasteboard;
        KeyPoster& keys;
        Workspace& workspace;
        /// Says what is selected where accessibility does not.
        CopyShortcut& copyShortcut;
        CaptureLog& log;
        /// Of all who borrow the clipboard.
        TurnQueue& turns;
    };

    /// A selection as it was seen.
    struct Target {
        struct Whole {
            QString text;
            TextRange range;
        };
        std::optional<ProcessId> source;
        /// Without one, whichever of the process is in front.
        std::optional<WindowId> window;
        /// The text, untrimmed.
        QString original;
        std::optional<TextRange> range;
        /// Whether it is selected anew where something else is selected by now.
        bool reselects = false;
        /// Where the original is but a part of what was selected: all of that. The original is then
        /// replaced by its range alone, all is selected again afterwards, and nothing is left on
        /// the clipboard.
        std::optional<Whole> within = {};
    };

    enum class Outcome {
        /// It is believed to have landed.
        Replaced,
        /// Nothing was changed, or not as it should be.
        NotReplaced,
        /// What was seen is no longer there, or takes no text. The clipboard holds the text.
        OnClipboard,
        /// The application does not answer, so nothing was asked of it. The clipboard holds the
        /// text.
        Unanswered,
        /// The application was given the text and has not shown it, and may do so yet. The
        /// clipboard holds the text, too.
        Pending,
    };

    /// The services must outlive this object and what it has under way.
    explicit PasteOver(const Services& services) : m_services(services), m_thread(services.clock) {}

    /// Writes the replacement as it is given: see fittedTo().
    QCoro::Task<Outcome> replaceSelectedText(QString replacement, Target target,
                                             std::stop_token stop);

    [[nodiscard]] bool canUndo() const { return m_undo.has_value(); }
    /// Puts back what the last replacement took the place of, once. NotReplaced without one.
    QCoro::Task<Outcome> undo(std::stop_token stop);

    enum class Obstacle {
        /// The target is not in front, or there is no chord that is safe to press in it.
        Target,
        /// It was told to paste and did not ask for the text, which the clipboard holds then.
        Delay,
        /// What the clipboard holds could not be given back.
        Clipboard,
    };
    /// Has the application replace its selection by the text, over the clipboard, which gets back
    /// afterwards what it held. An error if that was not asked of it.
    QCoro::Task<std::expected<void, Obstacle>> pasteOverSelection(QString text, Target target,
                                                                  std::stop_token stop);

  private:
    /// What accessibility tells of the target.
    enum class Sight {
        Unknown,    ///< nothing
        Silent,     ///< nothing, as the application does not answer
        Late,       ///< nothing in time, whatever has been done
        Replaced,   ///< the replacement stands there
        Original,   ///< the original is there as it was, selected
        Unselected, ///< the original was there and not selected, as it is now
        Other,      ///< neither
    };
    using Look = std::function<Sight(AccessibleElement&)>;

    QCoro::Task<std::expected<void, Obstacle>> postPaste(QString text, Target target,
                                                         KeyChord chord, std::stop_token stop);
    QCoro::Task<bool> isReplaced(QString text, Target target);
    [[nodiscard]] bool isInFront(const Target& target) const;
    QCoro::Task<Sight> look(Target target, Look look, std::stop_token stop);
    [[nodiscard]] std::optional<KeyChord> chordOf(const Target& target) const;
    [[nodiscard]] bool canPaste(const Target& target) const;
    QCoro::Task<Sight> awaitPaste(QString replacement, Target target, std::stop_token stop);
    [[nodiscard]] static Look selecting(Target target, std::optional<QString> written);
    QCoro::Task<Outcome> writeAlone(QString replacement, Target target, std::stop_token stop);
    QCoro::Task<Outcome> write(QString replacement, Target target, std::stop_token stop);
    QCoro::Task<Outcome> paste(QString replacement, Target target, bool isKnown,
                               std::stop_token stop);
    QCoro::Task<bool> isOriginalCopied(Target target, std::stop_token stop);
    QCoro::Task<Outcome> leaveOnClipboard(QString text, Outcome outcome);
    QCoro::Task<Outcome> refuse(QString text, Target target, Outcome outcome);
    QCoro::Task<> selectAgain(Target target, bool isReplaced);
    void remember(const QString& replacement, const Target& target);

    Services m_services;
    CaptureThread m_thread;
    struct Undo {
        QString original;
        Target target;
    };
    std::optional<Undo> m_undo;
};

} // namespace vorq
