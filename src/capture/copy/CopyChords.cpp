#include "capture/copy/CopyChords.h"

#include "capture/source/LinuxApplications.h"

#include <QString>

#include <algorithm>
#include <array>

namespace vorq {
namespace {

// How an application takes keys that are not its own.
enum class Keys {
    // A terminal that copies on Ctrl+Shift+C.
    Terminal,
    // It copies on no chord that is safe.
    None,
    // Ctrl+C means something else in some of its views, where Ctrl+Insert copies or does nothing.
    Insert,
    // The same, and Ctrl+V does not paste.
    InsertAlone,
};

struct Row {
    QLatin1StringView id; // a desktop-file id in lower case
    Keys keys;
};

constexpr std::array chordRows{
    Row{QLatin1StringView("alacritty"), Keys::Terminal},
    Row{QLatin1StringView("app.devsuite.ptyxis"), Keys::Terminal},
    Row{QLatin1StringView("blackbox"), Keys::Terminal},
    Row{QLatin1StringView("com.alacritty.alacritty"), Keys::Terminal},
    Row{QLatin1StringView("com.gexperts.tilix"), Keys::Terminal},
    Row{QLatin1StringView("com.mitchellh.ghostty"), Keys::Terminal},
    Row{QLatin1StringView("com.raggesilver.blackbox"), Keys::Terminal},
    Row{QLatin1StringView("cool-retro-term"), Keys::Terminal},
    Row{QLatin1StringView("deepin-terminal"), Keys::Terminal},
    Row{QLatin1StringView("gnome-terminal"), Keys::Terminal},
    Row{QLatin1StringView("gnome-terminal-server"), Keys::Terminal},
    Row{QLatin1StringView("guake"), Keys::Terminal},
    Row{QLatin1StringView("io.elementary.terminal"), Keys::Terminal},
    Row{QLatin1StringView("kitty"), Keys::Terminal},
    Row{QLatin1StringView("konsole"), Keys::Terminal},
    Row{QLatin1StringView("lxterminal"), Keys::Terminal},
    Row{QLatin1StringView("mate-terminal"), Keys::Terminal},
    Row{QLatin1StringView("org.codeberg.dnkl.foot"), Keys::Terminal},
    Row{QLatin1StringView("foot"), Keys::Terminal},
    Row{QLatin1StringView("org.gnome.console"), Keys::Terminal},
    Row{QLatin1StringView("org.gnome.ptyxis"), Keys::Terminal},
    Row{QLatin1StringView("org.gnome.terminal"), Keys::Terminal},
    Row{QLatin1StringView("org.kde.konsole"), Keys::Terminal},
    Row{QLatin1StringView("org.kde.yakuake"), Keys::Terminal},
    Row{QLatin1StringView("org.wezfurlong.wezterm"), Keys::Terminal},
    Row{QLatin1StringView("qterminal"), Keys::Terminal},
    Row{QLatin1StringView("st"), Keys::Terminal},
    Row{QLatin1StringView("terminator"), Keys::Terminal},
    Row{QLatin1StringView("terminology"), Keys::Terminal},
    Row{QLatin1StringView("tilix"), Keys::Terminal},
    Row{QLatin1StringView("xfce4-terminal"), Keys::Terminal},
    Row{QLatin1StringView("xfce4-terminal-emulator"), Keys::Terminal},
    Row{QLatin1StringView("yakuake"), Keys::Terminal},
    Row{QLatin1StringView("sakura"), Keys::Terminal},
    Row{QLatin1StringView("putty"), Keys::None},
    Row{QLatin1StringView("gvim"), Keys::None},
    Row{QLatin1StringView("nvim-qt"), Keys::None},
    Row{QLatin1StringView("tilda"), Keys::Terminal},
    Row{QLatin1StringView("code"), Keys::Insert},
    Row{QLatin1StringView("code-oss"), Keys::Insert},
    Row{QLatin1StringView("codium"), Keys::Insert},
    Row{QLatin1StringView("cursor"), Keys::Insert},
    Row{QLatin1StringView("com.visualstudio.code"), Keys::Insert},
    Row{QLatin1StringView("com.vscodium.codium"), Keys::Insert},
    Row{QLatin1StringView("emacs"), Keys::InsertAlone},
    Row{QLatin1StringView("geany"), Keys::Insert},
    Row{QLatin1StringView("org.geany.geany"), Keys::Insert},
    Row{QLatin1StringView("org.gnome.builder"), Keys::Insert},
    Row{QLatin1StringView("org.gnu.emacs"), Keys::InsertAlone},
    Row{QLatin1StringView("kate"), Keys::Insert},
    Row{QLatin1StringView("org.kde.kate"), Keys::Insert},
    Row{QLatin1StringView("org.kde.kdevelop"), Keys::Insert},
    Row{QLatin1StringView("vscodium"), Keys::Insert},
};

// Of programs that are terminals, or show one, by words of their identifiers.
struct Word {
    QLatin1StringView word;
    Keys keys;
};
constexpr std::array terminalWords{
    Word{QLatin1StringView("jetbrains"), Keys::Insert},
    Word{QLatin1StringView("term"), Keys::None},
    Word{QLatin1StringView("tty"), Keys::None},
    Word{QLatin1StringView("rxvt"), Keys::None},
    Word{QLatin1StringView("konsole"), Keys::None},
    Word{QLatin1StringView("console"), Keys::None},
    Word{QLatin1StringView("shell"), Keys::None},
};

// Nothing for the keys that most applications take.
std::optional<Keys> keysOf(QStringView identifier) {
    if (identifier.isEmpty()) return Keys::None;
    const auto row = std::ranges::find_if(
        chordRows, [&](const Row& each) { return isNamed(identifier, each.id); });
    if (row != chordRows.end()) return row->keys;
    const auto word = std::ranges::find_if(terminalWords, [&](const Word& each) {
        return identifier.contains(each.word, Qt::CaseInsensitive);
    });
    return word == terminalWords.end() ? std::nullopt : std::optional(word->keys);
}

} // namespace

std::optional<KeyChord> copyChordOf(QStringView identifier) {
    const std::optional<Keys> keys = keysOf(identifier);
    if (!keys) return KeyChord{.key = KeyChord::Key::C};
    switch (*keys) {
    case Keys::Terminal:
        return KeyChord{.key = KeyChord::Key::C, .hasShift = true};
    case Keys::Insert:
    case Keys::InsertAlone:
        return KeyChord{.key = KeyChord::Key::Insert};
    case Keys::None:
        break;
    }
    return std::nullopt;
}

std::optional<KeyChord> pasteChordOf(QStringView identifier) {
    const std::optional<Keys> keys = keysOf(identifier);
    if (keys && keys != Keys::Insert) return std::nullopt;
    return KeyChord{.key = KeyChord::Key::V};
}

} // namespace vorq
