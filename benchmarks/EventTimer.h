#pragma once

#include <QGuiApplication>

#include <vector>

namespace vorq::bench {

/// An application that times each event it delivers: nothing else can happen on the main thread
/// until it has been dealt with. Main thread only.
class EventTimer final : public QGuiApplication {
  public:
    /// Milliseconds that the main thread was held up.
    struct Turn {
        double wall = 0;
        double processor = 0; // without the time that other programs took from it
        bool isFrame = false; // it drew the window
    };

    EventTimer(int& argc, char** argv) : QGuiApplication(argc, argv) {}

    bool notify(QObject* receiver, QEvent* event) override;

    void restart() { m_turns.clear(); }
    [[nodiscard]] const std::vector<Turn>& turns() const { return m_turns; }

  private:
    int m_depth = 0;
    std::vector<Turn> m_turns;
};

} // namespace vorq::bench
