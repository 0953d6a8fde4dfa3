#pragma once

#include "support/files/FileStamp.h"

#include <QByteArrayView>
#include <QString>

#include <chrono>
#include <expected>
#include <functional>

namespace vorq {

/// The stamp of the new file, from before it had its name: what others write there at once has
/// another. The error says what the system had against it, such as "No space left on device".
using FileOutcome = std::expected<FileStamp, QString>;

/// How a file is replaced.
struct FileRules {
    /// Of mode 0600 from before its first byte. Else of the former file's mode, and a new one as
    /// the user's mask has it.
    bool isPrivate = true;
    /// A former file that the user may not write makes it fail, as writing into it would.
    bool mindsProtection = false;
    /// The new file is there after a loss of power as well. Else the former one may be, whole.
    bool flushesFolder = true;
};

/// The rules for what the user keeps open to others and may edit or protect, such as desktop
/// entries.
inline constexpr FileRules sharedFile{.isPrivate = false, .mindsProtection = true};

/// The one way to write a file. Puts a file with this content in the place of whatever stands at
/// the path, at once and only after it is on the disk; readers see the former content or the new
/// one. After a failure the former file is as it was. The folder must be there.
///
/// A symbolic link stays, and the file it leads to is replaced. A link into a folder that is not
/// there, as of a drive that is not mounted, makes it fail; links in a circle are replaced. A large
/// former file gives its space back a little later, on a thread of its own.
FileOutcome replaceFile(const QString& path, QByteArrayView content, const FileRules& rules = {});

/// Gives the pieces of a file's content to `put`, in their order.
using FileContent = std::function<void(const std::function<void(QByteArrayView)>& put)>;

/// The same with content that is never in memory as a whole.
FileOutcome replaceFile(const QString& path, const FileContent& content,
                        const FileRules& rules = {});

/// Whether that would change nothing for a private file: it has this content and mode, and they are
/// on the disk.
bool holdsContent(const QString& path, const FileContent& content);

/// Removes what killed processes left of replacing files in the folder of this one. Takes nothing
/// that is younger than this, which a process may be about to lock, nor what a living process still
/// writes.
void removeLeftovers(const QString& path, std::chrono::seconds age = std::chrono::minutes(1));

} // namespace vorq
