#pragma once

#include <cstddef>
#include <new>
#include <span>

namespace vorq::gateway {

/// Gives the one place there is for a word between threads. The place must outlive the word.
template<typename T>
class RopeAllocator {
  public:
    using value_type = T;

    explicit RopeAllocator(std::span<std::byte> place) : place_(place) {}
    template<typename Other>
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions)
    RopeAllocator(const RopeAllocator<Other>& other) : place_(other.place()) {}

    [[nodiscard]] T* allocate(std::size_t count) {
        if (count * sizeof(T) > place_.size()) throw std::bad_alloc();
        return reinterpret_cast<T*>(place_.data());
    }
    void deallocate(T*, std::size_t) {}
    [[nodiscard]] std::span<std::byte> place() const { return place_; }

    friend bool operator==(const RopeAllocator& one, const RopeAllocator& other) {
        return one.place_.data() == other.place_.data();
    }

  private:
    std::span<std::byte> place_;
};

} // namespace vorq::gateway
