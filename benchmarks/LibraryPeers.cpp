#include "LibraryPeers.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <rapidjson/reader.h>
#include <rapidjson/writer.h>
#include <simdjson.h>
#include <string_view>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq::bench {
namespace {

constexpr std::array<std::string_view, 4> areas = {"writing", "research", "study", "personal"};

void demand(bool isTrue) {
    if (!isTrue) std::abort();
}

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

HubArea area(std::string_view raw) {
    for (std::size_t index = 0; index < areas.size(); ++index) {
        if (areas[index] == raw) return static_cast<HubArea>(index);
    }
    std::abort();
}

// The members of a note, all of which are strings but the cards.
void setMember(SavedNote& note, std::string_view key, std::string_view value) {
    if (key == "area")
        note.area = area(value);
    else if (key == "createdAt")
        note.createdAt = dateFromIso(QByteArrayView(value)).value();
    else if (key == "id")
        note.id = QUuid::fromString(QLatin1StringView(value));
    else if (key == "text")
        note.text = text(value);
    else if (key == "thoughts")
        note.thoughts = text(value);
}

void setMember(Flashcard& card, std::string_view key, std::string_view value) {
    if (key == "back")
        card.back = text(value);
    else if (key == "front")
        card.front = text(value);
    else if (key == "id")
        card.id = QUuid::fromString(QLatin1StringView(value));
}

class NoteHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, NoteHandler> {
  public:
    std::vector<SavedNote> notes;

    bool StartObject() {
        if (m_arrays == 1)
            notes.emplace_back();
        else
            notes.back().flashcards.emplace_back();
        return true;
    }
    bool StartArray() {
        ++m_arrays;
        return true;
    }
    bool EndArray(rapidjson::SizeType /*count*/) {
        --m_arrays;
        return true;
    }
    bool Key(const char* key, rapidjson::SizeType size, bool /*copy*/) {
        m_key = {key, size};
        return true;
    }
    bool String(const char* value, rapidjson::SizeType size, bool /*copy*/) {
        if (m_arrays == 1)
            setMember(notes.back(), m_key, {value, size});
        else
            setMember(notes.back().flashcards.back(), m_key, {value, size});
        return true;
    }

  private:
    int m_arrays = 0;
    std::string_view m_key;
};

QByteArray contentOf(const QString& path) {
    QFile file(path);
    demand(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

// A writer of either encoding.
template<typename Writer, typename String>
void writeNotes(Writer& writer, const std::vector<SavedNote>& notes, String string) {
    const auto member = [&](const char* key, const QString& value) {
        string(QString::fromLatin1(key));
        string(value);
    };
    const auto id = [](const QUuid& uuid) { return uuid.toString(QUuid::WithoutBraces).toUpper(); };
    writer.StartArray();
    for (const SavedNote& note : notes) {
        writer.StartObject();
        member("area", text(areas[static_cast<std::size_t>(note.area)]));
        member("createdAt", QString::fromLatin1(isoDate(note.createdAt)));
        string(u"flashcards"_s);
        writer.StartArray();
        for (const Flashcard& card : note.flashcards) {
            writer.StartObject();
            member("back", card.back);
            member("front", card.front);
            member("id", id(card.id));
            writer.EndObject();
        }
        writer.EndArray();
        member("id", id(note.id));
        member("text", note.text);
        member("thoughts", note.thoughts);
        writer.EndObject();
    }
    writer.EndArray();
}

} // namespace

std::vector<SavedNote> loadByOnDemand(const QString& path) {
    namespace ondemand = simdjson::ondemand;
    const auto content = simdjson::padded_string::load(path.toStdString());
    ondemand::parser parser;
    ondemand::document document = parser.iterate(content);
    std::vector<SavedNote> notes;
    for (ondemand::object record : document.get_array()) {
        SavedNote& note = notes.emplace_back();
        for (ondemand::field field : record) {
            const std::string_view key = field.unescaped_key();
            if (key != "flashcards") {
                setMember(note, key, field.value().get_string());
                continue;
            }
            for (ondemand::object cardRecord : field.value().get_array()) {
                Flashcard& card = note.flashcards.emplace_back();
                for (ondemand::field member : cardRecord) {
                    const std::string_view name = member.unescaped_key();
                    setMember(card, name, member.value().get_string());
                }
            }
        }
    }
    return notes;
}

std::vector<SavedNote> loadByRapidJson(const QString& path) {
    QByteArray content = contentOf(path);
    NoteHandler handler;
    rapidjson::InsituStringStream stream(content.data());
    demand(
        static_cast<bool>(rapidjson::Reader().Parse<rapidjson::kParseInsituFlag>(stream, handler)));
    return std::move(handler.notes);
}

std::vector<SavedNote> loadByQJson(const QString& path) {
    std::vector<SavedNote> notes;
    for (const QJsonValue& value : QJsonDocument::fromJson(contentOf(path)).array()) {
        const QJsonObject record = value.toObject();
        SavedNote& note = notes.emplace_back();
        note.id = QUuid(record["id"].toString());
        note.text = record["text"].toString();
        note.thoughts = record["thoughts"].toString();
        note.area = area(record["area"].toString().toStdString());
        note.createdAt = dateFromIso(record["createdAt"].toString().toLatin1()).value();
        for (const QJsonValue& cardValue : record["flashcards"].toArray()) {
            const QJsonObject card = cardValue.toObject();
            note.flashcards.push_back(
                {QUuid(card["id"].toString()), card["front"].toString(), card["back"].toString()});
        }
    }
    demand(!notes.empty());
    return notes;
}

std::size_t encodeByRapidJson16(const std::vector<SavedNote>& notes) {
    using Encoding = rapidjson::UTF16<char16_t>;
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer, Encoding, rapidjson::UTF8<>> writer(buffer);
    writeNotes(writer, notes, [&writer](const QString& value) {
        writer.String(reinterpret_cast<const char16_t*>(value.utf16()),
                      static_cast<rapidjson::SizeType>(value.size()));
    });
    return buffer.GetSize();
}

std::size_t encodeByRapidJson8(const std::vector<SavedNote>& notes) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writeNotes(writer, notes, [&writer](const QString& value) {
        const QByteArray utf8 = value.toUtf8();
        writer.String(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
    });
    return buffer.GetSize();
}

void savePlainly(const QString& path, const QByteArray& content) {
    const QByteArray target = QFile::encodeName(path);
    const QByteArray temporary = target + ".new";
    const int file = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    demand(file >= 0);
    for (qsizetype done = 0; done < content.size();) {
        const ssize_t written = ::write(file, content.constData() + done,
                                        static_cast<std::size_t>(content.size() - done));
        demand(written > 0);
        done += written;
    }
    demand(::fsync(file) == 0 && ::close(file) == 0);
    demand(std::rename(temporary.constData(), target.constData()) == 0);
}

} // namespace vorq::bench
