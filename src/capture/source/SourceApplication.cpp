#include "capture/source/SourceApplication.h"

#include "capture/source/LinuxApplications.h"

#include <QString>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Browsers whose identifier holds none of the words below.
constexpr std::array browsers{
    "com.microsoft.edgemac"_L1,
    "com.operasoftware.opera"_L1,
    "com.vivaldi.vivaldi"_L1,
};

constexpr std::array browserWords{
    "chrome"_L1, "firefox"_L1, "safari"_L1, "webkit"_L1,     "browser"_L1, "webcontent"_L1,
    "google"_L1, "kagi"_L1,    "ecosia"_L1, "perplexity"_L1, "search"_L1,  "chromium"_L1,
};

// Of programs that are no browsers by their identifiers, but show pages.
constexpr std::array pageWords{
    "epiphany"_L1, "falkon"_L1,  "konqueror"_L1, "midori"_L1,      "brave"_L1,
    "opera"_L1,    "vivaldi"_L1, "edge"_L1,      "electron"_L1,    "slack"_L1,
    "discord"_L1,  "signal"_L1,  "teams"_L1,     "thunderbird"_L1, "evolution"_L1,
};

constexpr std::array wordProcessorWords{
    "microsoft.word"_L1,
    "iwork.pages"_L1,
};

constexpr std::array savingApplications{
    "com.apple.iwork.keynote"_L1,
    "com.apple.iwork.numbers"_L1,
    "com.apple.textedit"_L1,
    "com.apple.dt.xcode"_L1,
};

constexpr QLatin1StringView fileManager("com.apple.finder");

bool containsAny(const QString& text, const auto& words) {
    return std::ranges::any_of(words, [&](QLatin1StringView word) { return text.contains(word); });
}

bool isAny(const QString& text, const auto& identifiers) {
    return std::ranges::find(identifiers, text) != identifiers.end();
}

} // namespace

bool isBrowserBundleID(QStringView bundleID) {
    const QString lowerCase = bundleID.toString().toLower();
    return isAny(lowerCase, browsers) || containsAny(lowerCase, browserWords);
}

bool isAnyBrowser(QStringView bundleID) {
    return isBrowserBundleID(bundleID) || isLinuxApplication(ApplicationKind::Browser, bundleID);
}

bool showsWebPages(QStringView bundleID) {
    if (isFinderBundleID(bundleID)) return false;
    return isAnyBrowser(bundleID) || containsAny(bundleID.toString().toLower(), pageWords);
}

bool ownsNativeSaveAs(QStringView bundleID) {
    const QString lowerCase = bundleID.toString().toLower();
    return isAny(lowerCase, savingApplications) || containsAny(lowerCase, wordProcessorWords);
}

bool isFinderBundleID(QStringView bundleID) {
    return bundleID.toString().toLower() == fileManager ||
           isLinuxApplication(ApplicationKind::FileManager, bundleID);
}

bool isHotKeyCopyFallbackBundleID(QStringView bundleID) {
    // Some file managers are browsers by their names.
    if (isFinderBundleID(bundleID)) return false;
    return isAnyBrowser(bundleID) || isLinuxApplication(ApplicationKind::WordProcessor, bundleID) ||
           containsAny(bundleID.toString().toLower(), wordProcessorWords);
}

} // namespace vorq
