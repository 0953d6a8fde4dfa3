#pragma once

#include <QDBusConnection>
#include <QRect>
#include <QString>

#include <cstdint>
#include <vector>

namespace vorq::desktop {

/// An element of a program as a screen reader meets it.
struct AccessibleNode {
    QString path;
    QString parent;
    QString role; ///< as the toolkit calls it, "push button"
    QString name;
    bool isFocusable = false;
    bool isFocused = false;
    bool isShowing = false;
    bool isEnabled = false;
    bool isChecked = false;
};

/// Reads the user interface of one program over the accessibility bus of the session.
class AccessibleTree {
  public:
    /// Waits until the program is there.
    explicit AccessibleTree(std::int32_t process);
    AccessibleTree(const AccessibleTree&) = delete;
    AccessibleTree& operator=(const AccessibleTree&) = delete;
    ~AccessibleTree();

    /// All elements, parents before their children. What vanishes meanwhile is left out.
    [[nodiscard]] std::vector<AccessibleNode> read() const;

    /// An element of this path with all elements beside it.
    [[nodiscard]] std::vector<AccessibleNode> readSiblings(const QString& path) const;

    /// An element alone; its parent is not read. One that has vanished has no role.
    [[nodiscard]] AccessibleNode readOne(const QString& path) const;

    /// What the element offers to be read character by character; "" if it offers nothing.
    [[nodiscard]] QString text(const AccessibleNode& node) const;

    /// The line of its text that the caret is in, and the character behind the caret.
    [[nodiscard]] QString lineAtCaret(const QString& path) const;
    [[nodiscard]] QString characterAtCaret(const QString& path) const;

    /// Where the element is, or a character of its text, in pixels of the screen; empty if it does
    /// not say.
    [[nodiscard]] QRect place(const AccessibleNode& node) const;
    [[nodiscard]] QRect placeOfCharacter(const AccessibleNode& node, qsizetype offset) const;

    /// Does what the element does when it is used.
    bool press(const AccessibleNode& node) const;

    /// What the bus calls the program.
    [[nodiscard]] const QString& program() const { return m_program; }

    /// Has the bus tell of events ("object:state-changed:focused"), as signals on the connection.
    [[nodiscard]] QDBusConnection& listenFor(const QString& events);

  private:
    [[nodiscard]] QString textAtCaret(const QString& path, std::uint32_t boundary) const;
    bool seek(std::int32_t process);
    void readBelow(const QString& path, const QString& parent,
                   std::vector<AccessibleNode>& nodes) const;
    [[nodiscard]] QDBusMessage ask(const QString& path, const QString& interface,
                                   const QString& method, const QVariantList& arguments = {}) const;

    QDBusConnection m_bus;
    QString m_program; // its name on the bus
};

} // namespace vorq::desktop
