#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace vorq {

/// Memory that another process on this machine can write to once it has the descriptor.
class SharedMemory {
  public:
    /// Null if the system gives none.
    [[nodiscard]] static std::shared_ptr<SharedMemory> make(std::size_t size);

    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;
    ~SharedMemory();

    [[nodiscard]] std::span<const std::uint8_t> bytes() const { return m_bytes; }

    /// One that belongs to the caller; -1 if there are too many open.
    [[nodiscard]] int duplicateDescriptor() const;

  private:
    SharedMemory(int descriptor, std::span<const std::uint8_t> bytes)
        : m_descriptor(descriptor), m_bytes(bytes) {}

    int m_descriptor;
    std::span<const std::uint8_t> m_bytes;
};

/// Whether a descriptor can be handed over through this socket.
[[nodiscard]] bool canPassMemory(int socket);

} // namespace vorq
