#pragma once

#include <QByteArray>
#include <QStringView>

#include <functional>
#include <utility>
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

    /// Takes pieces of the document, in their order.
    using Sink = std::function<void(QByteArrayView piece)>;

    explicit JsonWriter(Style style = Style::Compact) : m_style(style) {}
    /// Gives what is written away in pieces, so that no more than one is in memory.
    JsonWriter(Style style, Sink sink) : m_style(style), m_sink(std::move(sink)) {}

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

    /// The document. Empty with a sink, which gets the rest.
    QByteArray take();

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
    Sink m_sink;
    QByteArray m_bytes; // with room at its end
    qsizetype m_size = 0;
    std::vector<bool> m_hasEntries; // one a level
    bool m_afterKey = false;
};

} // namespace vorq
