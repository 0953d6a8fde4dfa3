#include "capture/source/SourceApplication.h"

#include "capture/source/LinuxApplications.h"

#include <QString>

#include <algorithm>
#include <array>

namespace vorq {
namespace {

// Browsers whose identifier holds none of the words below.
constexpr std::array browsers{
    QLatin1StringView("com.microsoft.edgemac"),
    QLatin1StringView("com.operasoftware.opera"),
    QLatin1StringView("com.vivaldi.vivaldi"),
};

constexpr std::array browserWords{
    QLatin1StringView("chrome"),     QLatin1StringView("firefox"), QLatin1StringView("safari"),
    QLatin1StringView("webkit"),     QLatin1StringView("browser"), QLatin1StringView("webcontent"),
    QLatin1StringView("google"),     QLatin1StringView("kagi"),    QLatin1StringView("ecosia"),
    QLatin1StringView("perplexity"), QLatin1StringView("search"),  QLatin1StringView("chromium"),
};

// Of programs that are no browsers by their identifiers, but show pages.
constexpr std::array pageWords{
    QLatin1StringView("epiphany"), QLatin1StringView("falkon"),      QLatin1StringView("konqueror"),
    QLatin1StringView("midori"),   QLatin1StringView("brave"),       QLatin1StringView("opera"),
    QLatin1StringView("vivaldi"),  QLatin1StringView("edge"),        QLatin1StringView("electron"),
    QLatin1StringView("slack"),    QLatin1StringView("discord"),     QLatin1StringView("signal"),
    QLatin1StringView("teams"),    QLatin1StringView("thunderbird"), QLatin1StringView("evolution"),
};

constexpr std::array wordProcessorWords{
    QLatin1StringView("microsoft.word"),
    QLatin1StringView("iwork.pages"),
};

constexpr std::array savingApplications{
    QLatin1StringView("com.apple.iwork.keynote"),
    QLatin1StringView("com.apple.iwork.numbers"),
    QLatin1StringView("com.apple.textedit"),
    QLatin1StringView("com.apple.dt.xcode"),
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

bool showsWebPages(QStringView bundleID) {
    if (isFinderBundleID(bundleID)) return false;
    return isBrowserBundleID(bundleID) || isLinuxApplication(ApplicationKind::Browser, bundleID) ||
           containsAny(bundleID.toString().toLower(), pageWords);
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
    return isBrowserBundleID(bundleID) || isLinuxApplication(ApplicationKind::Browser, bundleID) ||
           isLinuxApplication(ApplicationKind::WordProcessor, bundleID) ||
           containsAny(bundleID.toString().toLower(), wordProcessorWords);
}

} // namespace vorq
