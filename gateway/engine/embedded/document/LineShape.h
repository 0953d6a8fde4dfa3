#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// What a single trimmed line looks like. None of these knows the lines around it.

[[nodiscard]] bool startsFence(std::string_view line);
/// A thematic break, the row of dashes below a table's head, or the underline of a heading.
[[nodiscard]] bool isRule(std::string_view line);
/// A row of a Markdown table or of comma, semicolon or tab separated values.
[[nodiscard]] bool isTableRow(std::string_view line);
/// The marker line that separates attached files in a request.
[[nodiscard]] bool isAttachmentLine(std::string_view line);
/// "[name]: address"
[[nodiscard]] bool isLinkDefinition(std::string_view line);
/// "Subject: …" and the like, in any of the known languages.
[[nodiscard]] bool isMailHeader(std::string_view line);
/// What follows "Subject:" without "Re:" in front; empty for any other line.
[[nodiscard]] std::string_view mailSubject(std::string_view line);
/// "On Monday Tom wrote:"
[[nodiscard]] bool isQuotationLine(std::string_view line);
/// The bytes of a list marker ("- ", "12. ", "[x] ") at the start of the line, 0 if there is none.
[[nodiscard]] std::size_t listMarker(std::string_view line);
/// The bytes of "## " at the start of the line, 0 if there is none.
[[nodiscard]] std::size_t headingMarker(std::string_view line);

/// A statement or the edge of a block in a program; comments and prose are neither.
[[nodiscard]] bool isStatement(std::string_view line);
/// Whether a text without Markdown fences is itself a program, most likely.
[[nodiscard]] bool isSourceCode(std::string_view text);
/// The words of a program: its comments and documentation strings, as lines of text.
[[nodiscard]] std::string commentsOf(std::string_view program);

/// Takes the first line off `text`, without its end; false if nothing is left.
[[nodiscard]] inline bool nextLine(std::string_view& text, std::string_view& line) {
    if (text.empty()) return false;
    const std::size_t end = text.find('\n');
    line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return true;
}

} // namespace vorq::gateway
