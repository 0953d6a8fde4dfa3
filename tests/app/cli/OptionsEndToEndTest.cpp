// How the built programs read their command lines, as a terminal starts them.

#include "app/cli/CommandTables.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr int patience = 60'000; // milliseconds, for a machine that is busy

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
    bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* stream) {
    *stream << outcome.status << "\n" << outcome.out << "\n" << outcome.err;
}

class OptionsEndToEndTest : public testing::Test {
  protected:
    Outcome run(const QString& program, const QStringList& arguments) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", m_home.path());
        environment.insert("XDG_DATA_HOME", m_home.filePath("data"));
        environment.insert("XDG_CONFIG_HOME", m_home.filePath("config"));
        environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setStandardInputFile(QProcess::nullDevice());
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(patience));
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }
    Outcome vorq(const QStringList& arguments) const { return run(VORQ_PROGRAM, arguments); }
    Outcome gateway(const QStringList& arguments) const {
        return run(VORQ_GATEWAY_PROGRAM, arguments);
    }

    static Outcome misuse(const std::string& sentence) {
        return {2, "", "vorq: " + sentence + " See vorq --help.\n"};
    }
    static Outcome gatewayMisuse(const std::string& sentence) {
        return {2, "", "vorq-gateway: " + sentence + " See vorq-gateway --help.\n"};
    }
    static Outcome help(const QString& file) {
        QFile golden(VORQ_TESTS_FOLDER + file);
        EXPECT_TRUE(golden.open(QFile::ReadOnly)) << qPrintable(golden.fileName());
        return {0, golden.readAll().toStdString(), ""};
    }

    const QTemporaryDir m_home;
};

TEST_F(OptionsEndToEndTest, EachHelpIsWordForWordWhatItHasAlwaysBeen) {
    EXPECT_EQ(vorq({"--help"}), help("/app/cli/help/vorq.txt"));
    EXPECT_EQ(vorq({"notes", "--help"}), help("/app/cli/help/vorq-notes.txt"));
    EXPECT_EQ(vorq({"chats", "-h"}), help("/app/cli/help/vorq-chats.txt"));
    EXPECT_EQ(vorq({"preview", "--help"}), help("/app/cli/help/vorq-preview.txt"));
    EXPECT_EQ(gateway({"--help"}), help("/gateway/cli/help/vorq-gateway.txt"));
}

TEST_F(OptionsEndToEndTest, HelpIsShownWhereverItIsAskedFor) {
    for (const QStringList& arguments : {QStringList{"-h"},
                                         {"help"},
                                         {"summon", "--help"},
                                         {"ask", "what", "is", "--help"},
                                         {"ask", "--model", "m", "-h", "--loud"},
                                         {"open", "--help"},
                                         {"enable-accessibility", "--help"},
                                         {"disable-backend", "-h"},
                                         {"--background", "-h"}})
        EXPECT_EQ(vorq(arguments), help("/app/cli/help/vorq.txt"))
            << qPrintable(arguments.join(' '));
    EXPECT_EQ(vorq({"notes", "export", "A", "--help"}), help("/app/cli/help/vorq-notes.txt"));
    EXPECT_EQ(gateway({"serve", "--port", "1", "-h"}), help("/gateway/cli/help/vorq-gateway.txt"));
}

TEST_F(OptionsEndToEndTest, UnknownOptionsAreNamed) {
    EXPECT_EQ(vorq({"--loud"}), misuse("There is no option --loud."));
    EXPECT_EQ(vorq({"summon", "--background=1"}), misuse("There is no option --background=1."));
    EXPECT_EQ(vorq({"ask", "--loud=3", "x"}), misuse("ask has no option --loud=3."));
    EXPECT_EQ(vorq({"notes", "list", "--loud=3"}), misuse("notes list has no option --loud."));
    EXPECT_EQ(vorq({"notes", "show", "--json=1", "A"}), misuse("notes show has no option --json."));
    EXPECT_EQ(vorq({"open", "--loud", "vorq://x"}), misuse("open needs one URL."));
    EXPECT_EQ(vorq({"open", "a", "b", "-h"}), misuse("open needs one URL."));
    EXPECT_EQ(vorq({"enable-backend", "--loud"}), misuse("enable-backend takes no arguments."));
    EXPECT_EQ(gateway({"serve", "--loud=3"}), gatewayMisuse("serve takes no \"--loud\"."));
    EXPECT_EQ(gateway({"--version", "--loud"}), gatewayMisuse("--version takes no \"--loud\"."));
}

TEST_F(OptionsEndToEndTest, MissingValuesAreNamed) {
    EXPECT_EQ(vorq({"ask", "--file"}), misuse("--file needs the name of a file."));
    EXPECT_EQ(vorq({"ask", "--model=", "x"}), misuse("--model needs the id of a model."));
    EXPECT_EQ(vorq({"notes", "list", "--area"}), misuse("--area needs a value."));
    EXPECT_EQ(vorq({"notes", "save", "--title="}), misuse("--title needs a value."));
    EXPECT_EQ(gateway({"serve", "--port"}), gatewayMisuse("--port needs a value."));
    EXPECT_EQ(gateway({"handoff", "--data="}), gatewayMisuse("--data needs a value."));
}

TEST_F(OptionsEndToEndTest, ValuesStandBehindABlankOrASign) {
    ASSERT_EQ(vorq({"notes", "save", "--title=Of = signs", "--area", "study", "text"}).status, 0);
    const Outcome list = vorq({"notes", "list", "--area=study"});
    EXPECT_EQ(list.status, 0);
    EXPECT_THAT(list.out, HasSubstr("Of = signs"));
    EXPECT_THAT(vorq({"notes", "list", "--area=writing"}).out, Not(HasSubstr("Of = signs")));
}

TEST_F(OptionsEndToEndTest, BehindTwoDashesAllAreWords) {
    ASSERT_EQ(vorq({"notes", "save", "--", "--title", "--", "-h"}).status, 0);
    EXPECT_THAT(vorq({"notes", "list"}).out, HasSubstr("--title -- -h"));
    EXPECT_EQ(vorq({"--", "fly"}), misuse("There is no command fly."));
}

TEST_F(OptionsEndToEndTest, NegativeNumbersAreWords) {
    ASSERT_EQ(vorq({"notes", "save", "-5", "and", "-.5", "degrees"}).status, 0);
    EXPECT_THAT(vorq({"notes", "list"}).out, HasSubstr("-5 and -.5 degrees"));
    EXPECT_EQ(vorq({"notes", "save", "-x"}), misuse("notes save has no option -x."));
    EXPECT_EQ(gateway({"serve", "--port", "-1"}),
              gatewayMisuse("--port takes a number from 0 to 65535, not \"-1\"."));
}

TEST_F(OptionsEndToEndTest, OfARepeatedOptionTheLastCounts) {
    ASSERT_EQ(vorq({"notes", "save", "--title", "first", "--title", "last", "text"}).status, 0);
    const std::string list = vorq({"notes", "list"}).out;
    EXPECT_THAT(list, HasSubstr("last"));
    EXPECT_THAT(list, Not(HasSubstr("first")));
    EXPECT_EQ(gateway({"serve", "--port", "1", "--port", "x"}),
              gatewayMisuse("--port takes a number from 0 to 65535, not \"x\"."));
}

TEST_F(OptionsEndToEndTest, EachFileIsAttached) {
    // Both are read, so that the second one's fault is told.
    QFile file(m_home.filePath("a.txt"));
    ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write("text") == 4);
    file.close();
    const Outcome outcome = vorq(
        {"ask", "--file", m_home.filePath("a.txt"), "--file=" + m_home.filePath("b.txt"), "x"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("b.txt"));
}

// As where Vorq does not run: what it starts with is switched.
TEST_F(OptionsEndToEndTest, APreviewIsSwitchedForGood) {
    const auto states = [this] {
        std::vector<std::string> beginnings;
        for (const QString& line :
             QString::fromStdString(vorq({"preview"}).out).split(u'\n', Qt::SkipEmptyParts))
            beginnings.push_back(line.left(13).toStdString());
        return beginnings;
    };
    EXPECT_THAT(states(), testing::ElementsAre("hub      off ", "writing  off ", "watch    off "));
    EXPECT_EQ(vorq({"preview", "watch", "on"}), (Outcome{0, "watch is on.\n", ""}));
    EXPECT_THAT(states(), testing::ElementsAre("hub      off ", "writing  off ", "watch    on  "));
    EXPECT_EQ(vorq({"preview", "watch", "off"}), (Outcome{0, "watch is off.\n", ""}));
    EXPECT_THAT(states(), testing::ElementsAre("hub      off ", "writing  off ", "watch    off "));
    EXPECT_EQ(vorq({"preview", "fly", "on"}),
              misuse("There is no preview fly: there are hub, writing and watch."));
    EXPECT_EQ(vorq({"bogus", "--help"}), misuse("There is no command bogus."));
}

TEST_F(OptionsEndToEndTest, EveryCommandOfTheTablesIsKnown) {
    for (const CommandPage& page : commandPages()) {
        const QStringList words =
            QString::fromStdString(std::string(page.program)).split(' ').sliced(1);
        for (const CommandSection& section : page.sections)
            for (const CommandRow& row : section.rows)
                for (const QString& name :
                     QString::fromStdString(std::string(row.names)).split('|'))
                    EXPECT_EQ(vorq(words + QStringList{name, "--help"}).status, 0)
                        << qPrintable(name);
    }
}

} // namespace
} // namespace vorq
