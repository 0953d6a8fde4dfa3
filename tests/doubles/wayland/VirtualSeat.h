#pragma once

#include <QChar>
#include <QPoint>
#include <QSize>
#include <QString>

#include <chrono>
#include <initializer_list>
#include <memory>

namespace vorq::desktop {

/// A keyboard and a pointer of a compositor that lets its clients play them. They are there for as
/// long as this object. Keys are those of an American keyboard, by their numbers in Linux.
class VirtualSeat {
  public:
    static constexpr unsigned control = 29;
    static constexpr unsigned shift = 42;
    static constexpr unsigned super = 125;
    static constexpr unsigned keyA = 30;
    static constexpr unsigned keyS = 31;

    /// The key of one of these letters.
    [[nodiscard]] static unsigned codeOf(QChar letter);

    VirtualSeat() = default;
    VirtualSeat(const VirtualSeat&) = delete;
    VirtualSeat& operator=(const VirtualSeat&) = delete;
    virtual ~VirtualSeat() = default;

    virtual void key(unsigned code, bool isDown) = 0;
    /// In pixels of the screen from its top left.
    virtual void moveTo(QPoint at) = 0;
    virtual void button(bool isDown) = 0;

    /// Presses the keys in order, waits, and releases them in the opposite order.
    void chord(std::initializer_list<unsigned> keys,
               std::chrono::milliseconds hold = std::chrono::milliseconds(0));
    void click(QPoint at);
};

/// The protocols for it that wlroots has. Throws if they are not there.
class WlrootsSeat final : public VirtualSeat {
  public:
    WlrootsSeat(const QString& socket, QSize screen);
    ~WlrootsSeat() override;

    void key(unsigned code, bool isDown) override;
    void moveTo(QPoint at) override;
    void button(bool isDown) override;

  private:
    class Objects;

    std::unique_ptr<Objects> m_objects;
    QSize m_screen;
    unsigned m_modifiers = 0;
};

} // namespace vorq::desktop
