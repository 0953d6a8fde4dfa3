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

    explicit RopeAllocator(std::span<std::byte> place) : m_place(place) {}
    template<typename Other>
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions)
    RopeAllocator(const RopeAllocator<Other>& other) : m_place(other.place()) {}

    [[nodiscard]] T* allocate(std::size_t count) {
        if (count * sizeof(T) > m_place.size()) throw std::bad_alloc();
        return reinterpret_cast<T*>(m_place.data());
    }
    void deallocate(T*, std::size_t) {}
    [[nodiscard]] std::span<std::byte> place() const { return m_place; }

    friend bool operator==(const RopeAllocator& one, const RopeAllocator& other) {
        return one.m_place.data() == other.m_place.data();
    }

  private:
    std::span<std::byte> m_place;
};

} // namespace vorq::gateway
