#include "capture/attachments/FailureSentences.h"

#include <QCoreApplication>

namespace vorq {

QString sentenceOf(DocumentFailure failure) {
    const auto say = [](const char* sentence) {
        return QCoreApplication::translate("PromptAttachment", sentence);
    };
    switch (failure) {
    case DocumentFailure::Protected:
        return say(QT_TRANSLATE_NOOP("PromptAttachment", "the file is protected by a password."));
    case DocumentFailure::TooLarge:
        return say(QT_TRANSLATE_NOOP("PromptAttachment",
                                     "the document is too large; at most 256 MB can be "
                                     "attached."));
    case DocumentFailure::Animated:
        return say(QT_TRANSLATE_NOOP("PromptAttachment", "the picture is animated."));
    case DocumentFailure::TimedOut:
        return say(QT_TRANSLATE_NOOP("PromptAttachment", "reading the file took too long."));
    case DocumentFailure::Stopped:
        return say(QT_TRANSLATE_NOOP("PromptAttachment", "reading the file was stopped."));
    case DocumentFailure::NoTool:
        return say(QT_TRANSLATE_NOOP("PromptAttachment",
                                     "the program that reads such files is not installed."));
    case DocumentFailure::NoRoom:
        return say(QT_TRANSLATE_NOOP("PromptAttachment",
                                     "there is no room for a copy of it among the temporary "
                                     "files."));
    case DocumentFailure::Unreadable:
        break;
    }
    return say(QT_TRANSLATE_NOOP("PromptAttachment", "the file is damaged or of another kind."));
}

} // namespace vorq
