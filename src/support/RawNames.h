#pragma once

#include <QByteArrayView>
#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

namespace vorq {

template<typename Enumeration>
struct RawName {
    Enumeration value;
    std::string_view raw; ///< in Latin-1
};

namespace raw_names {

/// Whether a value of an enumeration is one of its cases. The compiler tells what is none as a
/// number behind a type in parentheses.
template<auto Value>
consteval bool isCase() {
    const std::string_view told = __PRETTY_FUNCTION__;
    const char after = told[told.rfind(')') + 1];
    return after != '-' && (after < '0' || after > '9');
}

/// Whether each case has a row. Cases count from 0 and are fewer than 64.
template<typename Enumeration, std::size_t Size>
consteval bool nameEveryCase(const RawName<Enumeration> (&rows)[Size]) {
    const auto hasRow = [&rows](Enumeration value) {
        return std::ranges::find(rows, value, &RawName<Enumeration>::value) != std::end(rows);
    };
    const auto isNamed = [&hasRow]<std::size_t... I>(std::index_sequence<I...>) {
        return ((!isCase<static_cast<Enumeration>(I)>() || hasRow(static_cast<Enumeration>(I))) &&
                ...);
    };
    return isNamed(std::make_index_sequence<64>());
}

} // namespace raw_names

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

/// A table such as rawNames<Size>({{Size::Small, "small"}, {Size::Large, "large"}}). Does not
/// compile if a case has no name, which would be stored as "".
template<typename Enumeration, std::size_t Size>
[[nodiscard]] consteval RawNames<Enumeration, Size>
rawNames(const RawName<Enumeration> (&rows)[Size]) {
    if (!raw_names::nameEveryCase(rows)) throw "a case has no name";
    return RawNames<Enumeration, Size>(rows);
}

/// The same where some cases have no name on purpose, as they are never stored.
template<typename Enumeration, std::size_t Size>
[[nodiscard]] consteval RawNames<Enumeration, Size>
rawNamesOfSome(const RawName<Enumeration> (&rows)[Size]) {
    return RawNames<Enumeration, Size>(rows);
}

} // namespace vorq
