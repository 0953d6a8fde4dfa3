#include "platform/linux/atspi/AtSpiAccessibility.h"

#include "platform/linux/atspi/AtSpiElement.h"

#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

class AtSpiAccessibility::Parts {
  public:
    explicit Parts(std::shared_ptr<AtSpiBus> shared) : m_bus(std::move(shared)) {}

    [[nodiscard]] AccessibleElementPtr element(const AtSpiRef& ref, const std::stop_token& stop) {
        return std::make_shared<AtSpiElement>(
            std::make_shared<AtSpiElement::Session>(applications, windows, stop,
                                                    AtSpiWalk(bus, stop), pixelScreens()),
            ref);
    }

    void setScreens(std::vector<PixelScreen> all) {
        const std::scoped_lock lock(m_mutex);
        m_screens = std::move(all);
    }

  private:
    // Before what uses it.
    std::shared_ptr<AtSpiBus> m_bus;

  public:
    AtSpiBus& bus = *m_bus;
    AtSpiApplications applications{bus};
    X11WindowPlace windows;

  private:
    [[nodiscard]] std::vector<PixelScreen> pixelScreens() {
        const std::scoped_lock lock(m_mutex);
        return m_screens;
    }

    std::mutex m_mutex;
    std::vector<PixelScreen> m_screens;
};

AtSpiAccessibility::AtSpiAccessibility(const QString& sessionBusAddress)
    : AtSpiAccessibility(std::make_shared<AtSpiBus>(sessionBusAddress)) {}

AtSpiAccessibility::AtSpiAccessibility(std::shared_ptr<AtSpiBus> bus)
    : m_parts(std::make_unique<Parts>(std::move(bus))) {}

AtSpiAccessibility::~AtSpiAccessibility() = default;

QString AtSpiAccessibility::defaultSessionBus() {
    QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) return address;
    return u"unix:path=%1/bus"_s.arg(qEnvironmentVariable("XDG_RUNTIME_DIR"));
}

void AtSpiAccessibility::setScreens(std::vector<PixelScreen> screens) {
    m_parts->setScreens(std::move(screens));
}

bool AtSpiAccessibility::isTrusted() const {
    return m_parts->bus.isOn();
}

void AtSpiAccessibility::whenTrustChanges(QObject* context,
                                          const std::function<void()>& callback) const {
    m_parts->bus.whenChanged(context, callback);
}

void AtSpiAccessibility::requestTrust() {
    m_parts->bus.switchOn();
}

AccessibleElementPtr AtSpiAccessibility::application(ProcessId process, std::stop_token stop) {
    const QString service = m_parts->applications.serviceOf(process, stop);
    return service.isEmpty() ? nullptr : m_parts->element(atspi::applicationRoot(service), stop);
}

AccessibleElementPtr AtSpiAccessibility::focusedWindow(ProcessId process, std::stop_token stop) {
    const QString service = m_parts->applications.serviceOf(process, stop);
    if (service.isEmpty()) return nullptr;
    const auto window = m_parts->applications.activeWindow(service, stop);
    return window ? m_parts->element(*window, stop) : nullptr;
}

AccessibleElementPtr AtSpiAccessibility::focusedElement(std::optional<ProcessId> process,
                                                        std::stop_token stop) {
    const QString service = process ? m_parts->applications.serviceOf(*process, stop)
                                    : m_parts->applications.focusedService(stop);
    if (service.isEmpty()) return nullptr;
    const auto element = m_parts->applications.focusedElement(service, stop);
    return element ? m_parts->element(*element, stop) : nullptr;
}

bool AtSpiAccessibility::isSilent(ProcessId process, std::stop_token stop) {
    const QString service = m_parts->applications.serviceOf(process, stop);
    if (service.isEmpty()) return false;
    AtSpiBus& bus = m_parts->applications.bus();
    return atspi::isLate(bus.call(atspi::role(atspi::applicationRoot(service)), stop));
}

} // namespace vorq
