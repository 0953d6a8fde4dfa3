#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <memory>
#include <optional>

struct UConverter;

namespace vorq {

/// Decodes the bytes of RTF by Windows code pages, and 10000 for the Macintosh. One object is for
/// one thread at a time.
class RtfCodePages {
  public:
    static constexpr int western = 1252;
    static constexpr int macRoman = 10000;
    static constexpr int symbol = 42; ///< fonts of symbols, which are in no character set

    /// The code page of a font's character set, or nothing if it has none of its own.
    [[nodiscard]] static std::optional<int> ofCharset(int charset);

    /// Bytes of an unknown code page are read as western. Symbols become U+F000 and the byte, as
    /// word processors have them, except for bullets.
    [[nodiscard]] QString decoded(const QByteArray& bytes, int codePage);

  private:
    struct CloseConverter {
        void operator()(UConverter* converter) const;
    };

    [[nodiscard]] UConverter* converter(int codePage);

    std::map<int, std::unique_ptr<UConverter, CloseConverter>> m_converters; // null for unknown
};

} // namespace vorq
