#include "provider/LenientJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <random>
#include <string>
#include <vector>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;

/// What is read of the first value in the text; "nothing" if there is none.
std::string firstIn(const std::string& text) {
    LenientJson reader(text);
    const std::optional<json> value = reader.next();
    return value ? value->dump() : "nothing";
}

struct Case {
    const char* written;
    const char* meant;
};

// What small models write, and what they mean by it.
constexpr Case kCorpus[] = {
    {R"({"a": 1, "b": [true, null, "x"]})", R"({"a":1,"b":[true,null,"x"]})"},
    {"Sure!\n```json\n{\"a\": 1}\n```\nEnjoy.", R"({"a":1})"},
    {"{\"a\": \"line\none\ttab\"}", R"({"a":"line\none\ttab"})"},
    {R"({"a": [1, 2, ], "b": {"c": 3,},})", R"({"a":[1,2],"b":{"c":3}})"},
    {R"({"a": "1" "b": "2"})", R"({"a":"1","b":"2"})"},
    {"{\"a\": [\"x\"\n\"y\"]\n\"b\": 2}", R"({"a":["x","y"],"b":2})"},
    {R"([{"a": 1} {"a": 2}])", R"([{"a":1},{"a":2}])"},
    {R"({'a': 'it's', 'b': "c"})", R"({"a":"it's","b":"c"})"},
    {R"({a: 1, b_c: two words, d: x})", R"({"a":1,"b_c":"two words","d":"x"})"},
    {R"({"a": True, "b": False, "c": None, "d": undefined})",
     R"({"a":true,"b":false,"c":null,"d":null})"},
    {R"({"a": "He said "no" to me.", "b": 1})", R"({"a":"He said \"no\" to me.","b":1})"},
    {R"({"a": "the "x", and "y"."})", R"({"a":"the \"x\", and \"y\"."})"},
    {R"(["say "a" now", "b"])", R"(["say \"a\" now","b"])"},
    {R"({"a": "x", // a comment
        /* another */ "b": 1, # and one more
        "c": "http://x/"})",
     R"({"a":"x","b":1,"c":"http://x/"})"},
    {R"({"a": "\alpha \d \( \u00e4 \ud83d\ude00 \ud83d \uZZZZ"})",
     "{\"a\":\"\\\\alpha \\\\d \\\\( \u00E4 \U0001F600 \uFFFD \\\\uZZZZ\"}"},
    {"{“a”: “b”, „c”: 1}", R"({"a":"b","c":1})"},
    {R"({"a": +1, "b": .5, "c": 1., "d": 1e3, "e": -2})",
     R"({"a":1,"b":0.5,"c":1.0,"d":1000.0,"e":-2})"},
    {R"({"a": 5 apples, "b": 1/2})", R"({"a":"5 apples","b":"1/2"})"},
    {R"({"a": "b)", R"({"a":"b"})"},
    {R"({"a": "b)"
     "\n```",
     R"({"a":"b"})"},
    {R"({"a": "b\)", R"({"a":"b"})"},
    {R"({"a": "b", "c)", R"({"a":"b"})"},
    {R"({"a": "b", "c":)", R"({"a":"b"})"},
    {R"({"a": [{"b": 1}, {"b": 2, "c": "ha)", R"({"a":[{"b":1}]})"},
    {R"({"a": [1, 2, 3)", R"({"a":[1,2]})"},
    {R"({"a": "1", "a": "2"})", R"({"a":"2"})"},
    {"{}", "{}"},
    {"[]", "[]"},
    {"Use {braces} here.", "nothing"},
    {"{{x}}", "nothing"},
    {"{\"only a string\"}", "nothing"},
    {"", "nothing"},
    {"plain words", "nothing"},
    {"] }", "nothing"},
};

TEST(LenientJsonTest, ReadsWhatModelsMean) {
    for (const Case& entry : kCorpus)
        EXPECT_EQ(firstIn(entry.written), entry.meant) << entry.written;
}

TEST(LenientJsonTest, TellsWhetherItWasCut) {
    for (const auto& [text, cut] : {std::pair("{\"a\": 1}", false),
                                    {"{\"a\": 1", true},
                                    {"[\"a", true},
                                    {"[1, 2", true},
                                    {"{\"a\": [1}", false},
                                    {"none", false}}) {
        LenientJson reader(text);
        static_cast<void>(reader.next());
        EXPECT_EQ(reader.wasCut(), cut) << text;
    }
}

TEST(LenientJsonTest, GivesOneValueAfterTheOther) {
    LenientJson reader("a {\"a\": 1} b {x} [2] {\"c\": 3");
    EXPECT_EQ(reader.next(), json({{"a", 1}}));
    EXPECT_EQ(reader.next(), json::array({2}));
    EXPECT_FALSE(reader.wasCut());
    EXPECT_EQ(reader.next(), json({{"c", 3}}));
    EXPECT_TRUE(reader.wasCut());
    EXPECT_EQ(reader.next(), std::nullopt);
}

/// Random valid JSON with everything that needs an escape.
json randomValue(std::minstd_rand& random, int depth) {
    const auto pick = [&random](std::size_t most) { return random() % most; };
    const auto text = [&] {
        std::string made;
        for (std::size_t i = pick(12); i > 0; --i)
            made += std::string("ab \"\\/\n\t,:{}[]'").at(pick(14));
        return made;
    };
    switch (pick(depth > 0 ? 7 : 5)) {
    case 0:
        return text();
    case 1:
        return static_cast<int>(pick(2000)) - 1000;
    case 2:
        return static_cast<double>(pick(1000)) / 8 + 0.0625;
    case 3:
        return pick(2) == 0;
    case 4:
        return nullptr;
    case 5: {
        json list = json::array();
        for (std::size_t i = pick(5); i > 0; --i)
            list.push_back(randomValue(random, depth - 1));
        return list;
    }
    default: {
        json object = json::object();
        for (std::size_t i = pick(5); i > 0; --i)
            object["k" + std::to_string(i)] = randomValue(random, depth - 1);
        return object;
    }
    }
}

TEST(LenientJsonTest, ValidJsonReadsAsItIs) {
    std::minstd_rand random(7);
    for (int round = 0; round < 2000; ++round) {
        const json value = json::array({randomValue(random, 4)});
        for (const int indent : {-1, 2}) {
            const std::string text = value.dump(indent);
            LenientJson reader(text);
            EXPECT_EQ(reader.next(), value) << text;
            EXPECT_FALSE(reader.wasCut()) << text;
        }
    }
}

TEST(LenientJsonTest, HostileTextIsNoProblem) {
    constexpr std::size_t length = 100'000;
    std::vector<std::string> texts;
    for (const char* piece :
         {"{", "[", "\"", "{\"a\":", "[[", "{\"a\":\"\" ", "\\", "{\"a\" ", "'", "{a:", "[\"x\" ",
          "/*", "{\"a\":\"\\\"", "{\"a\":1,", "\"\xFF", "[\"\",\"", "{\"a\":\",\""}) {
        std::string text = "{\"a\": ";
        while (text.size() < length)
            text += piece;
        texts.push_back(text);
        texts.push_back(text.substr(6));
    }
    for (const std::string& text : texts) {
        LenientJson reader(text);
        for (int values = 0; reader.next();)
            ASSERT_LT(++values, 1'000'000);
    }
}

} // namespace
} // namespace vorq::gateway::testing
