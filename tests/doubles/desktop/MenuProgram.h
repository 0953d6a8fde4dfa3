#pragma once

#include "doubles/desktop/AccessibleTree.h"
#include "doubles/desktop/TrayProgram.h"

#include <QDBusMessage>
#include <QMap>
#include <QObject>
#include <QRect>

#include <memory>
#include <optional>

namespace vorq::desktop {

/// A picture of the whole screen.
class ScreenPicture {
  public:
    /// Three bytes a pixel.
    ScreenPicture(QByteArray pixels, int width) : m_pixels(std::move(pixels)), m_width(width) {}

    [[nodiscard]] quint32 rgb(int x, int y) const;

    /// The colour that most of the place has, as 0xRRGGBB.
    [[nodiscard]] quint32 ground(const QRect& place) const;

    /// The strongest contrast of anything in the place with its ground, from 1 to 21.
    [[nodiscard]] double contrast(const QRect& place) const;

    /// Where a colour is; empty if nowhere.
    [[nodiscard]] QRect placeOf(quint32 rgb) const;

  private:
    QByteArray m_pixels;
    int m_width;
};

/// Whether a colour is one that light text stands on.
[[nodiscard]] bool isDark(quint32 rgb);

/// Remembers what in a program had the focus last. What pops up is found by nothing else.
class FocusWatch final : public QObject {
    Q_OBJECT

  public:
    explicit FocusWatch(AccessibleTree& tree);

    [[nodiscard]] const QString& path() const { return m_path; }
    void forget() { m_path.clear(); }

  private slots:
    void stateChanged(const QDBusMessage& message);

  private:
    QString m_program;
    QString m_path;
};

/// The built program in a tray, whose menu is read over the accessibility bus and pressed with the
/// mouse.
class MenuProgramTest : public TrayProgramTest {
  protected:
    MenuProgramTest();
    ~MenuProgramTest() override;

    /// Starts the tray unless it runs, and the program, whose settings are as given, and waits for
    /// both.
    DesktopProgram& startInTray(const QByteArray& settings = "{}",
                                const QProcessEnvironment& additional = {});

    void startTray();
    /// Ends it as a crash would, and waits until the glyph is gone.
    void killTray();

    /// Presses the glyph in the tray and waits for the menu, which has an entry that begins so.
    void openMenu(const QString& beginning = QStringLiteral("Quit Vorq"));
    void closeMenu();

    /// Whether the menu shows an entry whose text begins so.
    [[nodiscard]] std::vector<AccessibleNode> menu() const;
    [[nodiscard]] std::optional<AccessibleNode> entry(const QString& beginning) const;
    [[nodiscard]] QStringList entries() const;
    [[nodiscard]] QRect placeOf(const QString& beginning) const;

    /// Presses an entry with the mouse.
    void choose(const QString& beginning) const;

    /// Presses one that opens a menu of its own, and waits for that.
    void chooseSubmenu(const QString& beginning, const QString& firstEntry);

    /// Whether a window of the program has something of a name with these words.
    [[nodiscard]] bool shows(const QString& words) const;

    /// Where something of this name is in a window of the program, in pixels of the screen. Waits
    /// for it.
    [[nodiscard]] QRect placeOfControl(const QString& name) const;

    /// Presses something of this name in a window of the program, with the mouse. Waits for it.
    void press(const QString& name) const;

    /// The dialog that the program shows, in front; waits for it. The panel is none, and narrower
    /// than what is asked for.
    [[nodiscard]] DesktopSession::Window dialog(int leastWidth = 0) const;

    [[nodiscard]] ScreenPicture picture() const;
    /// The same, also as a PNG in the folder that VORQ_SHOTS names, if it does.
    [[nodiscard]] ScreenPicture keep(const QString& name) const;

  private:
    DesktopProgram* m_vorq = nullptr;
    DesktopProgram* m_tray = nullptr;
    std::unique_ptr<AccessibleTree> m_tree;
    std::unique_ptr<FocusWatch> m_focus;
};

} // namespace vorq::desktop
