#pragma once

#include <QStringView>

namespace vorq {

class Defaults;

/// The applications that the user wants never to be captured from. They stand in the settings as a
/// list of identifiers, "org.keepassxc.KeePassXC", with or without ".desktop", in any case. Main
/// thread only.
class ExcludedApplications {
  public:
    /// "vorq.capture.excludedApplications"
    static const QString key;

    /// The settings must outlive this object, which reads them anew at each question: a change
    /// counts from the next capture on.
    explicit ExcludedApplications(Defaults& settings) : m_settings(settings) {}

    /// False for an application without an identifier.
    [[nodiscard]] bool contains(QStringView identifier) const;

    [[nodiscard]] bool isEmpty() const;

  private:
    Defaults& m_settings;
};

} // namespace vorq
