#include "backend/api/BaseURL.h"

#include "platform/testing/ScriptedAppPaths.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

void store(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QString fromVariables(const QString& vorq, const QString& tolva = {}) {
    BaseURLCandidates candidates;
    candidates.vorqVariable = vorq;
    candidates.tolvaVariable = tolva;
    return resolveBaseURL(candidates);
}

QString fromSidecar(const QByteArray& content) {
    BaseURLCandidates candidates;
    candidates.homeSidecar = content;
    return resolveBaseURL(candidates);
}

const QString builtIn = u"http://127.0.0.1:8787"_s;

TEST(BaseURL, IsBuiltInWhenNothingIsSaid) {
    EXPECT_EQ(resolveBaseURL({}), builtIn);
}

TEST(BaseURL, LosesBlanksAroundAndSlashesAtItsEnds) {
    EXPECT_EQ(fromVariables("  http://h:1//\n"), u"http://h:1");
    EXPECT_EQ(fromVariables("https://api.example.org/v1/"), u"https://api.example.org/v1");
}

TEST(BaseURL, FallsThroughWhatIsOnlySlashes) {
    EXPECT_EQ(fromVariables("/", "http://h:2"), u"http://h:2");
    EXPECT_EQ(fromVariables(" // ", ""), builtIn);
}

TEST(BaseURL, FallsThroughWhatIsNoURL) {
    EXPECT_EQ(fromVariables("http://[::1", "http://h:2"), u"http://h:2");
    EXPECT_EQ(fromVariables("http://exa mple", "http://h:port"), builtIn);
}

TEST(BaseURL, TheFirstVariableComesFirstAndSidecarsLast) {
    BaseURLCandidates candidates;
    candidates.vorqVariable = "http://one";
    candidates.tolvaVariable = "http://two";
    candidates.homeSidecar = "http://three";
    EXPECT_EQ(resolveBaseURL(candidates), u"http://one");
    candidates.vorqVariable.clear();
    EXPECT_EQ(resolveBaseURL(candidates), u"http://two");
    candidates.tolvaVariable.clear();
    EXPECT_EQ(resolveBaseURL(candidates), u"http://three");
}

TEST(BaseURL, SidecarsCountInTheirOrder) {
    BaseURLCandidates candidates;
    candidates.executableSidecar = "\n  \n";
    candidates.resourcesSidecar = " http://two/ ";
    candidates.homeSidecar = "http://three";
    EXPECT_EQ(resolveBaseURL(candidates), u"http://two");
    candidates.executableSidecar = "http://one";
    EXPECT_EQ(resolveBaseURL(candidates), u"http://one");
}

TEST(BaseURL, ASidecarThatIsNoURLEndsTheSearch) {
    BaseURLCandidates candidates;
    candidates.executableSidecar = "http://[";
    candidates.homeSidecar = "http://three";
    EXPECT_EQ(resolveBaseURL(candidates), builtIn);
}

TEST(BaseURL, TakesTheFirstLineOfASidecarThatIsNotEmpty) {
    EXPECT_EQ(fromSidecar("\n\r\n\nhttp://second:2\nhttp://third"), u"http://second:2");
    EXPECT_EQ(fromSidecar("   \nhttp://second:2"), builtIn) << "a piece of blanks is a piece";
}

TEST(BaseURL, PassesOverASidecarThatIsNotUtf8) {
    EXPECT_EQ(fromSidecar("http://h\xFF"), builtIn);
    EXPECT_EQ(fromSidecar("http://h\xC3"), builtIn);
}

TEST(BaseURL, KeepsTheSpellingOfAPlainURL) {
    EXPECT_EQ(fromVariables("HTTP://Example.ORG:80"), u"HTTP://Example.ORG:80");
    EXPECT_EQ(fromVariables(u"http://h/päth"_s), u"http://h/p%C3%A4th");
}

TEST(BaseURL, ReadsItsFilesAndVariables) {
    const ScriptedAppPaths paths;
    qputenv("VORQ_API_BASE_URL", "http://v");
    qunsetenv("TOLVA_API_BASE_URL");
    store(paths.executableFolder() + "/.vorq-api-base", "e");
    store(paths.resourcesFolder() + "/.vorq-api-base", "r");
    store(paths.home() + "/.vorq/api_base_url", "h");
    const BaseURLCandidates candidates = readBaseURLCandidates(paths);
    qunsetenv("VORQ_API_BASE_URL");
    EXPECT_EQ(candidates.vorqVariable, u"http://v");
    EXPECT_EQ(candidates.tolvaVariable, u"");
    EXPECT_EQ(candidates.executableSidecar, "e");
    EXPECT_EQ(candidates.resourcesSidecar, "r");
    EXPECT_EQ(candidates.homeSidecar, "h");
}

TEST(BaseURL, PassesOverSidecarsThatCannotBeRead) {
    const ScriptedAppPaths paths;
    QDir().mkpath(paths.home() + "/.vorq/api_base_url");
    const BaseURLCandidates candidates = readBaseURLCandidates(paths);
    EXPECT_FALSE(candidates.executableSidecar);
    EXPECT_FALSE(candidates.resourcesSidecar);
    EXPECT_FALSE(candidates.homeSidecar);
}

TEST(EndpointURL, PutsThePathOnTheHost) {
    EXPECT_EQ(endpointURL("http://h:1", "/ai/prompt"), QUrl("http://h:1/ai/prompt"));
    EXPECT_EQ(endpointURL("http://h:1", "ai/prompt"), QUrl("http://h:1/ai/prompt"));
}

TEST(EndpointURL, LeavesOutAPathOfTheBase) {
    EXPECT_EQ(endpointURL("https://h/v1", "/ai/prompt"), QUrl("https://h/ai/prompt"));
}

TEST(EndpointURL, IsAbsentForWhatIsNoPath) {
    EXPECT_EQ(endpointURL("http://h", "//[bad"), std::nullopt);
}

} // namespace
} // namespace vorq
