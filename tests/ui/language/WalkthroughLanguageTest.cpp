// The walkthrough in a language whose texts are longer: all that it shows and says is translated,
// and there is room for it, for larger text too.

#include "doubles/ui/WalkthroughStage.h"
#include "ui/language/ShownTexts.h"

#include <QAccessible>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

struct WalkthroughState {
    const char* name;
    std::function<void(WalkthroughStage&)> act;
};

void PrintTo(const WalkthroughState& state, std::ostream* out) {
    *out << state.name;
}

void askInVain(WalkthroughStage& stage) {
    stage.walkthrough->openSystemSettings();
    stage.settle();
    stage.clock.advance(Walkthrough::answerLimit);
}

void grantBesideOthers(WalkthroughStage& stage) {
    stage.privacy.programs = {u"1"_s, u"2"_s};
    stage.grant();
}

const std::vector<WalkthroughState>& walkthroughStates() {
    static const std::vector<WalkthroughState> states{
        {"request", [](WalkthroughStage&) {}},
        {"asking", [](WalkthroughStage& s) { s.walkthrough->openSystemSettings(); }},
        {"refused", askInVain},
        {"granted", grantBesideOthers},
        {"granted_alone", [](WalkthroughStage& s) { s.grant(); }},
        {"help", [](WalkthroughStage& s) { s.walkthrough->showHelp(); }},
        {"checks", [](WalkthroughStage& s) { s.walkthrough->showSelfTest(); }},
    };
    return states;
}

class WalkthroughLanguageTest : public testing::TestWithParam<WalkthroughState> {
  protected:
    void show(double textScale = 1) {
        stage.look.setTextScale(textScale);
        stage.show();
        GetParam().act(stage);
        stage.settle(500);
    }

    TestLanguage language;
    WalkthroughStage stage;
};

TEST_P(WalkthroughLanguageTest, AllThatIsShownAndSaidIsTranslated) {
    show();
    const QStringList texts = shownTexts(*stage.window);
    EXPECT_EQ(TestLanguage::foreign(texts), "");
    EXPECT_TRUE(texts.join(' ').contains(u'«'));
}

TEST_P(WalkthroughLanguageTest, NoTextIsCutOff) {
    show();
    EXPECT_EQ(cutTexts(*stage.window), "");
    EXPECT_EQ(overlappingTexts(*stage.window), "");
}

TEST_P(WalkthroughLanguageTest, NoLargerTextIsCutOff) {
    show(1.5);
    EXPECT_EQ(cutTexts(*stage.window), "");
    EXPECT_EQ(overlappingTexts(*stage.window), "");
}

INSTANTIATE_TEST_SUITE_P(, WalkthroughLanguageTest, testing::ValuesIn(walkthroughStates()),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace vorq
