#include "doubles/desktop/MenuProgram.h"
#include "platform/linux/x11/X11Connection.h"

#include <QElapsedTimer>

#include <xcb/xcb.h>

#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace vorq::desktop {
namespace {

constexpr int screenWidth = 1280;
constexpr int screenHeight = 900;
constexpr quint32 irisColor = 0x5b78fb;
constexpr qint64 patience = 4000; // milliseconds

double luminance(quint32 rgb) {
    const auto channel = [rgb](int shift) {
        const double value = static_cast<double>(rgb >> shift & 0xffU) / 255;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(16) + 0.7152 * channel(8) + 0.0722 * channel(0);
}

double ratio(quint32 first, quint32 second) {
    const double one = luminance(first) + 0.05;
    const double other = luminance(second) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

} // namespace

quint32 ScreenPicture::rgb(int x, int y) const {
    const qsizetype at = (static_cast<qsizetype>(y) * m_width + x) * 3;
    if (x < 0 || x >= m_width || at < 0 || at + 2 >= m_pixels.size()) return 0;
    const auto byte = [&](qsizetype index) {
        return static_cast<quint32>(quint8(m_pixels[index]));
    };
    return byte(at) << 16 | byte(at + 1) << 8 | byte(at + 2);
}

quint32 ScreenPicture::ground(const QRect& place) const {
    QMap<quint32, int> counts;
    quint32 most = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x) {
            const quint32 color = rgb(x, y);
            if (++counts[color] > counts.value(most)) most = color;
        }
    return most;
}

double ScreenPicture::contrast(const QRect& place) const {
    const quint32 under = ground(place);
    double strongest = 1;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            strongest = std::max(strongest, ratio(rgb(x, y), under));
    return strongest;
}

QRect ScreenPicture::placeOf(quint32 wanted) const {
    const int height = static_cast<int>(m_pixels.size() / 3 / m_width);
    QRect found;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < m_width; ++x)
            if (rgb(x, y) == wanted) found |= QRect(x, y, 1, 1);
    return found;
}

bool isDark(quint32 rgb) {
    return luminance(rgb) < 0.18;
}

FocusWatch::FocusWatch(AccessibleTree& tree) : m_program(tree.program()) {
    tree.listenFor("object:state-changed:focused")
        .connect(m_program, {}, "org.a11y.atspi.Event.Object", "StateChanged", this,
                 SLOT(stateChanged(QDBusMessage)));
}

void FocusWatch::stateChanged(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    if (arguments.value(0) == "focused" && arguments.value(1).toInt() == 1) m_path = message.path();
}

MenuProgramTest::MenuProgramTest()
    : TrayProgramTest({.hasAccessibilityBus = true, .isAccessibilityOn = true}) {}

MenuProgramTest::~MenuProgramTest() = default;

DesktopProgram& MenuProgramTest::startInTray(const QByteArray& settings,
                                             const QProcessEnvironment& additional) {
    m_session.write(".config/Vorq/settings.json", settings);
    if (m_tray == nullptr) startTray();
    m_vorq = &start({"--background"}, additional);
    waitFor(*m_vorq, "clear-chat hotkey.");
    DesktopSession::waitUntil("the mark in the tray", [this] { return showsColor(iris); });
    m_focus.reset();
    m_tree = std::make_unique<AccessibleTree>(m_vorq->process());
    m_focus = std::make_unique<FocusWatch>(*m_tree);
    return *m_vorq;
}

void MenuProgramTest::startTray() {
    m_tray = &m_session.start("tint2", "tint2");
}

void MenuProgramTest::killTray() {
    m_tray->kill();
    m_tray = nullptr;
    DesktopSession::waitUntil("the tray to go", [this] { return !showsColor(iris); });
}

// The tray may still be moving the glyph, so that a press misses it; then one presses again.
void MenuProgramTest::openMenu(const QString& beginning) {
    m_focus->forget();
    QElapsedTimer pressed;
    DesktopSession::waitUntil("the menu", [&] {
        if (!pressed.isValid() || pressed.hasExpired(patience)) {
            m_session.click(picture().placeOf(irisColor).center());
            pressed.start();
        }
        m_session.key({"Down"});
        return entry(beginning).has_value();
    });
}

void MenuProgramTest::closeMenu() {
    m_session.key({"Escape"});
    DesktopSession::waitUntil("the menu to close", [this] { return !entry("Quit Vorq"); });
}

std::vector<AccessibleNode> MenuProgramTest::menu() const {
    if (m_focus->path().isEmpty()) return {};
    std::vector<AccessibleNode> nodes = m_tree->readSiblings(m_focus->path());
    std::erase_if(nodes, [](const AccessibleNode& node) { return !node.isShowing; });
    return nodes;
}

std::optional<AccessibleNode> MenuProgramTest::entry(const QString& beginning) const {
    for (const AccessibleNode& node : menu())
        if (node.name.startsWith(beginning)) return node;
    return std::nullopt;
}

QStringList MenuProgramTest::entries() const {
    QStringList names;
    for (const AccessibleNode& node : menu())
        names += "[" + node.role + "] " + node.name;
    return names;
}

QRect MenuProgramTest::placeOf(const QString& beginning) const {
    const auto node = entry(beginning);
    if (!node)
        throw std::runtime_error("no entry \"" + beginning.toStdString() + "\" among " +
                                 entries().join(", ").toStdString());
    return m_tree->place(*node);
}

void MenuProgramTest::choose(const QString& beginning) const {
    m_session.click(placeOf(beginning).center());
}

void MenuProgramTest::chooseSubmenu(const QString& beginning, const QString& firstEntry) {
    const QPoint at = placeOf(beginning).center();
    m_focus->forget();
    m_session.click(at);
    DesktopSession::waitUntil("the menu of " + beginning, [&] {
        m_session.key({"Down"});
        return entry(firstEntry).has_value();
    });
}

bool MenuProgramTest::shows(const QString& words) const {
    return std::ranges::any_of(m_tree->read(), [&](const AccessibleNode& node) {
        return node.isShowing && node.name.contains(words);
    });
}

QRect MenuProgramTest::placeOfControl(const QString& name) const {
    QRect at;
    DesktopSession::waitUntil("\"" + name + "\"", [&] {
        for (const AccessibleNode& node : m_tree->read())
            if (node.isShowing && node.name == name) at = m_tree->place(node);
        return !at.isEmpty();
    });
    return at;
}

void MenuProgramTest::press(const QString& name) const {
    m_session.click(placeOfControl(name).center());
}

DesktopSession::Window MenuProgramTest::dialog(int leastWidth) const {
    DesktopSession::Window found = 0;
    DesktopSession::waitUntil("the dialog", [&] {
        for (const DesktopSession::Window window : m_session.windows())
            if (m_session.processOf(window) == m_vorq->process() &&
                m_session.geometry(window).width() >= leastWidth)
                found = window;
        return found != 0;
    });
    m_session.activate(found);
    return found;
}

// Quick enough for what moves.
ScreenPicture MenuProgramTest::picture() const {
    const X11Connection x11;
    const auto cookie = xcb_get_image(x11.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, x11.root(), 0, 0,
                                      screenWidth, screenHeight, ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> shown(
        xcb_get_image_reply(x11.get(), cookie, nullptr), &std::free);
    if (!shown) throw std::runtime_error("no picture of the screen");
    const quint8* from = xcb_get_image_data(shown.get());
    QByteArray pixels(qsizetype{3} * screenWidth * screenHeight, Qt::Uninitialized);
    for (qsizetype pixel = 0; pixel < pixels.size() / 3; ++pixel)
        for (int channel = 0; channel < 3; ++channel)
            pixels[3 * pixel + channel] = static_cast<char>(from[4 * pixel + 2 - channel]);
    return {pixels, screenWidth};
}

ScreenPicture MenuProgramTest::keep(const QString& name) const {
    const QString folder = qEnvironmentVariable("VORQ_SHOTS");
    if (!folder.isEmpty())
        run("import", "imagemagick", {"-window", "root", folder + "/" + name + ".png"},
            m_session.environment());
    return picture();
}

} // namespace vorq::desktop
