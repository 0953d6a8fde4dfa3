#include "capture/source/SourceApplication.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

TEST(SourceApplication, KnowsBrowsersByTheirIdentifiers) {
    for (const QStringView id :
         {u"com.apple.safari", u"com.apple.safaritechnologypreview", u"com.apple.Safari.WebApp",
          u"com.apple.webkit.webcontent", u"com.apple.webkit.gpu", u"com.google.chrome",
          u"com.google.chrome.beta", u"com.google.chrome.canary", u"com.brave.browser",
          u"com.microsoft.edgemac", u"company.thebrowser.browser", u"org.mozilla.firefox",
          u"org.mozilla.firefoxdeveloperedition", u"com.operasoftware.opera",
          u"com.vivaldi.vivaldi", u"com.duckduckgo.macos.browser", u"com.kagi.kagimacOS",
          u"ai.perplexity.mac", u"com.perplexity.Perplexity"})
        EXPECT_TRUE(isBrowserBundleID(id)) << id.toUtf8().constData();
}

TEST(SourceApplication, KnowsBrowsersByAWordInTheirIdentifier) {
    for (const QStringView id : {u"Firefox-ESR", u"org.chromium.Chromium", u"org.ecosia.app",
                                 u"my.search.tool", u"WebContent", u"Google"})
        EXPECT_TRUE(isBrowserBundleID(id)) << id.toUtf8().constData();
}

TEST(SourceApplication, TakesNothingElseForABrowser) {
    for (const QStringView id : {u"", u"com.apple.TextEdit", u"com.operasoftware.opera.gx",
                                 u"com.microsoft.edge", u"org.gnome.Evince"})
        EXPECT_FALSE(isBrowserBundleID(id)) << id.toUtf8().constData();
}

TEST(SourceApplication, KnowsWhoSavesByTheNoteHotKey) {
    for (const QStringView id :
         {u"com.apple.iwork.Pages", u"com.apple.iwork.keynote", u"com.apple.iwork.numbers",
          u"com.apple.TextEdit", u"com.microsoft.Word", u"com.apple.dt.Xcode",
          u"com.microsoft.word.beta"})
        EXPECT_TRUE(ownsNativeSaveAs(id)) << id.toUtf8().constData();
    for (const QStringView id : {u"", u"com.microsoft.excel", u"com.apple.textedit.helper"})
        EXPECT_FALSE(ownsNativeSaveAs(id)) << id.toUtf8().constData();
}

TEST(SourceApplication, KnowsTheFileManager) {
    EXPECT_TRUE(isFinderBundleID(u"com.apple.Finder"));
    EXPECT_FALSE(isFinderBundleID(u"com.apple.finder.sync"));
    EXPECT_FALSE(isFinderBundleID(u""));
}

TEST(SourceApplication, SendsTheCopyShortcutToBrowsersAndWordProcessorsOnly) {
    for (const QStringView id : {u"org.mozilla.firefox", u"com.microsoft.Word",
                                 u"com.apple.iWork.Pages", u"eu.iwork.pages.beta"})
        EXPECT_TRUE(isHotKeyCopyFallbackBundleID(id)) << id.toUtf8().constData();
    for (const QStringView id : {u"", u"com.apple.iwork.numbers", u"com.apple.TextEdit"})
        EXPECT_FALSE(isHotKeyCopyFallbackBundleID(id)) << id.toUtf8().constData();
}

} // namespace
} // namespace vorq
