#pragma once

#include "platform/copying/Pasteboard.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>
#include <stop_token>

namespace vorq {

class Clock;

/// Asks the clipboard what the user pastes, without waiting for its owner on the main thread. Main
/// thread only.
class PasteReader {
  public:
    /// Both must outlive this object and what it reads.
    PasteReader(Pasteboard& pasteboard, Clock& clock) : m_pasteboard(pasteboard), m_clock(clock) {}

    /// What can be attached of the contents. Without either, they are a text, or nothing.
    struct Offer {
        QList<QUrl> files;     ///< local ones
        QString pictureFormat; ///< in which the picture is taken; "" for none
    };

    /// Nothing if the owner does not answer soon.
    [[nodiscard]] QCoro::Task<std::optional<Offer>> offer(std::stop_token stop) const;

    /// What it holds in a form; nothing if that does not come in time.
    [[nodiscard]] QCoro::Task<std::optional<QByteArray>> bytes(QString form,
                                                               std::stop_token stop) const;

    /// The form in which a picture is taken of those that are offered; "" for none.
    [[nodiscard]] static QString pictureFormat(const QStringList& offered);

    /// The addresses in what file managers copy in a form of their own: a verb, then an address a
    /// line.
    [[nodiscard]] static QList<QUrl> urlsOfFileManager(const QByteArray& bytes);

  private:
    Pasteboard& m_pasteboard;
    Clock& m_clock;
};

} // namespace vorq
