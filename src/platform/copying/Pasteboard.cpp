#include "platform/copying/Pasteboard.h"

namespace vorq {

PasteboardContents pasteboardText(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const auto form = [&](const char* name, const char* type) {
        return PasteboardForm{.name = name, .bytes = bytes, .type = type};
    };
    return {form("UTF8_STRING", "UTF8_STRING"),
            form("text/plain;charset=utf-8", "text/plain;charset=utf-8"),
            // What is asked for as "TEXT" may be of any type.
            form("TEXT", "UTF8_STRING")};
}

} // namespace vorq
