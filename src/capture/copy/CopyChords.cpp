#include "capture/copy/CopyChords.h"

#include "capture/source/LinuxApplications.h"

#include <QString>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

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
    Row{"alacritty"_L1, Keys::Terminal},
    Row{"app.devsuite.ptyxis"_L1, Keys::Terminal},
    Row{"blackbox"_L1, Keys::Terminal},
    Row{"com.alacritty.alacritty"_L1, Keys::Terminal},
    Row{"com.gexperts.tilix"_L1, Keys::Terminal},
    Row{"com.mitchellh.ghostty"_L1, Keys::Terminal},
    Row{"com.raggesilver.blackbox"_L1, Keys::Terminal},
    Row{"cool-retro-term"_L1, Keys::Terminal},
    Row{"deepin-terminal"_L1, Keys::Terminal},
    Row{"gnome-terminal"_L1, Keys::Terminal},
    Row{"gnome-terminal-server"_L1, Keys::Terminal},
    Row{"guake"_L1, Keys::Terminal},
    Row{"io.elementary.terminal"_L1, Keys::Terminal},
    Row{"kitty"_L1, Keys::Terminal},
    Row{"konsole"_L1, Keys::Terminal},
    Row{"lxterminal"_L1, Keys::Terminal},
    Row{"mate-terminal"_L1, Keys::Terminal},
    Row{"org.codeberg.dnkl.foot"_L1, Keys::Terminal},
    Row{"foot"_L1, Keys::Terminal},
    Row{"org.gnome.console"_L1, Keys::Terminal},
    Row{"org.gnome.ptyxis"_L1, Keys::Terminal},
    Row{"org.gnome.terminal"_L1, Keys::Terminal},
    Row{"org.kde.konsole"_L1, Keys::Terminal},
    Row{"org.kde.yakuake"_L1, Keys::Terminal},
    Row{"org.wezfurlong.wezterm"_L1, Keys::Terminal},
    Row{"qterminal"_L1, Keys::Terminal},
    Row{"st"_L1, Keys::Terminal},
    Row{"terminator"_L1, Keys::Terminal},
    Row{"terminology"_L1, Keys::Terminal},
    Row{"tilix"_L1, Keys::Terminal},
    Row{"xfce4-terminal"_L1, Keys::Terminal},
    Row{"xfce4-terminal-emulator"_L1, Keys::Terminal},
    Row{"yakuake"_L1, Keys::Terminal},
    Row{"sakura"_L1, Keys::Terminal},
    Row{"putty"_L1, Keys::None},
    Row{"gvim"_L1, Keys::None},
    Row{"nvim-qt"_L1, Keys::None},
    Row{"tilda"_L1, Keys::Terminal},
    Row{"code"_L1, Keys::Insert},
    Row{"code-oss"_L1, Keys::Insert},
    Row{"codium"_L1, Keys::Insert},
    Row{"cursor"_L1, Keys::Insert},
    Row{"com.visualstudio.code"_L1, Keys::Insert},
    Row{"com.vscodium.codium"_L1, Keys::Insert},
    Row{"emacs"_L1, Keys::InsertAlone},
    Row{"geany"_L1, Keys::Insert},
    Row{"org.geany.geany"_L1, Keys::Insert},
    Row{"org.gnome.builder"_L1, Keys::Insert},
    Row{"org.gnu.emacs"_L1, Keys::InsertAlone},
    Row{"kate"_L1, Keys::Insert},
    Row{"org.kde.kate"_L1, Keys::Insert},
    Row{"org.kde.kdevelop"_L1, Keys::Insert},
    Row{"vscodium"_L1, Keys::Insert},
};

// Of programs that are terminals, or show one, by words of their identifiers.
struct Word {
    QLatin1StringView word;
    Keys keys;
};
constexpr std::array terminalWords{
    Word{"jetbrains"_L1, Keys::Insert}, Word{"term"_L1, Keys::None},
    Word{"tty"_L1, Keys::None},         Word{"rxvt"_L1, Keys::None},
    Word{"konsole"_L1, Keys::None},     Word{"console"_L1, Keys::None},
    Word{"shell"_L1, Keys::None},
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
