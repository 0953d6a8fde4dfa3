#pragma once

#include "platform/portable/BlockingNotes.h"

#include <QDBusConnection>

#include <chrono>

namespace vorq {

/// The notes of Gnote, over its D-Bus interface, which the session bus starts when it is asked for.
/// Gnote takes a title only once; a title that is taken gets a number. The latest change comes
/// first.
class GnoteBridge : public BlockingNotes {
  public:
    /// How long Gnote is waited for.
    struct Patience {
        std::chrono::milliseconds operation{5000}; ///< a whole operation, its start included
        std::chrono::milliseconds retryEvery{50};  ///< while its interface is not there yet
    };

    explicit GnoteBridge(QDBusConnection bus);
    GnoteBridge(QDBusConnection bus, Patience patience);

    /// Whether the bus knows how to start Gnote, or it runs.
    [[nodiscard]] static bool isAvailable(const QDBusConnection& bus);

    /// Whether the identity is one of Gnote's.
    [[nodiscard]] static bool ownsNote(const QString& id);

    [[nodiscard]] std::vector<AppleNoteSummary> listNotes(int limit) override;
    [[nodiscard]] std::optional<QString> noteBody(const QString& id) override;
    [[nodiscard]] std::expected<QString, Error> createNote(const QString& title,
                                                           const QString& body) override;
    [[nodiscard]] std::expected<void, Error> appendToNote(const QString& id,
                                                          const QString& body) override;
    [[nodiscard]] Reached reach() override;

  private:
    class Session;

    QDBusConnection m_bus;
    Patience m_patience;
};

} // namespace vorq
