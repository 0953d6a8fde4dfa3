#include "app/desktop/UserLanguage.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace vorq {
namespace {

const QString catalogueFolders = QStringLiteral(VORQ_RESOURCES);

QString discardLabel() {
    return QCoreApplication::translate("HeldCard", "Discard");
}

std::string discardIn(const QStringList& languages) {
    const UserLanguage language(catalogueFolders, languages);
    return discardLabel().toStdString();
}

TEST(UserLanguage, TextsAreInTheLanguageTheUserWants) {
    EXPECT_TRUE(QFileInfo::exists(catalogueFolders + "/translations/vorq_qps.qm"));
    EXPECT_EQ(discardIn({"qps"}).substr(0, 2), "«");
    EXPECT_EQ(discardLabel(), "Discard") << "it ends with its object";
}

TEST(UserLanguage, ARegionWithoutACatalogueHasThatOfItsLanguage) {
    EXPECT_NE(discardIn({"qps-Latn-DE"}), "Discard");
}

TEST(UserLanguage, WhereTheFirstLanguageHasNoCatalogueTheNextOneIsTaken) {
    EXPECT_NE(discardIn({"xx", "qps"}), "Discard");
}

TEST(UserLanguage, EnglishWantsNoCatalogueAndGoesBeforeWhatFollows) {
    EXPECT_EQ(discardIn({"en-GB", "qps"}), "Discard");
    EXPECT_EQ(discardIn({"C", "qps"}), "Discard");
}

TEST(UserLanguage, WithoutACatalogueTextsStayEnglish) {
    EXPECT_EQ(discardIn({"xx"}), "Discard");
    EXPECT_EQ(discardIn({}), "Discard");
}

} // namespace
} // namespace vorq
