#include "library/JsonFile.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <simdjson.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vorq {
namespace {

// From this size on memory comes in huge pages, which are released as a whole.
constexpr std::size_t hugePage = std::size_t{2} << 20;
constexpr std::size_t largeFile = 4 * hugePage;
constexpr std::size_t smallStep = std::size_t{128} << 10;

ssize_t readAt(int descriptor, char* to, std::size_t size, std::size_t offset) {
    ssize_t got = 0;
    do
        got = ::pread(descriptor, to, size, static_cast<off_t>(offset));
    while (got < 0 && errno == EINTR);
    return got;
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
    std::memcpy(m_data, json.data(), size);
    m_size = size;
}

JsonFile::JsonFile(JsonFile&& other) noexcept
    : m_data(std::exchange(other.m_data, nullptr)),
      m_size(std::exchange(other.m_size, 0)),
      m_capacity(std::exchange(other.m_capacity, 0)),
      m_released(std::exchange(other.m_released, 0)),
      m_descriptor(std::exchange(other.m_descriptor, -1)) {}

JsonFile::~JsonFile() {
    if (m_data != nullptr) ::munmap(m_data, m_capacity);
    if (m_descriptor >= 0) ::close(m_descriptor);
}

JsonFile JsonFile::open(const QString& path) {
    JsonFile file;
    file.m_descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file.m_descriptor < 0) return file;
    struct stat status{};
    if (::fstat(file.m_descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return file;
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size == 0 || size > simdjson::SIMDJSON_MAXSIZE_BYTES || !mayBeArray(file.m_descriptor) ||
        !file.reserve(size) || !file.read(size))
        return file;
    file.m_size = size;
    return file;
}

// Mapped, since of allocated memory no part can be given back.
bool JsonFile::reserve(std::size_t size) {
    const std::size_t capacity = size + simdjson::SIMDJSON_PADDING;
    void* memory =
        ::mmap(nullptr, capacity, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return false;
    if (size >= largeFile) ::madvise(memory, capacity, MADV_HUGEPAGE);
    m_data = static_cast<char*>(memory);
    m_capacity = capacity;
    return true;
}

bool JsonFile::read(std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t got = readAt(m_descriptor, m_data + done, size - done, done);
        if (got <= 0) return false;
        done += static_cast<std::size_t>(got);
    }
    return true;
}

void JsonFile::releaseBefore(const char* place) {
    const std::size_t step = m_size >= largeFile ? hugePage : smallStep;
    if (m_descriptor < 0 || place < m_data + m_released + step) return;
    const auto address = reinterpret_cast<std::uintptr_t>(place);
    const char* end = place - address % step;
    const auto length = static_cast<std::size_t>(end - (m_data + m_released));
    ::madvise(m_data + m_released, length, MADV_DONTNEED);
    m_released += length;
}

bool JsonFile::restore() {
    if (m_released == 0) return true;
    m_released = 0;
    return read(m_size);
}

} // namespace vorq
