#pragma once

#include "doubles/async/TurnUntil.h"
#include "platform/copying/Pasteboard.h"

#include <memory>
#include <optional>
#include <stdexcept>

namespace vorq::desktop {

/// Turns the event loop until the task has ended, and gives its result.
template<typename Result>
Result awaited(QCoro::Task<Result> task) {
    const auto result = std::make_shared<std::optional<Result>>();
    const auto drive = [](QCoro::Task<Result> driven,
                          std::shared_ptr<std::optional<Result>> into) -> QCoro::Task<> {
        *into = co_await driven;
    };
    drive(std::move(task), result);
    if (!turnUntil([&] { return result->has_value(); }))
        throw std::runtime_error("the task does not end");
    return **result;
}

inline PasteboardForm clipboardForm(const char* name, const QByteArray& bytes) {
    return {.name = name, .bytes = bytes, .type = name};
}

/// What users have in their clipboards: text, a page, a picture, files, and what only one program
/// knows, some of it long.
inline PasteboardContents richContents() {
    return {clipboardForm("text/html", "<b>of the user</b>"),
            clipboardForm("UTF8_STRING", "of the user"),
            {.name = "TEXT", .bytes = "of the user", .type = "UTF8_STRING"},
            clipboardForm("image/png", QByteArray("\x89PNG\r\n\0\x1a", 8).repeated(200'000)),
            clipboardForm("text/uri-list", "file:///tmp/one\r\nfile:///tmp/two\r\n"),
            {.name = "vnd.numbers", .bytes = QByteArray(40, '\3'), .type = "INTEGER", .unit = 32},
            clipboardForm("vnd.nothing", "")};
}

} // namespace vorq::desktop
