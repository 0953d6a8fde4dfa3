#pragma once

#include <QByteArray>
#include <QStringView>

#include <vector>

namespace vorq {

/// Writes one JSON document as UTF-8, in the order in which it is told.
///
/// Nothing is checked against misuse except by assertion: keys belong into objects, values into
/// arrays or after a key. Lone surrogates become question marks.
class JsonWriter {
  public:
    enum class Style {
        Compact, ///< no white space
        /// Two blanks a level, " : " after a key, "/" written as "\/", an empty line in what is
        /// empty.
        Indented,
    };

    explicit JsonWriter(Style style = Style::Compact) : m_style(style) {}

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void key(QStringView name);
    /// A key in ASCII without anything to escape.
    void plainKey(QByteArrayView name);

    void value(QStringView text);
    void value(bool truth);
    void value(qint64 number);
    void value(int number) { value(qint64{number}); }
    void value(double number);
    void null();

    /// A string in ASCII without anything to escape.
    void plainString(QByteArrayView text);

    /// A value that is JSON already, as it stands.
    void raw(QByteArrayView json);

    // A literal would otherwise quietly become a bool.
    void value(const char*) = delete;

    /// Key and value in one.
    template<typename Value>
    void member(QStringView name, const Value& held) {
        key(name);
        value(held);
    }

    [[nodiscard]] QByteArray take();

  private:
    void open(char bracket);
    void close(char bracket);
    void beforeValue();
    void lineBreak();
    void string(QStringView text);
    void afterKey();
    void put(QByteArrayView bytes);
    [[nodiscard]] char* grow(qsizetype size);
    void makeRoom(qsizetype size);

    Style m_style;
    QByteArray m_bytes; // with room at its end
    qsizetype m_size = 0;
    std::vector<bool> m_hasEntries; // one a level
    bool m_afterKey = false;
};

} // namespace vorq
