#include "platform/linux/atspi/AtSpiText.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const AtSpiToolkit gtk = atSpiToolkit(u"gtk", u"mousepad");
const AtSpiToolkit qt = atSpiToolkit(u"Qt", u"featherpad");
const AtSpiToolkit gecko = atSpiToolkit(u"Gecko", u"Firefox");

// One unit, two units, one unit.
const QString text = u"a😀b"_s;

TEST(AtSpiText, CountsCharactersForMostToolkits) {
    EXPECT_EQ(utf16Offset(0, text, gtk), 0);
    EXPECT_EQ(utf16Offset(2, text, gtk), 3);
    EXPECT_EQ(utf16Offset(3, text, gtk), 4);
    EXPECT_EQ(toolkitOffset(3, text, gtk), 2);
    EXPECT_EQ(toolkitOffset(4, text, gtk), 3);
}

TEST(AtSpiText, CountsUnitsForSomeToolkits) {
    for (const AtSpiToolkit& toolkit : {qt, gecko, atSpiToolkit(u"gtk", u"soffice")}) {
        EXPECT_EQ(utf16Offset(3, text, toolkit), 3);
        EXPECT_EQ(toolkitOffset(3, text, toolkit), 3);
    }
}

TEST(AtSpiText, StopsAtTheEndOfTheText) {
    EXPECT_EQ(utf16Offset(100, text, gtk), 4);
    EXPECT_EQ(utf16Offset(100, text, qt), 4);
    EXPECT_EQ(toolkitOffset(100, text, gtk), 3);
}

TEST(AtSpiText, TakesTheMiddleOfACharacterForItsBeginning) {
    EXPECT_EQ(toolkitOffset(2, text, gtk), 1);
}

TEST(AtSpiText, TakesAHalfOfACharacterForOne) {
    const QString broken = QString(QChar(0xD83D)) + "b";
    EXPECT_EQ(utf16Offset(1, broken, gtk), 1);
    EXPECT_EQ(toolkitOffset(2, broken, gtk), 2);
}

TEST(AtSpiText, DropsTheMarksOfFirefoxAndNoOthers) {
    const QString marked = u"\uFEFFa😀\uFEFFb\uFEFF"_s;
    EXPECT_EQ(withoutMarks(marked, gecko), u"\uFEFFa😀b\uFEFF"_s);
    EXPECT_EQ(withoutMarks(marked, gtk), marked);
}

TEST(AtSpiText, FindsCharactersBeyondTheBasicPlane) {
    EXPECT_TRUE(hasWideCharacters(text));
    EXPECT_FALSE(hasWideCharacters(u"Gr\u00FC\u00DFe e\u0301 \uFFFC"));
    EXPECT_FALSE(hasWideCharacters(u""));
}

TEST(AtSpiText, KnowsWhichToolkitsDoThingsTheirOwnWay) {
    EXPECT_TRUE(qt.countsInsertedUnits);
    EXPECT_FALSE(gtk.countsInsertedUnits);
    EXPECT_FALSE(atSpiToolkit(u"Chromium", u"Chromium").tellsAllSelections);
    EXPECT_TRUE(gecko.tellsAllSelections);
    EXPECT_TRUE(atSpiToolkit(u"Chromium", u"Chromium").miscountsWideCharacters);
    EXPECT_FALSE(gecko.miscountsWideCharacters);
    EXPECT_TRUE(atSpiToolkit(u"GTK", u"editor").placesInWindow);
    EXPECT_FALSE(gtk.placesInWindow);
    EXPECT_EQ(atSpiToolkit(u"of the future", u""), AtSpiToolkit{});
}

} // namespace
} // namespace vorq
