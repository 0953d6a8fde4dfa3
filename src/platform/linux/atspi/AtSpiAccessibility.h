#pragma once

#include "platform/Accessibility.h"
#include "platform/linux/x11/PixelScreens.h"

#include <QString>

#include <functional>
#include <memory>

class QObject;

namespace vorq {

class AtSpiBus;

/// Other applications through the accessibility bus of the session.
///
/// Every call has a time limit of its own, and none is ever made to Vorq itself. Without a bus, or
/// while it is down, every read yields nothing; when it comes, or comes back, reads work again.
/// What may be called on any thread never waits; everything else is for the thread of the reader.
class AtSpiAccessibility final : public Accessibility {
  public:
    /// The address of the session bus; by default that of the environment.
    explicit AtSpiAccessibility(const QString& sessionBusAddress = defaultSessionBus());
    /// Over a connection that others use as well.
    explicit AtSpiAccessibility(std::shared_ptr<AtSpiBus> bus);
    ~AtSpiAccessibility() override;

    /// The monitors as they are from now on, for places in points. For any thread.
    void setScreens(std::vector<PixelScreen> screens);

    /// What is selected is deleted first, and that is a step of its own.
    [[nodiscard]] bool writesInOneStep() const override { return false; }
    /// Whether the bus is there and toolkits are told to use it, as far as is known by now.
    [[nodiscard]] bool isTrusted() const override;
    void whenTrustChanges(QObject* context, const std::function<void()>& callback) const override;

    /// Tells toolkits to show their windows on the bus, for this session and later ones.
    /// Applications of some toolkits heed it only when they start.
    void requestTrust() override;

    [[nodiscard]] AccessibleElementPtr application(ProcessId process,
                                                   std::stop_token stop) override;
    [[nodiscard]] AccessibleElementPtr focusedWindow(ProcessId process,
                                                     std::stop_token stop) override;
    [[nodiscard]] AccessibleElementPtr focusedElement(std::optional<ProcessId> process,
                                                      std::stop_token stop) override;
    [[nodiscard]] bool isSilent(ProcessId process, std::stop_token stop) override;

    [[nodiscard]] static QString defaultSessionBus();

  private:
    class Parts;

    std::unique_ptr<Parts> m_parts;
};

} // namespace vorq
