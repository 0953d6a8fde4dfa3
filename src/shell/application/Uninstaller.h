#pragma once

#include <QString>
#include <QStringList>

namespace vorq {

class AppPaths;
class BackendAtLogin;
class Defaults;
class Installation;
class LoginItem;

/// Takes Vorq off the machine, with the user's library, settings and session. Main thread only.
class Uninstaller final {
  public:
    /// All must outlive this object.
    struct Ports {
        LoginItem& loginItem;
        BackendAtLogin& backend;
        const Installation& installation;
        const AppPaths& paths;
        Defaults& defaults;
    };

    explicit Uninstaller(const Ports& ports) : m_ports(ports) {}

    /// The program and the user's data go to the trash where they can; settings, among which is the
    /// session, go for good. Gives what is left for the user to know, a sentence each; a failure of
    /// one is logged and does not keep the others.
    [[nodiscard]] QStringList uninstall() const;

  private:
    void unregisterOpenAtLogin(QStringList& left) const;
    void removeBackend(QStringList& left) const;

    Ports m_ports;
};

} // namespace vorq
