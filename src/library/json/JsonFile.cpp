#include "library/json/JsonFile.h"

#include "support/files/LinkTarget.h"
#include "support/files/SystemError.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <simdjson.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Little enough to stay in the processor's cache from the reading of the file to its records.
constexpr std::size_t pieceSize = std::size_t{128} << 10;

// What stands between two entries in our style. Strings hold no line breaks, so that this is never
// inside of one.
constexpr std::string_view betweenEntries = "\n  },\n  {";
constexpr std::size_t commaBetween = betweenEntries.find(',');

ssize_t readAt(int descriptor, char* to, std::size_t size, std::size_t offset) {
    ssize_t got = 0;
    do
        got = ::pread(descriptor, to, size, static_cast<off_t>(offset));
    while (got < 0 && errno == EINTR);
    return got;
}

ReadFailure unreadable(int error) {
    return {ReadFailure::Kind::Unreadable, systemError(error)};
}

bool isLink(const QByteArray& path) {
    struct stat status{};
    return ::lstat(path.constData(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool isThere(const QByteArray& path) {
    struct stat status{};
    return ::stat(path.constData(), &status) == 0;
}

// A link to a file that is yet to be made is one thing, a link to a drive that is not there
// another.
ReadFailure failureToOpen(const QString& path, int error) {
    if (error != ENOENT) return unreadable(error);
    const QByteArray file = QFile::encodeName(path);
    const QByteArray place = folderOf(linkTarget(path));
    const bool leadsNowhere = (isLink(file) || isLink(place)) && !isThere(place);
    return leadsNowhere ? unreadable(error) : ReadFailure{};
}

bool mayBeArray(int descriptor) {
    std::array<char, 4096> start{};
    const ssize_t size = readAt(descriptor, start.data(), start.size(), 0);
    if (size <= 0) return false;
    const std::string_view text(start.data(), static_cast<std::size_t>(size));
    const std::size_t first = text.find_first_not_of(" \t\n\r");
    return first == std::string_view::npos || text[first] == '[';
}

} // namespace

JsonFile::JsonFile(QByteArrayView json, Copy /*kind*/) {
    const auto size = static_cast<std::size_t>(json.size());
    if (size == 0 || !reserve(size)) return;
    std::memcpy(m_text.get(), json.data(), size);
    m_held = m_read = m_size = size;
}

JsonFile::JsonFile(JsonFile&& other) noexcept
    : m_text(std::move(other.m_text)),
      m_capacity(std::exchange(other.m_capacity, 0)),
      m_held(std::exchange(other.m_held, 0)),
      m_given(std::exchange(other.m_given, 0)),
      m_read(std::exchange(other.m_read, 0)),
      m_size(std::exchange(other.m_size, 0)),
      m_descriptor(std::exchange(other.m_descriptor, -1)) {}

JsonFile::~JsonFile() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

std::expected<JsonFile, ReadFailure> JsonFile::open(const QString& path) {
    JsonFile file;
    file.m_descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file.m_descriptor < 0) return std::unexpected(failureToOpen(path, errno));
    struct stat status{};
    if (::fstat(file.m_descriptor, &status) != 0) return std::unexpected(unreadable(errno));
    if (S_ISDIR(status.st_mode)) return std::unexpected(unreadable(EISDIR));
    if (!S_ISREG(status.st_mode))
        return std::unexpected(
            ReadFailure{ReadFailure::Kind::Unreadable, u"It is not a regular file"_s});
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size <= simdjson::SIMDJSON_MAXSIZE_BYTES && mayBeArray(file.m_descriptor))
        file.m_size = size;
    return file;
}

std::optional<std::string_view> JsonFile::nextPiece() {
    dropPiece();
    for (std::size_t wanted = pieceSize;; wanted *= 2) {
        if (!fill(wanted)) return std::nullopt;
        if (m_read == m_size) {
            m_given = m_held;
            return std::string_view(m_text.get(), m_held);
        }
        const std::optional<std::size_t> cut = lastCut();
        if (!cut) continue;
        m_given = *cut;
        m_text.get()[m_given] = ']';
        return std::string_view(m_text.get(), m_given + 1);
    }
}

// The comma behind the piece, which ended it, begins the next one.
void JsonFile::dropPiece() {
    const std::size_t given = std::exchange(m_given, 0);
    if (given == 0) return;
    m_held -= given;
    std::memmove(m_text.get(), m_text.get() + given, m_held);
    if (m_held > 0) m_text.get()[0] = '[';
}

std::optional<std::string_view> JsonFile::whole() {
    const bool isAsRead = m_descriptor < 0 || m_given == m_size;
    if (!isAsRead) m_read = m_held = 0;
    if (!fill(m_size)) return std::nullopt;
    m_given = m_held;
    return std::string_view(m_text.get(), m_held);
}

bool JsonFile::reserve(std::size_t size) {
    const std::size_t capacity = size + simdjson::SIMDJSON_PADDING;
    if (capacity <= m_capacity) return true;
    void* memory = std::realloc(m_text.get(), capacity);
    if (memory == nullptr) return false;
    static_cast<void>(m_text.release());
    m_text.reset(static_cast<char*>(memory));
    m_capacity = capacity;
    return true;
}

// So many bytes in memory, or all that are left.
bool JsonFile::fill(std::size_t wanted) {
    const std::size_t target = std::min(wanted, m_held + (m_size - m_read));
    if (target == 0 || !reserve(target)) return target == 0;
    while (m_held < target) {
        const ssize_t got = readAt(m_descriptor, m_text.get() + m_held, target - m_held, m_read);
        if (got <= 0) return false;
        m_held += static_cast<std::size_t>(got);
        m_read += static_cast<std::size_t>(got);
    }
    return true;
}

// Where the last comma between entries stands.
std::optional<std::size_t> JsonFile::lastCut() const {
    const std::string_view held(m_text.get(), m_held);
    for (std::size_t end = held.size();;) {
        const auto* found = static_cast<const char*>(::memrchr(held.data(), '\n', end));
        if (found == nullptr) return std::nullopt;
        end = static_cast<std::size_t>(found - held.data());
        if (held.substr(end).starts_with(betweenEntries)) return end + commaBetween;
    }
}

} // namespace vorq
