#include "support/json/JsonWriter.h"

#include <QString>

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

TEST(JsonWriter, WritesCompactDocumentsInTheOrderTold) {
    JsonWriter writer;
    writer.beginObject();
    writer.member(u"prompt", QStringView(u"hi"));
    writer.member(u"stream", true);
    writer.key(u"list");
    writer.beginArray();
    writer.value(1);
    writer.value(2.5);
    writer.null();
    writer.beginObject();
    writer.endObject();
    writer.endArray();
    writer.endObject();
    EXPECT_EQ(writer.take(), R"({"prompt":"hi","stream":true,"list":[1,2.5,null,{}]})");
}

TEST(JsonWriter, EscapesWhatJsonForbids) {
    JsonWriter writer;
    writer.value(QStringView(u"a\"b\\c\n\r\t\b\f\u0001/é👋"));
    EXPECT_EQ(writer.take(), "\"a\\\"b\\\\c\\n\\r\\t\\b\\f\\u0001/é👋\"");
}

TEST(JsonWriter, LoneSurrogatesBecomeQuestionMarks) {
    const char16_t text[] = {u'a', 0xD83D, u'b', 0};
    JsonWriter writer;
    writer.value(QStringView(text, 3));
    EXPECT_EQ(writer.take(), "\"a?b\"");
}

TEST(JsonWriter, EscapesAtAnyPlaceOfATextOfAnyLength) {
    for (qsizetype before = 0; before < 40; ++before) {
        for (const auto& [text, escaped] :
             {std::pair(u"\"", "\\\""), std::pair(u"\n", "\\n"), std::pair(u"/", "\\/"),
              std::pair(u"é", "é"), std::pair(u"日", "日"), std::pair(u"👋", "👋"),
              std::pair(u"\x1f", "\\u001f"), std::pair(u"\x7f", "\x7f")}) {
            JsonWriter writer(JsonWriter::Style::Indented);
            writer.value(QStringView(QString(before, u'x') + QString::fromUtf16(text) + "yz"));
            EXPECT_EQ(writer.take(), '"' + QByteArray(before, 'x') + escaped + "yz\"");
        }
    }
}

TEST(JsonWriter, LongTextsKeepTheirPairs) {
    for (qsizetype before = 4090; before < 4100; ++before) {
        const QString text = QString(before, u'x') + QString("👋").repeated(5000);
        JsonWriter writer;
        writer.value(QStringView(text));
        EXPECT_EQ(writer.take(), '"' + text.toUtf8() + '"');
    }
}

// What the writer is to make of a text, told unit by unit.
QByteArray escapedOneByOne(const QString& text, bool escapesSlash = false) {
    QByteArray bytes;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar c = text[at];
        const bool isPair =
            c.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        if (isPair)
            bytes += text.mid(at++, 2).toUtf8();
        else if (c.isSurrogate())
            bytes += '?';
        else if (c == u'"' || c == u'\\' || (escapesSlash && c == u'/'))
            bytes += '\\' + QByteArray(1, c.toLatin1());
        else if (c == u'\n')
            bytes += "\\n";
        else if (c < u' ')
            bytes += "\\u00" + QByteArray::number(c.unicode(), 16).rightJustified(2, '0');
        else
            bytes += QString(c).toUtf8();
    }
    return bytes;
}

TEST(JsonWriter, CharactersOfAllSizesStandBesideEachOther) {
    constexpr std::array<char16_t, 20> units = {u'a', u'"',   u'\\',  u'\n',  0x01,   0x20,   0x7F,
                                                0x80, 0x7FF,  0x800,  0xFFFF, 0xD7FF, 0xE000, u'日',
                                                u'é', 0xD83D, 0xDC4B, 0xDBFF, 0xDFFF, 0x2F};
    std::minstd_rand random(1);
    for (int round = 0; round < 20'000; ++round) {
        // Of few kinds in some texts, so that they stand beside each other for long.
        const auto kinds = 1 + random() % units.size();
        const auto first = random() % units.size();
        QString text(static_cast<qsizetype>(random() % 40), u' ');
        for (QChar& c : text)
            c = units[(first + random() % kinds) % units.size()];
        const bool isIndented = round % 2 == 0;
        JsonWriter writer(isIndented ? JsonWriter::Style::Indented : JsonWriter::Style::Compact);
        writer.value(QStringView(text));
        ASSERT_EQ(writer.take(), '"' + escapedOneByOne(text, isIndented) + '"');
    }
}

TEST(JsonWriter, EveryUnitHasItsFormAtEveryPlace) {
    for (int code = 0x20; code < 0x10000; ++code) {
        if (QChar::isSurrogate(static_cast<char32_t>(code))) continue;
        QString text(u"日é日é日"_s);
        text[code % 5] = QChar(code);
        JsonWriter writer;
        writer.value(QStringView(text));
        ASSERT_EQ(writer.take(), '"' + escapedOneByOne(text) + '"') << code;
    }
}

TEST(JsonWriter, TakesPlainKeysAndStringsAsTheyAre) {
    JsonWriter writer(JsonWriter::Style::Indented);
    writer.beginObject();
    writer.plainKey("a");
    writer.plainString("x");
    writer.plainKey("b");
    writer.plainString("y");
    writer.endObject();
    EXPECT_EQ(writer.take(), "{\n  \"a\" : \"x\",\n  \"b\" : \"y\"\n}");
}

TEST(JsonWriter, IndentedStylePutsAMemberALine) {
    JsonWriter writer(JsonWriter::Style::Indented);
    writer.beginObject();
    writer.member(u"url", QStringView(u"a/b"));
    writer.key(u"labels");
    writer.beginArray();
    writer.value(QStringView(u"x"));
    writer.endArray();
    writer.endObject();
    EXPECT_EQ(writer.take(), "{\n  \"url\" : \"a\\/b\",\n  \"labels\" : [\n    \"x\"\n  ]\n}");
}

TEST(JsonWriter, IndentedStylePutsAnEmptyLineIntoWhatIsEmpty) {
    JsonWriter writer(JsonWriter::Style::Indented);
    writer.beginArray();
    writer.beginObject();
    writer.key(u"list");
    writer.beginArray();
    writer.endArray();
    writer.endObject();
    writer.beginObject();
    writer.endObject();
    writer.endArray();
    EXPECT_EQ(writer.take(), "[\n  {\n    \"list\" : [\n\n    ]\n  },\n  {\n\n  }\n]");
}

TEST(JsonWriter, ASinkGetsTheSameInPieces) {
    const auto write = [](JsonWriter& writer) {
        writer.beginArray();
        for (int index = 0; index < 20'000; ++index)
            writer.value(QStringView(QString("é\"%1").arg(index).repeated(10)));
        writer.value(QStringView(QString(1'000'000, u'x')));
        writer.endArray();
    };
    JsonWriter whole(JsonWriter::Style::Indented);
    write(whole);
    QByteArray joined;
    qsizetype longest = 0;
    JsonWriter pieces(JsonWriter::Style::Indented, [&](QByteArrayView piece) {
        joined.append(piece);
        longest = std::max(longest, piece.size());
    });
    write(pieces);
    EXPECT_EQ(pieces.take(), "");
    EXPECT_EQ(joined, whole.take());
    EXPECT_LT(longest, 400'000);
}

TEST(JsonWriter, NumbersThatJsonHasNotBecomeNull) {
    JsonWriter writer;
    writer.value(std::numeric_limits<double>::infinity());
    EXPECT_EQ(writer.take(), "null");
}

} // namespace
} // namespace vorq
