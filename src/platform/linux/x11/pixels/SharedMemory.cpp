#include "platform/linux/x11/pixels/SharedMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vorq {

std::shared_ptr<SharedMemory> SharedMemory::make(std::size_t size) {
    const int descriptor = ::memfd_create("vorq-window", MFD_CLOEXEC);
    if (descriptor < 0) return nullptr;
    void* memory = MAP_FAILED;
    if (::ftruncate(descriptor, static_cast<off_t>(size)) == 0)
        memory = ::mmap(nullptr, size, PROT_READ, MAP_SHARED, descriptor, 0);
    if (memory == MAP_FAILED) {
        ::close(descriptor);
        return nullptr;
    }
    return std::shared_ptr<SharedMemory>(
        new SharedMemory(descriptor, {static_cast<const std::uint8_t*>(memory), size}));
}

SharedMemory::~SharedMemory() {
    ::munmap(const_cast<std::uint8_t*>(m_bytes.data()), m_bytes.size());
    ::close(m_descriptor);
}

int SharedMemory::duplicateDescriptor() const {
    return ::fcntl(m_descriptor, F_DUPFD_CLOEXEC, 0);
}

bool canPassMemory(int socket) {
    int domain = 0;
    socklen_t size = sizeof domain;
    return ::getsockopt(socket, SOL_SOCKET, SO_DOMAIN, &domain, &size) == 0 && domain == AF_UNIX;
}

} // namespace vorq
