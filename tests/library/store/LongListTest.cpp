// Lists that are read in more than one piece, as each long list in our style is. What the same
// bytes give in one piece is what they must give from a file.

#include "doubles/library/LibraryFolder.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qsizetype pieceSize = 128 * 1024;
constexpr const char* between = "\n  },\n  {";

class LongList : public LibraryFolder {
  protected:
    static std::vector<SavedNote> notesOf(qsizetype count, qsizetype length) {
        std::vector<SavedNote> notes = oneNote(QString());
        notes.resize(static_cast<std::size_t>(count), notes.front());
        for (SavedNote& note : notes) {
            note.id = QUuid::createUuid();
            note.text = u"\n  },\n  {"_s;
            note.thoughts = QString(length + (&note - notes.data()) % 7, u'é');
            note.flashcards = {{QUuid::createUuid(), "[", "]"}, {QUuid::createUuid(), "", ""}};
        }
        return notes;
    }

    // Where the text is cut: at the last places between entries that a piece has room for.
    static std::vector<qsizetype> cutsIn(const QByteArray& text) {
        std::vector<qsizetype> cuts;
        for (qsizetype from = 0; from + pieceSize < text.size(); from = cuts.back())
            cuts.push_back(text.lastIndexOf(between, from + pieceSize - 9) + 4);
        return cuts;
    }

    void expectReadAsInOnePiece(const QByteArray& text, qsizetype at) {
        put(text);
        EXPECT_EQ(m_store.loadNotes(), decodeSavedNotes(text).value_or(std::vector<SavedNote>()))
            << text.mid(std::max<qsizetype>(at - 20, 0), 40).toStdString();
    }
};

TEST_F(LongList, ComesBackWhole) {
    for (const qsizetype length : {1, 60, 1500, 70'000, 400'000}) {
        const std::vector<SavedNote> notes =
            notesOf(std::clamp<qsizetype>(1'500'000 / length, 3, 5000), length);
        ASSERT_GT(encode(notes).size(), 3 * pieceSize);
        m_store.save(notes);
        EXPECT_EQ(m_store.loadNotes(), notes) << length;
    }
}

TEST_F(LongList, OfAnyLengthAroundAPieceComesBackWhole) {
    std::vector<SavedNote> notes = notesOf(2, 1000);
    const qsizetype rest = encode(notes).size() - 2 * 1000;
    for (qsizetype length = pieceSize - rest - 2000; length < pieceSize - rest; length += 23) {
        notes.front().thoughts = QString(length, u'x');
        m_store.save(notes);
        EXPECT_EQ(m_store.loadNotes(), notes) << length;
    }
}

TEST_F(LongList, InOtherStylesIsReadToo) {
    const std::vector<SavedNote> notes = notesOf(1000, 400);
    const QJsonDocument document = QJsonDocument::fromJson(encode(notes));
    for (const QJsonDocument::JsonFormat format :
         {QJsonDocument::Compact, QJsonDocument::Indented}) {
        put(document.toJson(format));
        EXPECT_EQ(m_store.loadNotes(), notes);
    }
    QByteArray windows = encode(notes);
    windows.replace("\n", "\r\n");
    put(windows);
    EXPECT_EQ(m_store.loadNotes(), notes);
}

// What looks like the place between two entries is between two cards of one.
TEST_F(LongList, WithCardsWhereEntriesAreUsuallyIsReadToo) {
    std::vector<SavedNote> notes = notesOf(2, 10);
    notes.front().flashcards.resize(10'000, notes.front().flashcards.front());
    QByteArray text = encode(notes);
    text.replace("\n      ", "\n  ");
    ASSERT_GT(text.indexOf(between), 0);
    put(text);
    EXPECT_EQ(m_store.loadNotes(), notes);
}

TEST_F(LongList, WithEqualKeysTakesTheLast) {
    const std::vector<SavedNote> notes = notesOf(1000, 400);
    QByteArray text = encode(notes);
    const qsizetype last = text.lastIndexOf("\"area\"");
    text.insert(last, "\"area\":1,");
    put(text);
    EXPECT_EQ(m_store.loadNotes(), notes);
}

TEST_F(LongList, DamagedWhereItIsCutIsReadAsInOnePiece) {
    const QByteArray whole = encode(notesOf(150, 400));
    const std::vector<qsizetype> cuts = cutsIn(whole);
    ASSERT_FALSE(cuts.empty());
    for (const qsizetype cut : cuts) {
        ASSERT_EQ(whole.mid(cut - 4, 9), between);
        for (qsizetype at = cut - 6; at < cut + 8; ++at) {
            for (const char other : {'[', ']', '}', ',', '"', '\n'}) {
                QByteArray damaged = whole;
                damaged[at] = other;
                expectReadAsInOnePiece(damaged, at);
            }
        }
    }
}

TEST_F(LongList, CutOffOrGrownWhereItIsCutIsReadAsInOnePiece) {
    const QByteArray whole = encode(notesOf(150, 400));
    for (const qsizetype cut : cutsIn(whole)) {
        for (qsizetype at = cut - 6; at < cut + 8; ++at) {
            expectReadAsInOnePiece(whole.first(at), at);
            for (const char* more : {",", "]", "[", "],[", "{},", "}, {", " ", "1,"}) {
                QByteArray grown = whole;
                grown.insert(at, more);
                expectReadAsInOnePiece(grown, at);
            }
        }
    }
}

TEST_F(LongList, MayNotEndInACommaOrGoOnAfterItsEnd) {
    const QByteArray whole = encode(notesOf(150, 400));
    ASSERT_TRUE(whole.endsWith("\n  }\n]"));
    for (const char* end :
         {",\n]", "\n],", "\n]\n]", "\n],\n  {", ",\n  {", ",\n  {\n  }\n]", "", "\n", "\n}"}) {
        put(whole.chopped(2) + end);
        EXPECT_TRUE(m_store.loadNotes().empty()) << end;
    }
    put(whole.chopped(2) + ',' + QByteArray(2 * pieceSize, ' ') + ']');
    EXPECT_TRUE(m_store.loadNotes().empty());
}

} // namespace
} // namespace vorq
