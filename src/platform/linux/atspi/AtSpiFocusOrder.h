#pragma once

#include <QString>

#include <vector>

namespace vorq {

/// An element on the accessibility bus: who shows it, and under which path.
struct AtSpiRef {
    QString service;
    QString path;

    [[nodiscard]] bool isNull() const {
        return service.isEmpty() || path.isEmpty() || path == u"/org/a11y/atspi/null";
    }
    bool operator==(const AtSpiRef&) const = default;
};

/// Who has, or had last, the focus in each application, as its events tell.
///
/// An application tells of several elements when it gets the focus, and that it lost it when it
/// merely went to the back. So an element that lost it is forgotten only when another one of the
/// same application got it after that element did.
class AtSpiFocusOrder {
  public:
    void gained(const AtSpiRef& element);
    void lost(const AtSpiRef& element);
    /// All of an application that is gone.
    void forget(const QString& service);

    /// The elements of an application that may have the focus, the latest first.
    [[nodiscard]] std::vector<AtSpiRef> candidates(const QString& service) const;

    /// The applications, the one with the latest event first.
    [[nodiscard]] std::vector<QString> services() const;

  private:
    struct Entry {
        AtSpiRef element;
        bool isLost = false;
    };

    // Drops what lost the focus before something else of the same application got it.
    void dropReplaced(const QString& service);

    // The latest last.
    std::vector<Entry> m_entries;
};

} // namespace vorq
