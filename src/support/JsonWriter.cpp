#include "support/JsonWriter.h"

#include <QtGlobal>

#include <charconv>
#include <cmath>

namespace vorq {

void JsonWriter::beginObject() {
    open('{');
}
void JsonWriter::endObject() {
    close('}');
}
void JsonWriter::beginArray() {
    open('[');
}
void JsonWriter::endArray() {
    close(']');
}

void JsonWriter::open(char bracket) {
    beforeValue();
    m_bytes += bracket;
    m_hasEntries.push_back(false);
}

void JsonWriter::close(char bracket) {
    Q_ASSERT(!m_hasEntries.empty() && !m_afterKey);
    const bool hadEntries = m_hasEntries.back();
    m_hasEntries.pop_back();
    if (!hadEntries && m_style == Style::Indented) m_bytes += '\n';
    lineBreak();
    m_bytes += bracket;
}

void JsonWriter::lineBreak() {
    if (m_style == Style::Compact) return;
    m_bytes += '\n';
    m_bytes.append(static_cast<qsizetype>(m_hasEntries.size()) * 2, ' ');
}

void JsonWriter::beforeValue() {
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_hasEntries.empty()) return;
    if (m_hasEntries.back()) m_bytes += ',';
    m_hasEntries.back() = true;
    lineBreak();
}

void JsonWriter::key(QStringView name) {
    Q_ASSERT(!m_hasEntries.empty() && !m_afterKey);
    beforeValue();
    string(name);
    m_bytes += m_style == Style::Compact ? ":" : " : ";
    m_afterKey = true;
}

void JsonWriter::value(QStringView text) {
    beforeValue();
    string(text);
}

void JsonWriter::value(bool truth) {
    beforeValue();
    m_bytes += truth ? "true" : "false";
}

void JsonWriter::value(qint64 number) {
    beforeValue();
    m_bytes += QByteArray::number(number);
}

void JsonWriter::value(double number) {
    if (!std::isfinite(number)) return null();
    beforeValue();
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    m_bytes.append(buffer, end - buffer);
}

void JsonWriter::null() {
    beforeValue();
    m_bytes += "null";
}

void JsonWriter::raw(QByteArrayView json) {
    beforeValue();
    m_bytes.append(json);
}

void JsonWriter::string(QStringView text) {
    static constexpr char hex[] = "0123456789abcdef";
    const QByteArray utf8 = text.toUtf8();
    m_bytes.reserve(m_bytes.size() + utf8.size() + 2);
    m_bytes += '"';
    for (const char c : utf8) {
        switch (c) {
        case '"':
            m_bytes += "\\\"";
            break;
        case '\\':
            m_bytes += "\\\\";
            break;
        case '\n':
            m_bytes += "\\n";
            break;
        case '\r':
            m_bytes += "\\r";
            break;
        case '\t':
            m_bytes += "\\t";
            break;
        case '\b':
            m_bytes += "\\b";
            break;
        case '\f':
            m_bytes += "\\f";
            break;
        case '/':
            m_bytes += m_style == Style::Indented ? "\\/" : "/";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                m_bytes += "\\u00";
                m_bytes += hex[static_cast<unsigned char>(c) >> 4];
                m_bytes += hex[c & 0xF];
            } else {
                m_bytes += c;
            }
        }
    }
    m_bytes += '"';
}

} // namespace vorq
