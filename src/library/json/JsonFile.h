#pragma once

#include "library/json/ReadFailure.h"

#include <QByteArrayView>
#include <QString>

#include <concepts>
#include <cstddef>
#include <cstdlib>
#include <expected>
#include <memory>
#include <optional>
#include <string_view>

namespace vorq {

/// A JSON document that is an array, read piece by piece, so that text and records are not both in
/// memory in full. Each piece is in memory that simdjson may read some bytes beyond.
class JsonFile {
  public:
    /// A copy of what stands in any kind of bytes; in one piece.
    template<typename Bytes>
        requires std::constructible_from<QByteArrayView, const Bytes&>
    JsonFile(const Bytes& json) : JsonFile(QByteArrayView(json), Copy()) {}
    /// The content of a file. Empty if it does not begin as an array, which is looked at first, or
    /// is larger than 4 GB. Waits for no pipe, and calls unreadable what is no regular file.
    [[nodiscard]] static std::expected<JsonFile, ReadFailure> open(const QString& path);

    JsonFile(const JsonFile&) = delete;
    JsonFile& operator=(const JsonFile&) = delete;
    JsonFile(JsonFile&& other) noexcept;
    JsonFile& operator=(JsonFile&&) = delete;
    ~JsonFile();

    /// Some entries of the array as an array of their own, which is there until the next call. If
    /// all pieces are JSON, so is the document, and their entries are its entries; the reverse
    /// holds of documents in our style. Nothing if the rest cannot be read or be held in memory.
    [[nodiscard]] std::optional<std::string_view> nextPiece();
    [[nodiscard]] bool isAtEnd() const { return m_given == m_held && m_read == m_size; }

    /// The document from its start as one piece, after any number of pieces.
    [[nodiscard]] std::optional<std::string_view> whole();

    /// The size of the memory from the start of the latest piece on.
    [[nodiscard]] std::size_t capacity() const { return m_capacity; }

  private:
    struct Copy {};
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };

    JsonFile() = default;
    JsonFile(QByteArrayView json, Copy);
    void dropPiece();
    [[nodiscard]] bool reserve(std::size_t size);
    [[nodiscard]] bool fill(std::size_t wanted);
    [[nodiscard]] std::optional<std::size_t> lastCut() const;

    std::unique_ptr<char, Free> m_text;
    std::size_t m_capacity = 0;
    std::size_t m_held = 0;  // bytes of the document in the memory
    std::size_t m_given = 0; // of which so many are the latest piece
    std::size_t m_read = 0;  // bytes of the document read so far
    std::size_t m_size = 0;  // bytes of the document
    int m_descriptor = -1;
};

} // namespace vorq
