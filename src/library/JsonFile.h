#pragma once

#include <QByteArrayView>
#include <QString>

#include <concepts>
#include <cstddef>
#include <string_view>

namespace vorq {

/// A JSON document in memory of its own, with the room behind it that simdjson reads into. What has
/// been read of a file can be given back to the system piece by piece, so that text and records are
/// not both in memory in full.
class JsonFile {
  public:
    /// A copy of what stands in any kind of bytes.
    template<typename Bytes>
        requires std::constructible_from<QByteArrayView, const Bytes&>
    JsonFile(const Bytes& json) : JsonFile(QByteArrayView(json), Copy()) {}
    /// The content of a file. Empty if it cannot be read, is no regular file, does not begin as an
    /// array, which is looked at first, or is larger than 4 GB. Waits for no pipe.
    [[nodiscard]] static JsonFile open(const QString& path);

    JsonFile(const JsonFile&) = delete;
    JsonFile& operator=(const JsonFile&) = delete;
    JsonFile(JsonFile&& other) noexcept;
    JsonFile& operator=(JsonFile&&) = delete;
    ~JsonFile();

    [[nodiscard]] std::string_view text() const { return {m_data, m_size}; }
    /// The size of the memory, of which the text is the first part.
    [[nodiscard]] std::size_t capacity() const { return m_capacity; }

    /// What is before this place of the text is not needed any more. Does nothing to a copy.
    void releaseBefore(const char* place);
    /// Brings back what was released. False if that failed.
    [[nodiscard]] bool restore();

  private:
    struct Copy {};

    JsonFile() = default;
    JsonFile(QByteArrayView json, Copy);
    [[nodiscard]] bool reserve(std::size_t size);
    [[nodiscard]] bool read(std::size_t size);

    char* m_data = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
    std::size_t m_released = 0;
    int m_descriptor = -1;
};

} // namespace vorq
