#pragma once

#include "shell/look/StatusGlyphs.h"
#include "shell/status/StatusBounce.h"
#include "shell/status/StatusFlash.h"
#include "shell/status/StatusItem.h"
#include "shell/status/StatusMenu.h"
#include "shell/status/StatusMenuAttentionChime.h"

#include <QIcon>
#include <QSystemTrayIcon>

#include <memory>

namespace vorq {

class TrayHost;

/// The status item in the system's tray. Where there is no tray it waits for one; its menu opens
/// all the same. Needs a QApplication.
class TrayStatusItem final : public StatusItem {
  public:
    /// Both must outlive this object.
    TrayStatusItem(Clock& clock, TrayHost& host, QObject* parent = nullptr);
    ~TrayStatusItem() override;

    void installStatusItem() override;
    void bindAppState(VorqAppState& state) override { m_menu.bindAppState(state); }
    void setHotKeyNotices(const QStringList& notices) override;
    void setHotKeys(const std::set<HotKeyAction>& registered) override {
        m_menu.setHotKeys(registered);
    }
    void setOffersNotes(bool offersNotes) override { m_menu.setOffersNotes(offersNotes); }
    void setNoteAdvice(const NoteAdvice& advice) override { m_menu.setNoteAdvice(advice); }
    void setBackendAtLogin(const BackendAtLoginEntry& entry) override {
        m_menu.setBackendAtLogin(entry);
    }
    void setWatchStatus(const QString& status) override { m_menu.setWatchStatus(status); }
    void setSessionLimits(const QStringList& reasons) override { m_menu.setSessionLimits(reasons); }
    [[nodiscard]] bool isInTray() const override;
    void openMenu() override;
    void flashStatusImage(StatusImage image) override;
    void startAttention() override { m_attention.start(attentionForm()); }
    void stopAttention() override { m_attention.stop(); }
    [[nodiscard]] bool isCallingForAttention() const override { return m_attention.isRunning(); }
    void chimeSignIn() override;
    void setReducesMotion(bool reducesMotion) override;

  private:
    /// Whether the glyph has a place of its own on the screen that is known.
    [[nodiscard]] bool hasPlace() const;
    void tellOfChoicesIn(const QMenu& menu);
    [[nodiscard]] AttentionForm attentionForm() const;
    void show(const StatusFrame& frame);
    void enterTray();
    void makeIcon();

    TrayHost& m_host;
    StatusMenu m_menu;
    StatusMenuAttentionChime m_chime;
    QIcon m_image;
    std::unique_ptr<QSystemTrayIcon> m_icon; // null until the first tray comes
    StatusFlash m_flash;
    StatusBounce m_attention;
    StatusBounce m_pulse; // beside the chime, where the glyph is not beside the menu
    bool m_reducesMotion = false;
};

} // namespace vorq
