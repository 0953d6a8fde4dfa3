#pragma once

#include <QByteArrayView>
#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace vorq {

template<typename Enumeration>
struct RawName {
    Enumeration value;
    std::string_view raw; ///< in Latin-1
};

/// The names by which the cases of an enumeration are stored or sent. A case may have
/// several: the first is the one that is written.
template<typename Enumeration, std::size_t Size>
class RawNames {
  public:
    using Row = RawName<Enumeration>;

    consteval explicit RawNames(const Row (&rows)[Size]) : m_rows(std::to_array(rows)) {}

    /// "" for a case without a name.
    [[nodiscard]] constexpr std::string_view latin1(Enumeration value) const {
        const auto row = std::ranges::find(m_rows, value, &Row::value);
        return row == m_rows.end() ? std::string_view() : row->raw;
    }
    [[nodiscard]] QString nameOf(Enumeration value) const {
        const std::string_view raw = latin1(value);
        return QString::fromLatin1(raw.data(), static_cast<qsizetype>(raw.size()));
    }

    /// Nothing for a name that is not in the table.
    [[nodiscard]] std::optional<Enumeration> caseOf(QByteArrayView latin1) const {
        for (const Row& row : m_rows)
            if (latin1 == QByteArrayView(row.raw)) return row.value;
        return std::nullopt;
    }
    [[nodiscard]] std::optional<Enumeration> caseOf(QStringView name) const {
        for (const Row& row : m_rows)
            if (name == QLatin1StringView(row.raw.data(), static_cast<qsizetype>(row.raw.size())))
                return row.value;
        return std::nullopt;
    }
    /// Nothing where nothing is stored, either.
    [[nodiscard]] std::optional<Enumeration> caseOf(const std::optional<QString>& stored) const {
        return stored ? caseOf(QStringView(*stored)) : std::nullopt;
    }

  private:
    std::array<Row, Size> m_rows;
};

/// A table such as rawNames<Size>({{Size::Small, "small"}, {Size::Large, "large"}}).
template<typename Enumeration, std::size_t Size>
[[nodiscard]] consteval RawNames<Enumeration, Size>
rawNames(const RawName<Enumeration> (&rows)[Size]) {
    return RawNames<Enumeration, Size>(rows);
}

} // namespace vorq
