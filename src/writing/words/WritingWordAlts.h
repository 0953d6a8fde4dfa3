#pragma once

#include "platform/Accessibility.h"

#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

namespace vorq {

/// Another word for one of the selection.
struct WritingWordAlt {
    QUuid id = QUuid::createUuid();
    QString original;
    QString alternative;
    /// Where the word lies in the selection.
    std::optional<TextRange> utf16Range;
    /// Its place, in screen coordinates.
    std::optional<QRectF> wordFrame;

    bool operator==(const WritingWordAlt&) const = default;
};

/// The text with the alternative in the place of its word; as it is if the word is not there.
[[nodiscard]] QString withWordReplaced(const QString& text, const WritingWordAlt& alt);

/// The others once one has taken its word's place: those behind it move along.
[[nodiscard]] QList<WritingWordAlt> afterReplacing(const QList<WritingWordAlt>& wordAlts,
                                                   const WritingWordAlt& replaced);

/// The alternatives on offer, and which of them is being put in. At most one is at a time. Main
/// thread only.
class WritingWordAlts final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isLoadingWordAlts READ isLoadingWordAlts NOTIFY changed)

  public:
    [[nodiscard]] const QList<WritingWordAlt>& wordAlts() const { return m_wordAlts; }
    [[nodiscard]] bool isLoadingWordAlts() const { return m_isLoading; }
    [[nodiscard]] std::optional<QUuid> applyingWordAltID() const { return m_applying; }
    /// Whether any were loaded so far, if only none.
    [[nodiscard]] bool didLoadWordAlts() const { return m_didLoad; }

    void beginLoading();
    /// Ends the loading; what is being put in is so no more if it is none of these.
    void show(const QList<WritingWordAlt>& wordAlts);
    /// Ends it with what was there before.
    void endLoading();
    /// None is on offer any more.
    void clear() { show({}); }
    /// Where the words are, in the order of the list; nothing for those that are not to be seen.
    void place(const std::vector<std::optional<QRectF>>& frames);

    /// Nothing for an unknown one.
    [[nodiscard]] std::optional<WritingWordAlt> find(const QUuid& id) const;

    /// False, and nothing is done, for an unknown one and while another is being put in.
    bool beginApplying(const QUuid& id);
    void endApplying();

  signals:
    void changed();
    void editStarted();
    void editFinished();

  private:
    [[nodiscard]] bool contains(const QUuid& id) const;

    QList<WritingWordAlt> m_wordAlts;
    bool m_isLoading = false;
    bool m_didLoad = false;
    std::optional<QUuid> m_applying;
};

} // namespace vorq
