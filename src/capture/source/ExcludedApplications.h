#pragma once

#include <QStringList>
#include <QStringView>

#include <optional>

namespace vorq {

class Defaults;

/// The applications that the user wants never to be captured from. They stand in the settings as a
/// list of identifiers, "org.keepassxc.KeePassXC", with or without ".desktop", in any case, or as
/// one of them. While something else stands there, or the list may have been lost with damaged
/// settings, which is said once, all are excluded: nobody can tell which were meant. Main thread
/// only.
class ExcludedApplications {
  public:
    /// "vorq.capture.excludedApplications"
    static const QString key;

    /// The settings must outlive this object, which reads them anew at each question: a change
    /// counts from the next capture on.
    explicit ExcludedApplications(Defaults& settings) : m_settings(settings) {}

    /// False for an application without an identifier, unless all are excluded.
    [[nodiscard]] bool contains(QStringView identifier) const;

    [[nodiscard]] bool isEmpty() const;

    /// Whether all are excluded because it is not known which are meant.
    [[nodiscard]] bool areUnknown() const { return !entries(); }

  private:
    /// Nothing if it is not known which.
    [[nodiscard]] std::optional<QStringList> entries() const;

    /// Says that all are excluded; true, as they are.
    [[nodiscard]] bool warnOnce() const;

    Defaults& m_settings;
    mutable bool m_hasWarned = false;
};

} // namespace vorq
