#include "app/desktop/SettingsDamage.h"
#include "doubles/panel/ConversationFixture.h"
#include "platform/portable/SettingsFile.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString unknownList =
    u"Vorq cannot tell from which applications it must not capture, so it captures "
    "from none. Put the list into the settings again, as "
    "\"vorq.capture.excludedApplications\": []."_s;

class SettingsDamageTest : public ConversationFixture {
  protected:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("settings.json");

    void put(const QByteArray& bytes) const {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QString damage(const QString& instead) const {
        return "Vorq found its settings " + m_path + " damaged and " + instead +
               "; the damaged file is kept.";
    }
    // What the panel says after a start.
    [[nodiscard]] QStringList said(SettingsFile& settings) {
        const SettingsDamage telling(settings, panel());
        QCoreApplication::processEvents();
        advance(30s);
        return texts();
    }
};

TEST_F(SettingsDamageTest, NothingIsSaidOfSettingsThatAreWhole) {
    put("{}");
    SettingsFile settings(m_path);
    EXPECT_THAT(said(settings), IsEmpty());
}

TEST_F(SettingsDamageTest, DamageIsSaidInThePanel) {
    put(R"({"vorq.capture.excludedApplications" : ["org.keepassxc.KeePassXC"], "a" : "1",})");
    SettingsFile settings(m_path);
    EXPECT_THAT(said(settings), ElementsAre(damage("starts with what can be read of them")));
}

TEST_F(SettingsDamageTest, AListThatCannotBeReadIsSaidAtEachStartUntilItStandsThereAgain) {
    put(R"({"vorq.capture.excludedApplications" : ["org.keepassxc.KeePassXC", "a" : "1"})");
    {
        SettingsFile settings(m_path);
        EXPECT_THAT(said(settings),
                    ElementsAre(damage("starts with what can be read of them"), unknownList));
        settings.setString("b", "2");
    }
    panel().clearPanelChat();
    SettingsFile again(m_path);
    EXPECT_EQ(said(again).last(), unknownList);
    again.apply({{"vorq.capture.excludedApplications", QStringList()}});
    panel().clearPanelChat();
    SettingsFile mended(m_path);
    EXPECT_FALSE(said(mended).contains(unknownList));
}

TEST_F(SettingsDamageTest, DamageWhileTheProgramRunsIsSaidOnce) {
    put(R"({"a" : "1"})");
    SettingsFile settings(m_path);
    const SettingsDamage telling(settings, panel());
    put(R"({"a" : )");
    settings.synchronise();
    settings.synchronise();
    QCoreApplication::processEvents();
    advance(30s);
    EXPECT_THAT(texts(), ElementsAre(damage("goes on with those it knows")));
}

} // namespace
} // namespace vorq
