#include "support/json/JsonText.h"

#include "support/json/JsonWriter.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

std::optional<QString> unescaped(std::string_view body) {
    QString text;
    if (!unescapeJson(body, text)) return std::nullopt;
    return text;
}

TEST(JsonText, ReadsPlainTextOfAnyLength) {
    for (qsizetype size = 0; size < 70; ++size) {
        const QByteArray body = QByteArray("0123456789abcdef/\x7F").repeated(5).first(size);
        EXPECT_EQ(unescaped(body.toStdString()), QString::fromLatin1(body));
    }
}

TEST(JsonText, ReadsEveryEscape) {
    EXPECT_EQ(unescaped(R"(\"\\\/\b\f\n\r\t\u0041\u00e9\u65E5\ud83d\uDC4b)"),
              "\"\\/\b\f\n\r\tAé日👋");
    EXPECT_EQ(unescaped(R"(\u0000)"), QString(QChar(u'\0')));
}

TEST(JsonText, ReadsCharactersOfAnyLengthAtAnyPlace) {
    for (qsizetype before = 0; before < 40; ++before) {
        const QString text = QString(before, u'x') + "é日👋\uFEFFy\\ü" + QString(before, u'z');
        const QByteArray body = text.toUtf8().replace("\\", "\\\\");
        EXPECT_EQ(unescaped(body.toStdString()), text);
    }
}

TEST(JsonText, RefusesWhatIsNoEscape) {
    for (const char* body : {R"(\)", R"(\x)", R"(\')", R"(\u)", R"(\u12)", R"(\u12g4)", R"(\U0041)",
                             R"(\ud83d)", R"(\ud83dx)", R"(\ud83d\n)", R"(\ud83d\u0041)",
                             R"(\ud83d\ud83d)", R"(\udc00)", R"(a\udc4b\ud83d)"})
        EXPECT_EQ(unescaped(body), std::nullopt) << body;
}

TEST(JsonText, KeepsNoRoomThatTheTextDoesNotNeed) {
    const QString text(1000, u'日');
    const std::optional<QString> read = unescaped(text.toUtf8().toStdString());
    ASSERT_EQ(read, text);
    EXPECT_LT(read->capacity(), 1100);
}

TEST(JsonText, ReadsWhatTheWriterWrites) {
    QString text;
    for (char16_t unit = 0; unit < 0xD800; unit = static_cast<char16_t>(unit + 7))
        text += QChar(unit);
    for (int shift = 0; shift < 20; ++shift) {
        text.prepend(u'x');
        JsonWriter writer(JsonWriter::Style::Indented);
        writer.value(QStringView(text));
        const QByteArray json = writer.take();
        EXPECT_EQ(unescaped(std::string_view(json).substr(1, std::size_t(json.size()) - 2)), text);
    }
}

} // namespace
} // namespace vorq
