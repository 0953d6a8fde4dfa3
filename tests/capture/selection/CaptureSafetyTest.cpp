// What is never captured: passwords, and applications that the user has excluded.

#include "doubles/capture/CaptureFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

class PasswordSafety : public CaptureTest {
  protected:
    // As a browser tells it: a selection it denies, though its highlight holds the password.
    void focusPassword() {
        focus().hidesText = true;
        highlight("Tr0ub4dor&3");
        copyShortcut.text = "Tr0ub4dor&3";
        identify("chromium");
    }
    void focusPasswordOnPage() {
        focusPassword();
        accessibility.element("application").text = "elsewhere on the page";
        accessibility.element("application").range = TextRange{.location = 0, .length = 21};
    }
};

TEST_F(PasswordSafety, AFocusedPasswordEndsTheCaptureOfThePanel) {
    focusPassword();
    EXPECT_EQ(hotKey(), "");
    EXPECT_EQ(primary.reads, 0);
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(PasswordSafety, AFocusedPasswordEndsTheCaptureOfANote) {
    focusPasswordOnPage();
    EXPECT_EQ(noteSave(), "");
    EXPECT_EQ(primary.reads, 0);
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(PasswordSafety, AFocusedPasswordEndsTheCaptureOfASelection) {
    focusPasswordOnPage();
    EXPECT_EQ(selection(true).text, "");
    EXPECT_EQ(selection(true).exactText, "");
    EXPECT_EQ(primary.reads, 0);
    EXPECT_EQ(copyShortcut.copies, 0);
    EXPECT_EQ(search.screenshots, 0);
}

TEST_F(PasswordSafety, AnElementThatIsNoPasswordIsReadAsBefore) {
    focus().hidesText = false;
    highlight("a passage");
    EXPECT_EQ(hotKey(), "a passage");
}

// The clock stands still, so only a head start that is over, or an answer, lets PRIMARY be read.
TEST_F(PasswordSafety, ABrowserIsAskedForItsHighlightOnlyAfterAccessibility) {
    accessibility.hangs = true;
    identify("org.kde.falkon");
    highlight("a passage");
    const Running<QString> running = startHotKey();
    waitUntilHanging();
    clock.advance(CaptureBudget::accessibilityLimit - 1ms);
    for (int turn = 0; turn < 20; ++turn)
        Running<QString>::turnOnce();
    EXPECT_EQ(primary.reads, 0);

    clock.advance(1ms);
    EXPECT_EQ(running.result(), "a passage");
    EXPECT_EQ(primary.reads, 1);
}

class CaptureMissTest : public CaptureTest {
  protected:
    [[nodiscard]] Running<CapturedText> start() {
        return Running<CapturedText>(
            captures->panel.captureSelectedTextForHotKey(source, stop.get_token()));
    }
};

TEST_F(CaptureMissTest, TellsWhyThereIsNoText) {
    focus();
    EXPECT_EQ(start().result().miss, CaptureMiss::NothingHighlighted);
    focus().hidesText = true;
    EXPECT_EQ(start().result().miss, CaptureMiss::Password);
    identify("org.xfce.mousepad");
    settings.apply({{"vorq.capture.excludedApplications", QStringList{"org.xfce.mousepad"}}});
    EXPECT_EQ(start().result().miss, CaptureMiss::Excluded);
}

TEST_F(CaptureMissTest, TellsThatTheApplicationDoesNotAnswer) {
    accessibility.hangs = true;
    const Running<CapturedText> running = start();
    waitUntilHanging();
    clock.advance(CaptureBudget::accessibilityLimit);
    EXPECT_EQ(running.result(), CapturedText::none(CaptureMiss::NoAnswer));
}

class SecretSafety : public CaptureTest {
  protected:
    const QString secret = u"kT4vB9nQz2Lm"_s;

    [[nodiscard]] CapturedText captured() {
        return Running<CapturedText>(
                   captures->panel.captureSelectedTextForHotKey(source, stop.get_token()))
            .result();
    }
    [[nodiscard]] CapturedText capturedForNote() {
        return Running<CapturedText>(
                   captures->notes.captureSelectedTextForNoteSave(source, stop.get_token()))
            .result();
    }
};

TEST_F(SecretSafety, AHighlightThatReadsLikeASecretIsHeldBack) {
    highlight(' ' + secret + '\n');
    EXPECT_TRUE(captured().isHeldBack);
    EXPECT_EQ(captured().text, secret);
    EXPECT_TRUE(capturedForNote().isHeldBack);
    EXPECT_TRUE(selection().isHeldBack);
}

TEST_F(SecretSafety, ACopiedTextThatReadsLikeASecretIsHeldBack) {
    identify("chromium");
    copyShortcut.text = secret;
    EXPECT_TRUE(captured().isHeldBack);
    EXPECT_TRUE(capturedForNote().isHeldBack);
    EXPECT_TRUE(selection().isHeldBack);
}

TEST_F(SecretSafety, AnOrdinaryHighlightIsNotHeldBack) {
    highlight("selectedTextRange");
    EXPECT_FALSE(captured().isHeldBack);
    EXPECT_FALSE(capturedForNote().isHeldBack);
    EXPECT_FALSE(selection().isHeldBack);
}

// What an application tells is no password to it.
TEST_F(SecretSafety, WhatAccessibilityTellsIsNotHeldBack) {
    select(secret);
    focus().origin = QPointF(10, 10);
    focus().extent = QSizeF(100, 20);
    EXPECT_EQ(captured(), CapturedText(secret));
    EXPECT_EQ(capturedForNote(), CapturedText(secret));
    EXPECT_EQ(selection().text, secret);
    EXPECT_FALSE(selection().isHeldBack);
}

TEST_F(SecretSafety, BulletsAreHeldBackWhoeverTellsThem) {
    select("••••••••");
    EXPECT_TRUE(captured().isHeldBack);
    EXPECT_TRUE(capturedForNote().isHeldBack);
    accessibility.focusedName.reset();
    highlight("●●●●");
    EXPECT_TRUE(captured().isHeldBack);
}

TEST_F(SecretSafety, ACopyThatIsLongerThanWhatWasToldIsJudged) {
    select("kT4v");
    copyShortcut.text = secret;
    EXPECT_EQ(capturedForNote().text, secret);
    EXPECT_TRUE(capturedForNote().isHeldBack);
}

// As a browser that tells accessibility nothing: its highlight holds passwords, and it copies none.
class UncopiedSafety : public SecretSafety {
  protected:
    UncopiedSafety() { identify("chromium"); }
};

TEST_F(UncopiedSafety, WhatAPageDoesNotCopyIsHeldBackThoughItReadsLikeWords) {
    for (const char* words : {"MyDogRex99", "qwertz", "4111 1111 1111 1111", "correct horse"}) {
        highlight(words);
        EXPECT_TRUE(captured().isHeldBack) << words;
        EXPECT_TRUE(capturedForNote().isHeldBack) << words;
    }
}

TEST_F(UncopiedSafety, WhatAPageCopiesIsNotHeldBack) {
    highlight("photosynthesis");
    copyShortcut.text = "photosynthesis";
    EXPECT_EQ(captured(), CapturedText("photosynthesis"));
    EXPECT_EQ(copyShortcut.copies, 1);
    EXPECT_EQ(capturedForNote(), CapturedText("photosynthesis"));
}

TEST_F(UncopiedSafety, WhatReadsLikeASecretIsNotCopiedToKnowBetter) {
    highlight("Tr0ub4dor&3");
    EXPECT_TRUE(captured().isHeldBack);
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(UncopiedSafety, APassageIsNoPasswordAndNotCopied) {
    const QString passage =
        u"Light becomes sugar in the leaves of plants, which breathe out oxygen."_s;
    for (const QString& text : {passage, u"Two\nlines"_s}) {
        highlight(text);
        EXPECT_FALSE(captured().isHeldBack);
    }
    EXPECT_EQ(copyShortcut.copies, 0);
}

TEST_F(UncopiedSafety, OtherProgramsKeepPasswordsToThemselves) {
    identify("org.kde.kwrite");
    highlight("qwertz");
    EXPECT_FALSE(captured().isHeldBack);
    EXPECT_EQ(copyShortcut.copies, 0);
    EXPECT_FALSE(capturedForNote().isHeldBack);
}

TEST_F(UncopiedSafety, WhereNothingCanBeCopiedLooksAloneDecide) {
    copyShortcut.canCopy = false;
    highlight("photosynthesis");
    EXPECT_FALSE(captured().isHeldBack);
    EXPECT_FALSE(capturedForNote().isHeldBack);
}

class Exclusion : public CaptureTest {
  protected:
    Exclusion() {
        select("selected");
        highlight("highlighted");
        copyShortcut.text = "copied";
        identify("chromium");
    }
    void exclude(const QStringList& identifiers) { writeList(identifiers); }
    void writeList(const QVariant& value) {
        settings.apply({{"vorq.capture.excludedApplications", value}});
    }
    void expectNobodyIsAsked() {
        EXPECT_EQ(hotKey(), "");
        EXPECT_EQ(noteSave(), "");
        EXPECT_EQ(selection(true).text, "");
        EXPECT_EQ(Running<QString>(
                      textOf(captures->panel.captureSelectedTextForHotKey({}, stop.get_token())))
                      .result(),
                  "");
        EXPECT_THAT(accessibility.reads(), IsEmpty());
        EXPECT_EQ(primary.reads, 0);
        EXPECT_EQ(copyShortcut.copies, 0);
        EXPECT_EQ(search.screenshots, 0);
    }
};

TEST_F(Exclusion, AnExcludedApplicationIsAskedByNoRung) {
    exclude({"org.example.other", "chromium"});
    expectNobodyIsAsked();
}

TEST_F(Exclusion, TheCaseOfAnIdentifierDoesNotMatter) {
    exclude({" Org.KeePassXC.KeePassXC "});
    identify("org.keepassxc.KeePassXC");
    expectNobodyIsAsked();
}

TEST_F(Exclusion, AnEntryMayBeTheNameOfTheDesktopFile) {
    exclude({"Chromium.desktop"});
    expectNobodyIsAsked();
}

TEST_F(Exclusion, OtherApplicationsAreReadAsBefore) {
    exclude({"chromium-browser", "chrom", ""});
    EXPECT_EQ(hotKey(), "selected");
}

TEST_F(Exclusion, AnApplicationWithoutIdentifierIsNotExcludedByABlankEntry) {
    exclude({"", ".desktop"});
    identify("");
    EXPECT_EQ(hotKey(), "selected");
}

TEST_F(Exclusion, ASingleIdentifierIsAListOfOne) {
    writeList(u"Chromium"_s);
    expectNobodyIsAsked();
    identify("org.example.other");
    EXPECT_EQ(hotKey(), "selected");
}

TEST_F(Exclusion, WhatIsNoTextInTheListDoesNotUndoTheRest) {
    writeList(QVariantList{7, "chromium", QVariantMap()});
    expectNobodyIsAsked();
    identify("org.example.other");
    EXPECT_EQ(hotKey(), "selected");
}

TEST_F(Exclusion, WhereNobodyCanTellWhatIsMeantNobodyIsAskedAndItIsSaidOnce) {
    testing::internal::CaptureStderr();
    for (const QVariant& value : {QVariant(true), QVariant(7), QVariant(QVariantList{7}),
                                  QVariant(QVariantMap{{"chromium", true}})}) {
        writeList(value);
        expectNobodyIsAsked();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Vorq captures from no application: the setting vorq.capture.excludedApplications "
              "is no list of texts.\n");
    exclude({});
    EXPECT_EQ(hotKey(), "selected");
}

TEST_F(Exclusion, AListThatWasLostWithDamagedSettingsExcludesAllUntilItIsSetAnew) {
    testing::internal::CaptureStderr();
    settings.lost = {"vorq.capture.excludedApplications"};
    expectNobodyIsAsked();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Vorq captures from no application: the setting vorq.capture.excludedApplications "
              "may have been lost with damaged settings.\n");
    exclude({"org.keepassxc.KeePassXC"});
    EXPECT_EQ(hotKey(), "selected");
}

TEST_F(Exclusion, AChangeCountsFromTheNextCaptureOn) {
    EXPECT_EQ(hotKey(), "selected");
    exclude({"chromium"});
    EXPECT_EQ(hotKey(), "");
    settings.remove("vorq.capture.excludedApplications");
    EXPECT_EQ(hotKey(), "selected");
}

TEST_F(Exclusion, WhereTheSourceIsUnknownWhileSomeAreExcludedNobodyIsAsked) {
    exclude({"org.example.other"});
    workspace.bringNoneToFront();
    EXPECT_EQ(
        Running<QString>(textOf(captures->panel.captureSelectedTextForHotKey({}, stop.get_token())))
            .result(),
        "");
    EXPECT_THAT(accessibility.reads(), IsEmpty());
}

} // namespace
} // namespace vorq
