// The built program in a session of another language, with its catalogue where an installation has
// it: in a folder beside that of the program.

#include "doubles/desktop/MenuProgram.h"

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

using testing::IsEmpty;

class ProgramLanguageTest : public MenuProgramTest {
  protected:
    void startIn(const QString& languages) {
        QProcessEnvironment environment;
        environment.insert("LANGUAGE", languages);
        startInTray("{}", environment);
    }
    [[nodiscard]] QStringList english() const {
        QStringList texts;
        for (const AccessibleNode& node : menu())
            if (!node.name.isEmpty() && !node.name.startsWith(u'«')) texts += node.name;
        return texts;
    }
};

TEST_F(ProgramLanguageTest, TheMenuIsInTheLanguageOfTheSession) {
    startIn("qps");
    openMenu("«Qüüüîît");
    EXPECT_THAT(english(), IsEmpty());
}

TEST_F(ProgramLanguageTest, WithoutACatalogueOfThatLanguageItIsEnglish) {
    startIn("xx");
    openMenu();
    EXPECT_TRUE(english().contains("Sign out") || english().contains("Not signed in"));
}

} // namespace
} // namespace vorq::desktop
