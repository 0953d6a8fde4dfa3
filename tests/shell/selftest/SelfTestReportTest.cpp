#include "shell/selftest/SelfTestReport.h"
#include "doubles/shell/SelfTestFixture.h"
#include "shell/selftest/PrivateWords.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

TEST(PrivateWords, AreTakenOutWhereTheyStandAlone) {
    PrivateWords words;
    words.add(u"ada"_s);
    words.add(u"Ada Lovelace"_s);
    words.add(u"ada@example.org"_s);
    EXPECT_EQ(words.without(u"Ada Lovelace (ada@example.org, ADA) reads a cicada."_s),
              u"… (…, …) reads a cicada.");
}

TEST(PrivateWords, BlanksAndSingleCharactersAreNone) {
    PrivateWords words;
    words.add(u" "_s);
    words.add(u"a"_s);
    words.add(QString());
    EXPECT_EQ(words.without(u"a b"_s), u"a b");
}

TEST(PrivateWords, PathsAreTakenOutWhosesoeverTheyAre) {
    EXPECT_EQ(PrivateWords().without(u"It is in /home/ada/notes/My.md, or at /srv/x."_s),
              u"It is in …, or at …");
    EXPECT_EQ(PrivateWords().without(u"on the page /admin.html of 1/2"_s),
              u"on the page /admin.html of 1/2");
}

TEST(PrivateWords, PathsBelowOneThatIsKnownGoAsAWhole) {
    PrivateWords words;
    words.add(u"/home/ada"_s);
    words.add(u"ada"_s);
    EXPECT_EQ(words.without(u"It is in /home/ada/Clients/Smith, or at /home/ada: ada"_s),
              u"It is in …, or at …: …");
    EXPECT_EQ(words.without(u"/srv/ada/Clients/Smith"_s), u"…");
    PrivateWords blank;
    blank.add(u"/home/Ada Lovelace"_s);
    EXPECT_EQ(blank.without(u"It is in /home/Ada Lovelace/Clients/Smith."_s), u"It is in …");
}

TEST(PrivateWords, WhatLooksLikeAPatternIsTakenAsItIs) {
    PrivateWords words;
    words.add(u"a.b*"_s);
    EXPECT_EQ(words.without(u"a.b* axb"_s), u"… axb");
}

TEST(SelfTestReport, AResultComesBackAsItWentOut) {
    const ReportedCheck check{.id = u"tray"_s,
                              .state = SelfCheckState::Warning,
                              .sentence = u"\"quoted\" – ü\n"_s,
                              .advice = u"do"_s,
                              .details = {u"one"_s, u"two"_s}};
    EXPECT_EQ(decodeReportedCheck(encode(check)), check);
}

TEST(SelfTestReport, WhatIsNoResultIsNone) {
    for (const char* json : {"", "{", "[]", "{}", R"({"id":"x","state":"unheard of"})"})
        EXPECT_EQ(decodeReportedCheck(json), std::nullopt) << json;
}

TEST(SelfTestReport, TheDocumentHasItsSchemaAndNoDetails) {
    const QList<ReportedCheck> checks{{.id = u"tray"_s,
                                       .state = SelfCheckState::Failed,
                                       .sentence = u"It is not."_s,
                                       .advice = u"Do."_s,
                                       .details = {u"private"_s}}};
    const QByteArray json =
        reportDocument({.version = u"1.2"_s, .isOfRunningProgram = true}, checks);
    const QJsonObject document = QJsonDocument::fromJson(json).object();
    EXPECT_EQ(document.value("schema"_L1).toString(), u"com.vorq.self-test");
    EXPECT_EQ(document.value("schemaVersion"_L1).toInt(), 1);
    EXPECT_EQ(document.value("vorq"_L1).toString(), u"1.2");
    EXPECT_EQ(document.value("testedProgram"_L1).toString(), u"running");
    EXPECT_EQ(document.value("failures"_L1).toInt(), 1);
    const QJsonObject check = document.value("checks"_L1).toArray().at(0).toObject();
    EXPECT_EQ(check.keys(), QStringList({u"advice"_s, u"id"_s, u"sentence"_s, u"state"_s}));
    EXPECT_EQ(check.value("state"_L1).toString(), u"failed");
    EXPECT_THAT(json.toStdString(), Not(HasSubstr("private")));
}

// Every port and the account hold something that is nobody else's business, in good times and bad.
class ReportSecretsTest : public SelfTestFixture {
  protected:
    ReportSecretsTest() {
        m_defaults.apply({{"vorq.session.token", "sekret-token"},
                          {"vorq.session.email", "sekret@example.org"},
                          {"vorq.session.firstName", "Sekretfirst"},
                          {"vorq.session.lastName", "Sekretlast"},
                          {"vorq.session.username", "sekretuser"}});
        restart();
        m_highlight.writeAs(editor, pasteboardText(u"sekret highlight"_s));
        m_clipboard.writeAs(editor, pasteboardText(u"sekret clipboard"_s));
        m_notesApplication.notes.emplace_back(u"sekret title"_s, u"sekret body"_s);
        m_privacy.programs = {u"sekret program"_s};
        m_workspace.entitle(editor, u"sekret window"_s);
        makeAnew();
    }

    [[nodiscard]] std::string report() {
        const PrivateWords words = wordsOf(state().account(), u"/home/sekrethome"_s);
        QList<ReportedCheck> checks;
        for (const SelfCheck& result : m_test->results())
            checks += reported(result, words);
        return QString::fromUtf8(reportDocument({.version = u"1"_s}, checks))
            .toLower()
            .toStdString();
    }
};

TEST_F(ReportSecretsTest, NoneIsToldWhereAllIsWell) {
    runTest();
    EXPECT_THAT(report(), Not(HasSubstr("sekret")));
}

TEST_F(ReportSecretsTest, NoneIsToldWhereNothingWorks) {
    const PortSupport told =
        std::unexpected(u"Not in /home/sekrethome/x nor /home/sekrethome/Clients/sekretclient for "
                        "sekretuser, Sekretfirst Sekretlast, sekrethome, sekret@example.org and "
                        "sekret-token."_s);
    m_limits = {told.error()};
    m_tray = told;
    m_session.portalSupport = told;
    m_notesApplication.refusal = told.error();
    m_poster.support = told;
    m_copyShortcut.text = u"sekret copy"_s;
    m_accessibility.element(u"text"_s).text = u"sekret text"_s;
    m_window.onOpen = [this] {
        m_workspace.launch({ScriptedTestWindow::process, u"sekret-id"_s, u"sekret name"_s});
        m_primary.owner = ScriptedTestWindow::process;
        m_primary.highlight.text = u"sekret primary"_s;
    };
    m_window.onHighlight = {};
    m_promptStatus = 502;
    runTest(50ms);
    EXPECT_FALSE(failures().isEmpty());
    EXPECT_THAT(report(), Not(HasSubstr("sekret")));
}

} // namespace
} // namespace vorq
