#include "support/files/DurableFile.h"

#include "support/async/OnPool.h"
#include "support/files/DurableFolder.h"
#include "support/files/LinkTarget.h"
#include "support/files/SystemError.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr char temporaryPrefix[] = ".vorq-save-";
constexpr qsizetype temporaryPrefixSize = sizeof temporaryPrefix - 1;
constexpr qsizetype temporarySuffixSize = 6;
constexpr mode_t allPermissions = 0777;
constexpr mode_t privateMode = S_IRUSR | S_IWUSR;

// An error number; 0 if all of it is written.
int writeAll(int file, QByteArrayView content) {
    while (!content.isEmpty()) {
        const ssize_t written =
            ::write(file, content.data(), static_cast<std::size_t>(content.size()));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return written < 0 ? errno : EIO;
        content = content.sliced(written);
    }
    return 0;
}

// Content on its way to the disk, which begins while the rest is still to come. Does not own the
// file.
class GrowingContent {
  public:
    explicit GrowingContent(int file) : m_file(file) {}

    void put(QByteArrayView piece) {
        if (m_error == 0) m_error = writeAll(m_file, piece);
        m_size += piece.size();
        if (m_error != 0 || m_size - m_begun < step) return;
        const qint64 wholeSteps = m_size - m_size % step;
        ::sync_file_range(m_file, m_begun, wholeSteps - m_begun, SYNC_FILE_RANGE_WRITE);
        m_begun = wholeSteps;
    }
    // An error number; 0 if all of it is on the disk.
    // A file system that cannot flush has done all it can.
    [[nodiscard]] int flush() const {
        if (m_error != 0 || ::fsync(m_file) == 0) return m_error;
        const bool isRefused = errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
        return isRefused ? 0 : errno;
    }

  private:
    static constexpr qint64 step = qint64{4} << 20;

    int m_file;
    int m_error = 0;
    qint64 m_size = 0;
    qint64 m_begun = 0;
};

// A file that is about to lose its name. To give back the memory and the space of a large one takes
// milliseconds, for which nobody is to wait; it happens where the last who holds the file lets go
// of it, here on a thread of its own.
class FormerFile {
  public:
    explicit FormerFile(const QByteArray& path)
        : m_file(::open(path.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC)) {}
    FormerFile(const FormerFile&) = delete;
    FormerFile& operator=(const FormerFile&) = delete;
    ~FormerFile() {
        if (m_file < 0) return;
        if (isLarge())
            leaveToPool([file = m_file] { ::close(file); });
        else
            ::close(m_file);
    }

  private:
    [[nodiscard]] bool isLarge() const {
        constexpr off_t large = off_t{1} << 20;
        struct stat status{};
        return ::fstat(m_file, &status) == 0 && status.st_size >= large;
    }

    int m_file;
};

// Reads a file along with a content that it is compared to.
class Comparison {
  public:
    explicit Comparison(int file) : m_file(file) {}

    void take(QByteArrayView piece) {
        std::array<char, 4096> read{};
        while (m_isEqual && !piece.isEmpty()) {
            const std::size_t most = std::min(read.size(), static_cast<std::size_t>(piece.size()));
            const ssize_t size = ::read(m_file, read.data(), most);
            if (size < 0 && errno == EINTR) continue;
            m_isEqual = size > 0 && piece.startsWith(QByteArrayView(read.data(), size));
            if (m_isEqual) piece = piece.sliced(size);
        }
    }

    [[nodiscard]] bool isEqual() const {
        char more = 0;
        return m_isEqual && ::read(m_file, &more, 1) == 0;
    }

  private:
    int m_file;
    bool m_isEqual = true;
};

bool isPrivateFile(int file) {
    struct stat status{};
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
           (status.st_mode & allPermissions) == privateMode;
}

// What the user's mask leaves of a new file's mode. To ask for the mask would set it, for all
// threads.
mode_t modeOfNewFile() {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly)) return privateMode;
    constexpr QByteArrayView name = "\nUmask:";
    const QByteArray facts = status.readAll();
    const qsizetype start = facts.indexOf(name);
    if (start < 0) return privateMode;
    const QByteArray line = facts.sliced(start + name.size());
    return 0666 & ~static_cast<mode_t>(line.first(line.indexOf('\n')).trimmed().toUInt(nullptr, 8));
}

mode_t modeLike(const QByteArray& former) {
    struct stat status{};
    if (::stat(former.constData(), &status) != 0) return modeOfNewFile();
    return status.st_mode & allPermissions;
}

// An error number; 0 if nothing keeps the user from writing the file, or there is none.
int protectionOf(const QByteArray& path) {
    return ::access(path.constData(), W_OK) == 0 || errno == ENOENT ? 0 : errno;
}

bool hasTemporaryName(QByteArrayView name) {
    return name.startsWith(temporaryPrefix) &&
           name.size() == temporaryPrefixSize + temporarySuffixSize;
}

// Ours, old, and locked by nobody.
bool isLeftover(int file, std::chrono::seconds age) {
    struct stat status{};
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
           status.st_mtime <= std::time(nullptr) - age.count() &&
           ::flock(file, LOCK_EX | LOCK_NB) == 0;
}

} // namespace

FileOutcome replaceFile(const QString& path, QByteArrayView content, const FileRules& rules) {
    return replaceFile(path, [content](const auto& put) { put(content); }, rules);
}

FileOutcome replaceFile(const QString& path, const FileContent& content, const FileRules& rules) {
    const QByteArray target = linkTarget(path);
    if (const int error = rules.mindsProtection ? protectionOf(target) : 0; error != 0)
        return std::unexpected(systemError(error));
    const QByteArray folder = folderOf(target);
    QByteArray temporary = folder + '/' + temporaryPrefix + QByteArray(temporarySuffixSize, 'X');
    const int file = ::mkostemp(temporary.data(), O_CLOEXEC); // of mode 0600
    if (file < 0) return std::unexpected(systemError(errno));
    ::flock(file, LOCK_EX | LOCK_NB); // tells removeLeftovers() that we live
    GrowingContent growing(file);
    content([&growing](QByteArrayView piece) { growing.put(piece); });
    const bool hasMode = rules.isPrivate || ::fchmod(file, modeLike(target)) == 0;
    int error = hasMode ? growing.flush() : errno;
    const FileStamp stamp = fileStamp(file);
    if (::close(file) != 0 && error == 0) error = errno;
    const FormerFile former(target);
    if (error == 0 && std::rename(temporary.constData(), target.constData()) != 0) error = errno;
    if (error != 0) {
        ::unlink(temporary.constData());
        return std::unexpected(systemError(error));
    }
    if (rules.flushesFolder) flushFolder(folder);
    return stamp;
}

bool holdsContent(const QString& path, const FileContent& content) {
    const int file = ::open(linkTarget(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return false;
    Comparison comparison(file);
    const bool isPrivate = isPrivateFile(file);
    if (isPrivate) content([&comparison](QByteArrayView piece) { comparison.take(piece); });
    const bool isIt = isPrivate && comparison.isEqual() && ::fsync(file) == 0;
    ::close(file);
    return isIt;
}

void removeLeftovers(const QString& path, std::chrono::seconds age) {
    DIR* folder = ::opendir(folderOf(linkTarget(path)).constData());
    if (folder == nullptr) return;
    const int descriptor = ::dirfd(folder);
    while (const dirent* entry = ::readdir(folder)) {
        if (!hasTemporaryName(entry->d_name)) continue;
        const int file =
            ::openat(descriptor, entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (file < 0) continue;
        if (isLeftover(file, age)) ::unlinkat(descriptor, entry->d_name, 0);
        ::close(file);
    }
    ::closedir(folder);
}

} // namespace vorq
