#pragma once

#include <QByteArrayView>
#include <QLatin1StringView>

#include <cstdint>

namespace vorq {

/// One piece of RTF.
struct RtfToken {
    enum class Kind : std::uint8_t {
        GroupStart,
        GroupEnd,
        Word,   ///< a control word: word, and number if hasNumber
        Symbol, ///< a control symbol: byte
        Hex,    ///< a byte given by its number: byte
        Text,   ///< bytes of text, without line breaks
        Binary, ///< data that was passed over
        Broken, ///< what means nothing
        End,
    };
    Kind kind = Kind::End;
    QLatin1StringView word{};
    int number = 0;
    bool hasNumber = false;
    std::uint8_t byte = 0;
    QByteArrayView text{};
};

/// Cuts RTF into its pieces. Any bytes are fine; what is broken is passed over. The bytes must
/// outlive the tokens.
class RtfLexer {
  public:
    explicit RtfLexer(QByteArrayView rtf) : m_rest(rtf) {}

    [[nodiscard]] RtfToken next();

  private:
    [[nodiscard]] RtfToken takeControl();
    [[nodiscard]] RtfToken takeWord();
    [[nodiscard]] RtfToken takeHex();
    [[nodiscard]] RtfToken takeText();
    void takeNumber(RtfToken& token);

    QByteArrayView m_rest;
};

} // namespace vorq
