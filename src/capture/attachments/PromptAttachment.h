#pragma once

#include <QList>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <optional>

namespace vorq {

/// A file or note on a prompt, reduced to what can be sent: a text, an image, or both.
struct PromptAttachment {
    QUuid id = QUuid::createUuid();
    QString fileName;
    std::optional<QString> imageDataURL;
    std::optional<QString> textContent;
    std::optional<QUuid> noteID;
    bool isDeepenSelection = false;

    [[nodiscard]] bool isHubNote() const { return noteID.has_value(); }

    bool operator==(const PromptAttachment&) const = default;

    /// Extracted text is cut to this many characters.
    static constexpr qsizetype textLimit = 60000;
    /// No more bytes than this are read of a text; its limit lies within them for any real text.
    static constexpr qsizetype textByteLimit = 4 << 20;
    /// An image of this many bytes or more is refused.
    static constexpr qsizetype imageByteLimit = 3500000;

    /// Lower-case file extensions, without the dot.
    [[nodiscard]] static bool isImageExtension(QStringView extension);
    [[nodiscard]] static bool isOfficeExtension(QStringView extension);
    [[nodiscard]] static bool isDocumentExtension(QStringView extension);

    /// Whether what is written into a pipe may be read, which waits for its end.
    enum class Pipes : std::uint8_t { Refused, Read };
};

/// What follows the last dot of a file name, lower-cased; empty if there is no such dot, or only
/// one in front.
[[nodiscard]] QString pathExtension(QStringView fileName);

/// The titles of the chips that stand for the attachments, in their order.
[[nodiscard]] QStringList composerDisplayNames(const QList<PromptAttachment>& attachments);

/// All texts of the attachments, each under a line with its file name; empty if there are none.
[[nodiscard]] QString attachmentText(const QList<PromptAttachment>& attachments);

} // namespace vorq
