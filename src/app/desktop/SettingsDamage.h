#pragma once

namespace vorq {

class Defaults;
class PanelConversation;

/// Tells the user in the panel that the settings were found damaged, and that therefore nothing is
/// captured, if it is so. Main thread only.
class SettingsDamage {
  public:
    /// Both must outlive this object. What is known already is said at once.
    SettingsDamage(Defaults& settings, PanelConversation& panel);
    SettingsDamage(const SettingsDamage&) = delete;
    SettingsDamage& operator=(const SettingsDamage&) = delete;
    ~SettingsDamage();

  private:
    Defaults& m_settings;
};

} // namespace vorq
