#pragma once

#include <QAccessible>

namespace vorq {

/// Whether a screen reader, or anything else that uses accessibility, is there to be told things.
/// What is done for it alone is done only then. Main thread only.
class ScreenReader final : private QAccessible::ActivationObserver {
  public:
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// Follows from now on whether there is one.
    static void watch() { static_cast<void>(instance()); }
    [[nodiscard]] static bool isListening() { return instance().m_isListening; }

  private:
    ScreenReader() : m_isListening(QAccessible::isActive()) {
        QAccessible::installActivationObserver(this);
    }
    ~ScreenReader() override { QAccessible::removeActivationObserver(this); }

    static ScreenReader& instance() {
        static ScreenReader reader;
        return reader;
    }
    void accessibilityActiveChanged(bool isActive) override { m_isListening = isActive; }

    bool m_isListening;
};

} // namespace vorq
