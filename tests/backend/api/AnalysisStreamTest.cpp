#include "backend/api/AnalysisStream.h"
#include "backend/http/Errors.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

struct Reading {
    QStringList deltas;
    std::optional<AIAnalysis> analysis;
    QString error;

    bool operator==(const Reading&) const = default;
};

Reading readAll(const std::vector<QByteArray>& reads) {
    Reading reading;
    AnalysisStream stream([&reading](const QString& text) { reading.deltas << text; });
    try {
        for (const QByteArray& bytes : reads) {
            if (stream.feed(bytes)) break;
        }
        reading.analysis = stream.finish();
    } catch (const ServiceError& error) {
        EXPECT_EQ(error.kind(), ServiceError::Kind::RequestFailed);
        reading.error = error.message();
    }
    return reading;
}

Reading read(const QByteArray& body) {
    return readAll({body});
}

const QString endedEarly = u"The stream ended before Vorq sent a reply."_s;

TEST(AnalysisStream, GivesTheTextOfEachEventInTurn) {
    const Reading reading = read("data: {\"text\":\"a\"}\n\ndata: {\"text\":\"ab\"}\n\n");
    EXPECT_EQ(reading.deltas, QStringList({"a", "ab"}));
    ASSERT_TRUE(reading.analysis);
    EXPECT_EQ(
        *reading.analysis,
        (AIAnalysis{
            .summary = "ab", .feedback = {}, .corrections = {}, .sources = {}, .followUp = {}}));
}

TEST(AnalysisStream, NeedsNoBlankAfterTheColon) {
    EXPECT_EQ(read("data:{\"text\":\"a\"}\n"), read("data: {\"text\":\"a\"}\n"));
    EXPECT_EQ(read("data:{\"text\":\"a\"}\n").deltas, QStringList("a"));
}

TEST(AnalysisStream, SkipsLinesThatAreNoData) {
    const Reading reading = read("event: delta\n: comment\nid: 1\ndata\nData: "
                                 "{\"text\":\"no\"}\n\ndata: {\"text\":\"a\"}\n");
    EXPECT_EQ(reading.deltas, QStringList("a"));
}

TEST(AnalysisStream, DoneMarkersAndBareDataAloneAreNoReply) {
    EXPECT_EQ(read("data: [DONE]\ndata:\n\ndata: \n").error, endedEarly);
}

TEST(AnalysisStream, GoesOnBehindADoneMarker) {
    EXPECT_EQ(read("data: {\"text\":\"a\"}\ndata: [DONE]\ndata: {\"text\":\"ab\"}\n").deltas,
              QStringList({"a", "ab"}));
}

TEST(AnalysisStream, AnEmptyBodyIsNoReply) {
    EXPECT_EQ(readAll({}).error, endedEarly);
}

TEST(AnalysisStream, TrimsWhiteSpaceOfAllKinds) {
    EXPECT_EQ(read("\t\xC2\xA0 data: \xE3\x80\x80{\"text\":\"a\"}\xE2\x80\xA8\xC2\x85 \n").deltas,
              QStringList("a"));
}

TEST(AnalysisStream, SkipsPayloadsThatAreNoEvents) {
    for (const char* payload :
         {"nope", "{\"text\":\"a\"", "12", "[1,2]", "null", "{\"text\":5}", "{\"done\":1}",
          "{\"text\":\"no\",\"sources\":[{\"title\":3}]}", "{\"text\":\"no\",\"sources\":[null]}",
          "{\"text\":\"no\",\"sources\":{}}", "{\"text\":\"no\",\"followUp\":{\"question\":\"q\"}}",
          "{\"text\":\"no\",\"followUp\":{\"question\":\"q\",\"labels\":[1]}}",
          "{\"text\":\"\\ud800\"}", "{\"text\":\"\\udc00\"}", "{\"text\":\"a\"} x",
          "{\"error\":7,\"text\":\"no\"}"}) {
        const Reading reading =
            read(QByteArray("data: ") + payload + "\ndata: {\"text\":\"ok\"}\n");
        EXPECT_EQ(reading.deltas, QStringList("ok")) << payload;
        EXPECT_EQ(reading.error, QString()) << payload;
    }
}

TEST(AnalysisStream, NullCountsAsAbsentAndUnknownKeysAsNothing) {
    const Reading reading =
        read("data: {\"text\":\"a\",\"x\":{\"y\":[1]},\"error\":null,\"done\":null,"
             "\"sources\":null,\"followUp\":null,\"summary\":null}\n");
    EXPECT_EQ(reading.deltas, QStringList("a"));
}

TEST(AnalysisStream, OfEqualKeysTheLastCounts) {
    EXPECT_EQ(read("data: {\"text\":1,\"text\":\"a\",\"text\":\"b\"}\n").deltas, QStringList("b"));
}

TEST(AnalysisStream, KeepsAByteOrderMarkInsideTheText) {
    EXPECT_EQ(read("data: {\"text\":\"\xEF\xBB\xBFx\"}\n").deltas,
              QStringList(QString(QChar(0xFEFF)) + u'x'));
}

TEST(AnalysisStream, RepairsBytesThatAreNotUtf8) {
    const QString expected = u"caf"_s + QChar(0xFFFD) + u'!';
    EXPECT_EQ(read("data: {\"text\":\"caf\xE9!\"}\n").deltas, QStringList(expected));
}

TEST(AnalysisStream, AnErrorEventEndsTheReadingEvenAfterText) {
    const Reading reading =
        read("data: {\"text\":\"a\"}\ndata: {\"error\":\" Out of quota \",\"text\":\"b\"}\n");
    EXPECT_EQ(reading.deltas, QStringList("a"));
    EXPECT_EQ(reading.error, u"Out of quota");
    EXPECT_FALSE(reading.analysis);
}

TEST(AnalysisStream, ABlankErrorIsNone) {
    EXPECT_EQ(read("data: {\"error\":\" \\n\"}\ndata: {\"text\":\"a\"}\n").deltas,
              QStringList("a"));
}

TEST(AnalysisStream, AnEmptyTextLeavesTheLatestAsItWas) {
    const Reading reading = read("data: {\"text\":\"a\"}\ndata: {\"text\":\"\"}\n");
    EXPECT_EQ(reading.deltas, QStringList("a"));
    EXPECT_EQ(reading.analysis->summary, u"a");
}

TEST(AnalysisStream, AClosingEventWithoutSummaryUsesTheLatestText) {
    const Reading reading = read("data: {\"text\":\"a\"}\ndata: {\"done\":true,\"text\":\"ab\"}\n");
    EXPECT_EQ(reading.deltas, QStringList({"a", "ab"}));
    EXPECT_EQ(reading.analysis->summary, u"ab");
}

TEST(AnalysisStream, AClosingEventGivesTheFinalFields) {
    const Reading reading =
        read("data: {\"text\":\"a\"}\n"
             "data: {\"done\":true,\"summary\":\"S\",\"feedback\":\"F\",\"corrections\":\"C\","
             "\"sources\":[{\"title\":\"T\",\"url\":\"U\"},{}],"
             "\"followUp\":{\"question\":\"q\",\"labels\":[\"x\",\"y\"]}}\n"
             "data: {\"text\":\"late\"}\ndata: {\"error\":\"late\"}\n");
    const AIAnalysis expected{.summary = "S",
                              .feedback = "F",
                              .corrections = "C",
                              .sources = {{.title = "T", .url = "U"}, {.title = {}, .url = {}}},
                              .followUp = VorqFollowUp{.question = "q", .labels = {"x", "y"}}};
    EXPECT_EQ(reading.deltas, QStringList("a"));
    EXPECT_EQ(reading.analysis, expected);
}

TEST(AnalysisStream, AClosingEventAloneGivesAnEmptyReply) {
    const Reading reading = read("data: {\"done\":true}\n");
    EXPECT_EQ(reading.analysis, AIAnalysis());
    EXPECT_EQ(displayText(*reading.analysis), u"Vorq had nothing to say.");
}

TEST(AnalysisStream, FeedTellsWhenTheReplyIsComplete) {
    AnalysisStream stream({});
    EXPECT_FALSE(stream.feed("data: {\"text\":\"a\"}\n"));
    EXPECT_TRUE(stream.feed("data: {\"done\":true}\n"));
    EXPECT_TRUE(stream.feed("data: {\"error\":\"late\"}\n"));
    EXPECT_EQ(stream.finish().summary, u"a");
}

TEST(AnalysisStream, DeliversALineAsSoonAsItEnds) {
    QStringList deltas;
    AnalysisStream stream([&deltas](const QString& text) { deltas << text; });
    stream.feed("data: {\"text\":\"a\"}");
    EXPECT_TRUE(deltas.isEmpty());
    stream.feed("\r");
    EXPECT_EQ(deltas.size(), 1);
    stream.feed("\ndata: {\"text\":\"b\"}\r\n");
    EXPECT_EQ(deltas.size(), 2);
}

TEST(AnalysisStream, TheLastLineNeedsNoEnd) {
    EXPECT_EQ(read("data: {\"text\":\"a\"}").deltas, QStringList("a"));
}

TEST(AnalysisStream, SplittingTheBodyAnywhereChangesNothing) {
    const QByteArray body =
        "event: x\r\ndata: {\"text\":\"caf\xC3\xA9 \xF0\x9F\x91\x8B \\ud83d\\udc4b\"}\r\r\n"
        "data: {\"text\":\"two\xE2\x80\xA8lines\"}\r\n\r\n"
        "\xE3\x80\x80 data: [DONE]\ndata: {\"done\":true,\"summary\":\"\xE6\x9D\xB1\"}\n";
    const Reading whole = read(body);
    ASSERT_EQ(whole.deltas.size(), 2);
    ASSERT_TRUE(whole.analysis);
    for (qsizetype first = 0; first <= body.size(); ++first) {
        EXPECT_EQ(readAll({body.first(first), body.sliced(first)}), whole) << first;
        for (qsizetype second = first; second <= body.size(); second += 7) {
            EXPECT_EQ(readAll({body.first(first), body.sliced(first, second - first),
                               body.sliced(second)}),
                      whole)
                << first << ' ' << second;
        }
    }
    std::vector<QByteArray> bytes;
    for (const char byte : body)
        bytes.emplace_back(1, byte);
    EXPECT_EQ(readAll(bytes), whole);
}

TEST(AnalysisStream, ReadsTenMegabytesInOneLine) {
    const QByteArray text(10'000'000, 'x');
    const QByteArray body = "data: {\"text\":\"" + text + "\"}\n";
    qsizetype length = 0;
    AnalysisStream stream([&length](const QString& delta) { length = delta.size(); });
    for (qsizetype at = 0; at < body.size(); at += 4096)
        stream.feed(QByteArrayView(body).sliced(at, std::min<qsizetype>(4096, body.size() - at)));
    EXPECT_EQ(length, text.size());
}

TEST(AnalysisStream, SkipsALineThatIsTooLongAndReadsOn) {
    const QByteArray part(1 << 20, 'x');
    for (const bool cut : {true, false}) {
        QByteArray whole = "data: {\"text\":\"";
        while (whole.size() <= AnalysisStream::longestLine)
            whole += part;
        whole += "\"}\ndata: {\"text\":\"after\"}\n";
        std::vector<QByteArray> reads;
        for (qsizetype at = 0; cut && at < whole.size(); at += part.size())
            reads.push_back(whole.sliced(at, std::min(part.size(), whole.size() - at)));
        EXPECT_EQ(cut ? readAll(reads).deltas : read(whole).deltas, QStringList("after"));
    }
}

TEST(AnalysisStream, ManyLineEndsInOneReadTakeLinearTime) {
    AnalysisStream stream({});
    stream.feed(QByteArray(4 << 20, '\r'));
    EXPECT_THROW(stream.finish(), ServiceError);
}

TEST(AnalysisStream, AStopIsSeenBeforeTheNextLine) {
    std::stop_source stop;
    QStringList deltas;
    AnalysisStream stream(
        [&](const QString& text) {
            deltas << text;
            stop.request_stop();
        },
        stop.get_token());
    EXPECT_THROW(stream.feed("data: {\"text\":\"a\"}\ndata: {\"text\":\"ab\"}\n"),
                 OperationCancelled);
    EXPECT_EQ(deltas, QStringList("a"));
}

} // namespace
} // namespace vorq
