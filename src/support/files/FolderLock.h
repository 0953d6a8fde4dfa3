#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace vorq {

/// Keeps a folder to this process among those that ask for it in the same way, for the life of the
/// object. It leaves no file behind and ends with its process, however that ends. Not recursive.
class FolderLock {
  public:
    /// Waits so long for its holder; nothing if that was not enough. A folder that cannot be
    /// locked at all (it is not there, its file system knows no locks) is taken as free.
    [[nodiscard]] static std::optional<FolderLock> take(const QString& folder,
                                                        std::chrono::milliseconds patience);

    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    FolderLock(FolderLock&& other) noexcept;
    FolderLock& operator=(FolderLock&&) = delete;
    ~FolderLock();

  private:
    explicit FolderLock(int descriptor) : m_descriptor(descriptor) {}

    int m_descriptor = -1;
};

} // namespace vorq
