#include "provider/EventStreamParser.h"

#include "engine/Engine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Events = std::vector<StreamEvent>;

Events eventsIn(const std::vector<std::string>& pieces) {
    EventStreamParser parser;
    Events all;
    for (const std::string& piece : pieces) {
        for (const StreamEvent& event : parser.feed(piece))
            all.push_back(event);
    }
    for (const StreamEvent& event : parser.finish())
        all.push_back(event);
    return all;
}

StreamEvent unnamed(const std::string& data) {
    return {.name = {}, .data = data};
}

TEST(EventStreamParserTest, ABlankLineEndsAnEvent) {
    EventStreamParser parser;
    EXPECT_THAT(parser.feed("data: a\n"), IsEmpty());
    EXPECT_THAT(parser.feed("\ndata: b\n"), ElementsAre(unnamed("a")));
    EXPECT_THAT(parser.feed("\n"), ElementsAre(unnamed("b")));
}

TEST(EventStreamParserTest, LinesOfDataAreJoined) {
    EXPECT_THAT(eventsIn({"data: a\ndata\ndata:  b\n\n"}), ElementsAre(unnamed("a\n\n b")));
}

TEST(EventStreamParserTest, NamesHoldForOneEvent) {
    EXPECT_THAT(eventsIn({"event: ping\ndata: a\n\ndata: b\n\nevent: lost\n\ndata: c\n\n"}),
                ElementsAre(StreamEvent{"ping", "a"}, unnamed("b"), unnamed("c")));
}

TEST(EventStreamParserTest, CommentsAndUnknownFieldsArePassedOver) {
    EXPECT_THAT(eventsIn({": hello\nid: 1\nretry: 2\nother: x\nnothing\n:\n\ndata: a\n\n"}),
                ElementsAre(unnamed("a")));
}

TEST(EventStreamParserTest, AnErrorFieldIsAnEventOfThatName) {
    EXPECT_THAT(
        eventsIn({"data: a\nerror: {\"code\":500}\ndata: [DONE]\n"}),
        ElementsAre(unnamed("a"), StreamEvent{"error", "{\"code\":500}"}, unnamed("[DONE]")));
}

TEST(EventStreamParserTest, WhatLacksItsEndComesWithTheEndOfTheStream) {
    EXPECT_THAT(eventsIn({"data: a"}), ElementsAre(unnamed("a")));
    EXPECT_THAT(eventsIn({"data: a\r"}), ElementsAre(unnamed("a")));
    EXPECT_THAT(eventsIn({""}), IsEmpty());
}

TEST(EventStreamParserTest, TheEndMarkWaitsForNothing) {
    EventStreamParser parser;
    EXPECT_THAT(parser.feed("data: [DONE]\n"), ElementsAre(unnamed("[DONE]")));
}

TEST(EventStreamParserTest, CutsMakeNoDifference) {
    for (const std::string end : {"\n", "\r", "\r\n"}) {
        std::string stream = "\xEF\xBB\xBF" + std::string("event: e\n: c\ndata: {\"a\":\n") +
                             "data: 1}\n\ndata: {}\ndata: {}\n{\"error\": 1}\n\ndata: z";
        for (std::size_t at = stream.find('\n'); at != std::string::npos;
             at = stream.find('\n', at + end.size())) {
            stream.replace(at, 1, end);
        }
        const Events whole = eventsIn({stream});
        EXPECT_THAT(whole, ElementsAre(StreamEvent{"e", "{\"a\":\n1}"}, unnamed("{}"),
                                       unnamed("{}"), unnamed("{\"error\": 1}"), unnamed("z")));
        for (std::size_t cut = 0; cut <= stream.size(); ++cut)
            EXPECT_EQ(eventsIn({stream.substr(0, cut), stream.substr(cut)}), whole) << cut;
    }
}

TEST(EventStreamParserTest, AnEventWithoutAnEndIsCutOff) {
    const std::string line(1'000'000, 'x');
    for (const std::string& piece : {line, "data: " + line + "\n"}) {
        EventStreamParser parser;
        const auto flood = [&] {
            for (int i = 0; i < 5; ++i)
                static_cast<void>(parser.feed(piece));
        };
        EXPECT_THROW(flood(), EngineError);
    }
}

} // namespace
} // namespace vorq::gateway::testing
