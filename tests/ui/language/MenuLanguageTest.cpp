// The menu of the status item in the language of tests.

#include "doubles/ui/PanelStage.h"
#include "shell/status/StatusMenu.h"
#include "ui/language/ShownTexts.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

class MenuLanguageTest : public testing::Test {
  protected:
    void bind() {
        menu.bindAppState(*stage.state);
        menu.setOffersNotes(true);
        menu.setBackendAtLogin({.isOffered = true});
    }

    static QStringList texts(const QMenu& menu) {
        QStringList list{menu.title()};
        for (const QAction* entry : menu.actions()) {
            list += entry->text();
            if (entry->menu()) list += texts(*entry->menu());
        }
        return list;
    }

    // The texts of the entries that are shown and do not fit.
    static std::string cut(QMenu& menu) {
        menu.resize(menu.sizeHint());
        QStringList list;
        for (QAction* entry : menu.actions()) {
            const int room = menu.actionGeometry(entry).width();
            if (entry->isVisible() &&
                menu.fontMetrics().horizontalAdvance(entry->text().section(u'\t', 0, 0)) > room)
                list += entry->text();
        }
        return list.join(u'\n').toStdString();
    }

    TestLanguage language;
    PanelStage stage;
    StatusMenu menu;
};

TEST_F(MenuLanguageTest, EveryEntryIsTranslated) {
    EXPECT_EQ(TestLanguage::foreign(texts(menu)), "") << "before there is a state";
    stage.defaults.apply({{"vorq.session.email", "1@2.3"}});
    bind();
    stage.state->account().signOut();
    EXPECT_EQ(TestLanguage::foreign(texts(menu)), "");
}

TEST_F(MenuLanguageTest, NoEntryIsCutOff) {
    bind();
    EXPECT_EQ(cut(menu), "");
}

} // namespace
} // namespace vorq
