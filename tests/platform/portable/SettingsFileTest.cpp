#include "platform/portable/SettingsFile.h"
#include "doubles/async/ForkAlone.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class SettingsFileTest : public testing::Test {
  protected:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("Vorq/settings.json");

    void put(const QByteArray& bytes) const {
        QDir().mkpath(m_folder.filePath("Vorq"));
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    // A file with a secret, which was written so long ago.
    void leave(const QString& name, std::chrono::minutes age) const {
        QFile file(m_folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"({"vorq.session.token" : "secret"})");
        const qint64 seconds = std::chrono::seconds(age).count();
        file.flush();
        file.setFileTime(QDateTime::currentDateTime().addSecs(-seconds),
                         QFile::FileModificationTime);
    }
    [[nodiscard]] QStringList all() const {
        return QDir(m_folder.filePath("Vorq")).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    [[nodiscard]] QStringList entries() const {
        return QDir(m_folder.filePath("Vorq")).entryList(QDir::Files, QDir::Name);
    }

    // The user's settings in a folder that is read-only while the work runs. Root may write
    // anywhere, so it becomes somebody else for this.
    static bool holdsInReadOnlyFolder(const QString& folder, const std::function<bool()>& work) {
        constexpr uid_t somebodyElse = 65534;
        for (const QString& name : QDir(folder).entryList(QDir::Files))
            if (::geteuid() == 0)
                EXPECT_EQ(::chown(qPrintable(folder + '/' + name), somebodyElse, somebodyElse), 0);
        ::chmod(qPrintable(QFileInfo(folder).absolutePath()), 0755);
        ::chmod(qPrintable(folder), 0555);
        const pid_t child = forkAlone();
        if (child == 0) {
            if (::geteuid() == 0 && (::setgid(somebodyElse) != 0 || ::setuid(somebodyElse) != 0))
                ::_exit(2);
            ::_exit(work() ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        ::chmod(qPrintable(folder), 0755);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    [[nodiscard]] static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
};

TEST_F(SettingsFileTest, MissingFileReadsAsEmpty) {
    const SettingsFile settings(m_path);
    EXPECT_FALSE(settings.contains("vorq.session.token"));
    EXPECT_EQ(settings.string("vorq.session.token"), std::nullopt);
    EXPECT_FALSE(QFile::exists(m_path)) << "reading creates nothing";
}

TEST_F(SettingsFileTest, AppliesOnlyWhileTheKeyIsAsItWasExpected) {
    SettingsFile one(m_path);
    SettingsFile other(m_path);
    one.setString("vorq.session.token", "t1");
    EXPECT_TRUE(other.applyIf("vorq.session.token", "t1", {{"vorq.session.token", "t2"}}))
        << "as another program has stored it";
    EXPECT_FALSE(one.applyIf("vorq.session.token", "t1", {{"vorq.session.token", "t3"}}));
    EXPECT_EQ(one.string("vorq.session.token"), QString("t2"));
    EXPECT_EQ(SettingsFile(m_path).string("vorq.session.token"), QString("t2"));
    EXPECT_TRUE(one.applyIf("vorq.session.email", "", {{"vorq.session.token", {}}}))
        << "a missing key counts as empty";
    EXPECT_FALSE(SettingsFile(m_path).contains("vorq.session.token"));
}

TEST_F(SettingsFileTest, KeepsValuesAcrossObjects) {
    {
        SettingsFile settings(m_path);
        settings.setString("vorq.session.firstName", u"Åda \"quoted\" 👋"_s);
        settings.setBoolean("vorq.preferredAIModelUserChosen", true);
        settings.setString("vorq.preferredAIModel", QString());
    }
    const SettingsFile settings(m_path);
    EXPECT_EQ(settings.string("vorq.session.firstName"), u"Åda \"quoted\" 👋"_s);
    EXPECT_EQ(settings.boolean("vorq.preferredAIModelUserChosen"), true);
    EXPECT_EQ(settings.string("vorq.preferredAIModel"), QString(""));
}

TEST_F(SettingsFileTest, RemovesKeys) {
    SettingsFile settings(m_path);
    settings.setString("vorq.panelBlockHex", "#ffffff");
    settings.remove("vorq.panelBlockHex");
    EXPECT_FALSE(settings.contains("vorq.panelBlockHex"));
    EXPECT_FALSE(SettingsFile(m_path).contains("vorq.panelBlockHex"));
}

TEST_F(SettingsFileTest, ValueOfAnotherTypeReadsAsNothing) {
    SettingsFile settings(m_path);
    settings.setBoolean("flag", true);
    EXPECT_EQ(settings.string("flag"), std::nullopt);
}

TEST_F(SettingsFileTest, IsReadableByItsOwnerAlone) {
    SettingsFile settings(m_path);
    settings.setString("vorq.session.token", "secret");
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                        QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(m_path) & others);
    EXPECT_TRUE(QFile::permissions(m_path) & QFile::ReadOwner);
}

TEST_F(SettingsFileTest, TwoWritersKeepEachOthersKeys) {
    SettingsFile first(m_path), second(m_path);
    first.setString("a", "1");
    second.setString("b", "2");
    first.setString("c", "3");
    const SettingsFile settings(m_path);
    EXPECT_EQ(settings.string("a"), "1");
    EXPECT_EQ(settings.string("b"), "2");
    EXPECT_EQ(settings.string("c"), "3");
}

TEST_F(SettingsFileTest, SynchroniseTakesInWhatAnotherWrote) {
    SettingsFile first(m_path), second(m_path);
    second.setString("token", "new");
    first.synchronise();
    EXPECT_EQ(first.string("token"), "new");
}

TEST_F(SettingsFileTest, DamagedFileStartsWithDefaultsAndSaysSoOnce) {
    put("{\"vorq.session.token\" : \"abc");
    testing::internal::CaptureStderr();
    SettingsFile settings(m_path);
    settings.synchronise();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(settings.string("vorq.session.token"), std::nullopt);
    EXPECT_NE(said.find("damaged"), std::string::npos);
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1);
}

TEST_F(SettingsFileTest, DamagedFileIsUntouchedUntilAWriteAndThenKeptBeside) {
    const QByteArray damaged = "{\"vorq.session.token\" : \"abc";
    put(damaged);
    testing::internal::CaptureStderr();
    SettingsFile settings(m_path);
    EXPECT_EQ(contentOf(m_path), damaged);
    settings.setString("a", "1");
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(contentOf(m_path + ".damaged-1"), damaged);
    EXPECT_EQ(SettingsFile(m_path).string("a"), "1");
    settings.setString("b", "2");
    EXPECT_EQ(entries(), QStringList({"settings.json", "settings.json.damaged-1"}));
}

// As after a slip of the hand in an editor.
TEST_F(SettingsFileTest, WhatCanBeReadOfADamagedFileIsKept) {
    put(R"({"ids" : ["a \"}\" b", "ö"], "truth" : true,, "big" : {"in" : "ner"}, "cut" : ["x", )"
        R"("last" : "1",})");
    testing::internal::CaptureStderr();
    SettingsFile settings(m_path);
    EXPECT_EQ(settings.strings("ids"), QStringList({"a \"}\" b", "ö"}));
    EXPECT_EQ(settings.boolean("truth"), true);
    EXPECT_EQ(settings.string("last"), "1");
    EXPECT_FALSE(settings.contains("cut"));
    EXPECT_FALSE(settings.contains("in"));
    settings.setString("a", "1");
    testing::internal::GetCapturedStderr();
    const SettingsFile again(m_path);
    EXPECT_EQ(again.strings("ids"), QStringList({"a \"}\" b", "ö"}));
    EXPECT_EQ(again.string("last"), "1");
    EXPECT_TRUE(again.contains("big"));
}

TEST_F(SettingsFileTest, WhatADamagedFileMayHaveHeldStaysUnknownUntilItIsSetAnew) {
    put(R"({"ids" : ["a", "b" "truth" : true})");
    testing::internal::CaptureStderr();
    SettingsFile settings(m_path);
    EXPECT_TRUE(settings.mayHaveLost("ids"));
    EXPECT_FALSE(settings.mayHaveLost("truth")) << "it is there";
    EXPECT_FALSE(settings.mayHaveLost("never.set"));
    settings.setString("a", "1");
    EXPECT_TRUE(settings.mayHaveLost("ids"));
    EXPECT_TRUE(SettingsFile(m_path).mayHaveLost("ids")) << "in the next program as well";
    settings.apply({{"ids", QStringList()}});
    EXPECT_FALSE(settings.mayHaveLost("ids"));
    EXPECT_FALSE(SettingsFile(m_path).mayHaveLost("ids"));
    testing::internal::GetCapturedStderr();
}

TEST_F(SettingsFileTest, AFileThatWasCutMayHaveHeldAnything) {
    for (const char* bytes : {"", "{\"a\":\"1\",", "\0\0\0"}) {
        put(bytes);
        testing::internal::CaptureStderr();
        EXPECT_TRUE(SettingsFile(m_path).mayHaveLost("ids")) << bytes;
        testing::internal::GetCapturedStderr();
    }
    put("{}");
    EXPECT_FALSE(SettingsFile(m_path).mayHaveLost("ids"));
}

TEST_F(SettingsFileTest, WhatWasReadWholeBeforeIsNotLostByLaterDamage) {
    put(R"({"a" : "1"})");
    SettingsFile settings(m_path);
    testing::internal::CaptureStderr();
    put(R"({"a" : )");
    settings.synchronise();
    EXPECT_FALSE(settings.mayHaveLost("ids"));
    EXPECT_EQ(settings.string("a"), "1");
    settings.setString("b", "2");
    EXPECT_FALSE(SettingsFile(m_path).mayHaveLost("ids"));
    testing::internal::GetCapturedStderr();
}

TEST_F(SettingsFileTest, WhereItCannotBeReadAnythingMayBeLost) {
    QDir().mkpath(m_path);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(SettingsFile(m_path).mayHaveLost("ids"));
    testing::internal::GetCapturedStderr();
}

// As by an editor that is interrupted while the program runs.
TEST_F(SettingsFileTest, WhatWasReadBeforeOutlivesADamagedFile) {
    put(R"({"vorq.session.token" : "abc", "list" : [1]})");
    testing::internal::CaptureStderr();
    SettingsFile settings(m_path);
    put(R"({"vorq.session.token" : "abc", )");
    settings.synchronise();
    EXPECT_EQ(settings.string("vorq.session.token"), "abc");
    settings.setString("a", "1");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("goes on"), std::string::npos);
    EXPECT_EQ(SettingsFile(m_path).string("vorq.session.token"), "abc");
    EXPECT_EQ(SettingsFile(m_path).string("a"), "1");
    EXPECT_TRUE(contentOf(m_path).contains("list"));
    EXPECT_EQ(entries(), QStringList({"settings.json", "settings.json.damaged-1"}));
}

TEST_F(SettingsFileTest, WhatWasReadBeforeOutlivesAFileThatCannotBeRead) {
    put(R"({"vorq.session.token" : "abc"})");
    testing::internal::CaptureStderr();
    SettingsFile settings(m_path);
    QFile::remove(m_path);
    QDir().mkpath(m_path);
    settings.setString("a", "1");
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(settings.string("vorq.session.token"), "abc");
    EXPECT_EQ(settings.string("a"), "1");
}

TEST_F(SettingsFileTest, AFileThatWasRemovedIsForgotten) {
    put(R"({"vorq.session.token" : "abc"})");
    SettingsFile settings(m_path);
    QFile::remove(m_path);
    settings.synchronise();
    EXPECT_FALSE(settings.contains("vorq.session.token"));
}

TEST_F(SettingsFileTest, AByteOrderMarkBeforeItIsNoDamage) {
    put("\xef\xbb\xbf{\"a\":\"1\"}");
    EXPECT_EQ(SettingsFile(m_path).string("a"), "1");
}

TEST_F(SettingsFileTest, FileOfTheWrongShapeCountsAsDamaged) {
    for (const char* bytes : {"[]", "7", "", "{\"a\":\"\xff\"}"}) {
        put(bytes);
        testing::internal::CaptureStderr();
        const SettingsFile settings(m_path);
        EXPECT_NE(testing::internal::GetCapturedStderr().find("damaged"), std::string::npos)
            << bytes;
    }
}

TEST_F(SettingsFileTest, MembersOfOtherKindsAreNoTextAndStay) {
    put(R"({"a":"1","list":["x",{"y":null}],"none":null,"big":18446744073709551615})");
    testing::internal::CaptureStderr();
    SettingsFile settings(m_path);
    EXPECT_EQ(settings.string("a"), "1");
    EXPECT_FALSE(settings.string("list"));
    settings.setString("b", "2");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(QJsonDocument::fromJson(contentOf(m_path)).object().value("list"),
              QJsonDocument::fromJson(R"(["x",{"y":null}])").array());
    EXPECT_TRUE(contentOf(m_path).contains("18446744073709551615"));
    settings.setString("list", "now a text");
    EXPECT_EQ(SettingsFile(m_path).string("list"), "now a text");
}

TEST_F(SettingsFileTest, AListOfStringsIsReadAndKept) {
    put(R"({"ids":["Größe","b"],"none":[],"one":"x","mixed":["a",1,["b"],null]})");
    SettingsFile settings(m_path);
    EXPECT_EQ(settings.strings("ids"), QStringList({"Größe", "b"}));
    EXPECT_EQ(settings.strings("none"), QStringList());
    EXPECT_EQ(settings.strings("missing"), QStringList());
    EXPECT_EQ(settings.strings("one"), QStringList("x"));
    EXPECT_EQ(settings.strings("mixed"), QStringList("a"));
    settings.apply({{"more", QStringList({"c"})}});
    const SettingsFile again(m_path);
    EXPECT_EQ(again.strings("ids"), QStringList({"Größe", "b"}));
    EXPECT_EQ(again.strings("more"), QStringList({"c"}));
    EXPECT_EQ(QJsonDocument::fromJson(contentOf(m_path)).object().value("mixed"),
              QJsonDocument::fromJson(R"(["a",1,["b"],null])").array());
}

TEST_F(SettingsFileTest, WhatHoldsNoStringIsAListOfNone) {
    put(R"({"truth":true,"none":null,"object":{"a":"b"},"numbers":[1],"deep":[["a"]]})");
    const SettingsFile settings(m_path);
    for (const char* key : {"truth", "none", "object", "numbers", "deep"}) {
        EXPECT_EQ(settings.strings(key), QStringList()) << key;
        EXPECT_TRUE(settings.contains(key)) << key;
        EXPECT_FALSE(settings.string(key)) << key;
    }
}

TEST_F(SettingsFileTest, TwoProcessesKeepEachOthersKeys) {
    constexpr int keys = 40;
    const auto writeAll = [this](const QString& prefix) {
        SettingsFile settings(m_path);
        for (int i = 0; i < keys; ++i)
            settings.setString(prefix + QString::number(i), "x");
    };
    const pid_t child = forkAlone();
    ASSERT_GE(child, 0);
    if (child == 0) {
        writeAll("child");
        ::_exit(0);
    }
    writeAll("parent");
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    const SettingsFile settings(m_path);
    for (int i = 0; i < keys; ++i) {
        EXPECT_TRUE(settings.contains("child" + QString::number(i))) << i;
        EXPECT_TRUE(settings.contains("parent" + QString::number(i))) << i;
    }
}

TEST_F(SettingsFileTest, AFolderInItsPlaceIsNeverOverwritten) {
    QDir().mkpath(m_path);
    testing::internal::CaptureStderr();
    SettingsFile settings(m_path);
    settings.setString("a", "1");
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(settings.string("a"), "1");
    EXPECT_TRUE(QDir(m_path).exists());
}

TEST_F(SettingsFileTest, UnwritablePlaceKeepsChangesInMemoryAndSaysSoOnce) {
    put("{}");
    // A file stands where the folder would have to be.
    testing::internal::CaptureStderr();
    SettingsFile settings(m_path + "/below/settings.json");
    settings.setString("a", "1");
    settings.setString("b", "2");
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(settings.string("a"), "1");
    EXPECT_EQ(settings.string("b"), "2");
    EXPECT_NE(said.find("cannot write"), std::string::npos);
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1);
}

TEST_F(SettingsFileTest, UnwrittenChangesAreWrittenWithTheNextOneThatCanBe) {
    const QString folder = m_folder.filePath("later");
    {
        QFile blocker(folder);
        ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    }
    testing::internal::CaptureStderr();
    SettingsFile settings(folder + "/settings.json");
    settings.setString("a", "1");
    testing::internal::GetCapturedStderr();
    QFile::remove(folder);
    settings.setString("b", "2");
    EXPECT_EQ(SettingsFile(folder + "/settings.json").string("a"), "1");
}

TEST_F(SettingsFileTest, ALockThatWasLeftInAReadOnlyFolderIsNotWaitedFor) {
    using namespace std::chrono_literals;
    put("{}");
    QFile left(m_path + ".lock");
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    // In the form of QLockFile: of a process that runs.
    left.write(QByteArray::number(::getpid()) + "\ntest_platform_alone\n" +
               QSysInfo::machineHostName().toUtf8() + '\n');
    left.close();
    EXPECT_TRUE(holdsInReadOnlyFolder(m_folder.filePath("Vorq"), [this] {
        const auto start = std::chrono::steady_clock::now();
        SettingsFile settings(m_path);
        settings.setString("a", "1");
        return settings.string("a") == "1" && std::chrono::steady_clock::now() - start < 1s;
    }));
}

TEST_F(SettingsFileTest, AValueInAReadOnlyFolderIsFixedUntilItCanBeWritten) {
    SettingsFile settings(m_path);
    settings.setString("a", "1");
    EXPECT_EQ(settings.whyFixed("a"), std::nullopt);
    EXPECT_EQ(settings.whyFixed("missing"), std::nullopt);
    EXPECT_TRUE(holdsInReadOnlyFolder(m_folder.filePath("Vorq"), [this] {
        SettingsFile fixed(m_path);
        if (fixed.whyFixed("a") != QString("Permission denied")) return false;
        // What is in memory alone can change there.
        fixed.setString("a", "2");
        return fixed.whyFixed("a") == std::nullopt && fixed.whyFixed("b") != std::nullopt;
    }));
    EXPECT_EQ(settings.whyFixed("a"), std::nullopt);
    EXPECT_EQ(SettingsFile(m_path).string("a"), "1");
}

TEST_F(SettingsFileTest, KilledDuringWritesLeavesAWholeFile) {
    SettingsFile(m_path).setString("text", QString(20000, u'x'));
    for (int round = 0; round < 10; ++round) {
        const pid_t child = forkAlone();
        ASSERT_GE(child, 0);
        if (child == 0) {
            SettingsFile settings(m_path);
            for (int i = 0;; ++i)
                settings.setString("text", QString(20000, QChar(u'a' + i % 26)));
        }
        ::usleep(static_cast<useconds_t>(3000 + 1700 * round));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        testing::internal::CaptureStderr();
        const SettingsFile settings(m_path);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        ASSERT_TRUE(settings.string("text"));
        EXPECT_EQ(settings.string("text")->size(), 20000);
    }
}

// What a write leaves that was killed before the file had its name.
TEST_F(SettingsFileTest, RemainsOfAKilledWriteGoWithTheNextOne) {
    put("{}");
    leave("Vorq/.vorq-save-Ab3xY9", std::chrono::minutes(2));
    SettingsFile settings(m_path);
    settings.remove("vorq.session.token");
    EXPECT_EQ(all(), QStringList{"settings.json"});
    leave("Vorq/.vorq-save-Ab3xY9", std::chrono::minutes(2));
    settings.setString("a", "1");
    EXPECT_EQ(all(), QStringList{"settings.json"});
}

TEST_F(SettingsFileTest, ErasedNoRemainsAreLeftHoweverYoung) {
    put("{}");
    leave("Vorq/.vorq-save-Ab3xY9", std::chrono::minutes(0));
    SettingsFile settings(m_path);
    EXPECT_TRUE(settings.erase());
    EXPECT_FALSE(QFile::exists(m_folder.filePath("Vorq")));
}

TEST_F(SettingsFileTest, ErasedNothingIsLeft) {
    put("{ damaged");
    SettingsFile settings(m_path);
    settings.setString("vorq.session.token", "secret");
    ASSERT_TRUE(entries().contains("settings.json.damaged-1"));
    EXPECT_TRUE(settings.erase());
    EXPECT_FALSE(QFile::exists(m_folder.filePath("Vorq")));
    EXPECT_FALSE(settings.contains("vorq.session.token"));
}

TEST_F(SettingsFileTest, ErasedWithAnotherFileInTheFolderThatOneStays) {
    SettingsFile settings(m_path);
    settings.setString("key", "value");
    QFile other(m_folder.filePath("Vorq/mine.txt"));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    EXPECT_TRUE(settings.erase());
    EXPECT_EQ(entries(), QStringList{"mine.txt"});
}

// As who keeps the settings of all programs in one place has it.
TEST_F(SettingsFileTest, ErasedBehindALinkNoSecretStays) {
    const QString target = m_folder.filePath("elsewhere.json");
    QDir().mkpath(m_folder.filePath("Vorq"));
    ASSERT_TRUE(QFile(target).open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile::link(target, m_path));
    SettingsFile settings(m_path);
    settings.setString("vorq.session.token", "secret");
    ASSERT_TRUE(contentOf(target).contains("secret"));
    EXPECT_TRUE(settings.erase());
    EXPECT_EQ(contentOf(target), "");
    EXPECT_FALSE(QFileInfo(m_path).isSymLink());
}

TEST_F(SettingsFileTest, ErasedBeforeAnythingWasStoredMakesNoFolder) {
    SettingsFile settings(m_path);
    EXPECT_TRUE(settings.erase());
    EXPECT_FALSE(QFile::exists(m_folder.filePath("Vorq")));
}

} // namespace
} // namespace vorq
