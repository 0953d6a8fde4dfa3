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
    // It copies on Ctrl+C in all of its views, and some that show documents on nothing else.
    Plain,
    // A terminal that copies on Ctrl+Shift+C.
    Terminal,
    // It copies on Ctrl+Insert, and Ctrl+V does not paste.
    InsertAlone,
    // It copies on no chord that is safe, or what it copies is no text or nobody's business.
    None,
    // Nothing is known of it. Nearly all toolkits copy on Ctrl+Insert as well, by which nothing is
    // ended where it is a terminal or has one in its window.
    Unknown,
};

// Desktop-file ids in lower case.
constexpr std::array terminals{
    "alacritty"_L1,
    "app.devsuite.ptyxis"_L1,
    "blackbox"_L1,
    "com.alacritty.alacritty"_L1,
    "com.gexperts.tilix"_L1,
    "com.mitchellh.ghostty"_L1,
    "com.raggesilver.blackbox"_L1,
    "com.raphaelamorim.rio"_L1,
    "contour"_L1,
    "cool-retro-term"_L1,
    "deepin-terminal"_L1,
    "dev.warp.warp"_L1,
    "extraterm"_L1,
    "foot"_L1,
    "gnome-terminal"_L1,
    "gnome-terminal-server"_L1,
    "guake"_L1,
    "hyper"_L1,
    "io.elementary.terminal"_L1,
    "kitty"_L1,
    "konsole"_L1,
    "lxterminal"_L1,
    "mate-terminal"_L1,
    "org.codeberg.dnkl.foot"_L1,
    "org.contourterminal.contour"_L1,
    "org.gnome.console"_L1,
    "org.gnome.ptyxis"_L1,
    "org.gnome.terminal"_L1,
    "org.kde.konsole"_L1,
    "org.kde.yakuake"_L1,
    "org.tabby"_L1,
    "org.wezfurlong.wezterm"_L1,
    "qterminal"_L1,
    "rio"_L1,
    "sakura"_L1,
    "st"_L1,
    "tabby"_L1,
    "terminator"_L1,
    "terminology"_L1,
    "tilda"_L1,
    "tilix"_L1,
    "warp"_L1,
    "waveterm"_L1,
    "xfce4-terminal"_L1,
    "xfce4-terminal-emulator"_L1,
    "yakuake"_L1,
};

// Beside browsers and word processors.
constexpr std::array plainApplications{
    "atril"_L1,
    "evince"_L1,
    "libreoffice-base"_L1,
    "libreoffice-calc"_L1,
    "libreoffice-draw"_L1,
    "libreoffice-impress"_L1,
    "libreoffice-math"_L1,
    "libreoffice-startcenter"_L1,
    "org.gnome.evince"_L1,
    "org.gnome.papers"_L1,
    "org.libreoffice.libreoffice"_L1,
    "org.libreoffice.libreoffice.base"_L1,
    "org.libreoffice.libreoffice.calc"_L1,
    "org.libreoffice.libreoffice.draw"_L1,
    "org.libreoffice.libreoffice.impress"_L1,
    "org.libreoffice.libreoffice.math"_L1,
    "xreader"_L1,
};

// Programs whose keys go to another machine, and such as keep passwords.
constexpr std::array untouchedApplications{
    "com.moonlight_stream.moonlight"_L1,
    "com.onepassword.onepassword"_L1,
    "com.parsecgaming.parsec"_L1,
    "com.teamviewer.teamviewer"_L1,
    "enpass"_L1,
    "gnome-boxes"_L1,
    "gnome-connections"_L1,
    "krdc"_L1,
    "looking-glass-client"_L1,
    "org.gnome.boxes"_L1,
    "org.gnome.connections"_L1,
    "org.gnome.world.secrets"_L1,
    "org.kde.krdc"_L1,
    "seahorse"_L1,
    "org.gnome.seahorse.application"_L1,
    "spicy"_L1,
    "teamviewer"_L1,
    "x2goclient"_L1,
};

// Of programs that have many names, by words of their identifiers.
struct Word {
    QLatin1StringView word;
    Keys keys;
};
constexpr std::array tellingWords{
    Word{"emacs"_L1, Keys::InsertAlone},
    // terminals
    Word{"term"_L1, Keys::None},
    Word{"tty"_L1, Keys::None},
    Word{"rxvt"_L1, Keys::None},
    Word{"konsole"_L1, Keys::None},
    Word{"console"_L1, Keys::None},
    Word{"shell"_L1, Keys::None},
    // where Ctrl+C ends what is being done
    Word{"vim"_L1, Keys::None},
    Word{"neovide"_L1, Keys::None},
    // other machines
    Word{"remmina"_L1, Keys::None},
    Word{"remote"_L1, Keys::None},
    Word{"rustdesk"_L1, Keys::None},
    Word{"anydesk"_L1, Keys::None},
    Word{"freerdp"_L1, Keys::None},
    Word{"vnc"_L1, Keys::None},
    Word{"virt-"_L1, Keys::None},
    Word{"virtualbox"_L1, Keys::None},
    Word{"vmware"_L1, Keys::None},
    Word{"qemu"_L1, Keys::None},
    // passwords
    Word{"password"_L1, Keys::None},
    Word{"keepass"_L1, Keys::None},
    Word{"bitwarden"_L1, Keys::None},
    Word{"kwallet"_L1, Keys::None},
};

bool isNamedIn(QStringView identifier, const auto& ids) {
    return std::ranges::any_of(ids, [&](QLatin1StringView id) { return isNamed(identifier, id); });
}

Keys keysOf(QStringView identifier) {
    if (identifier.isEmpty()) return Keys::None;
    if (isNamedIn(identifier, terminals)) return Keys::Terminal;
    if (isNamedIn(identifier, untouchedApplications) ||
        isLinuxApplication(ApplicationKind::FileManager, identifier))
        return Keys::None;
    if (isNamedIn(identifier, plainApplications) ||
        isLinuxApplication(ApplicationKind::Browser, identifier) ||
        isLinuxApplication(ApplicationKind::WordProcessor, identifier))
        return Keys::Plain;
    const auto word = std::ranges::find_if(tellingWords, [&](const Word& each) {
        return identifier.contains(each.word, Qt::CaseInsensitive);
    });
    return word == tellingWords.end() ? Keys::Unknown : word->keys;
}

} // namespace

std::optional<KeyChord> copyChordOf(QStringView identifier) {
    switch (keysOf(identifier)) {
    case Keys::Plain:
        return KeyChord{.key = KeyChord::Key::C};
    case Keys::Terminal:
        return KeyChord{.key = KeyChord::Key::C, .hasShift = true};
    case Keys::InsertAlone:
    case Keys::Unknown:
        return KeyChord{.key = KeyChord::Key::Insert};
    case Keys::None:
        break;
    }
    return std::nullopt;
}

std::optional<KeyChord> pasteChordOf(QStringView identifier) {
    const Keys keys = keysOf(identifier);
    if (keys != Keys::Plain && keys != Keys::Unknown) return std::nullopt;
    return KeyChord{.key = KeyChord::Key::V};
}

} // namespace vorq
