#pragma once
// Allocator of the point tables' big buffers. Blocks of a few megabytes and more come straight
// from the system, aligned to 2 MiB and marked for huge pages: the cell store of a million
// rows is then mapped in a few dozen huge pages instead of ten thousand small ones, whose
// faults were most of what filling it used to cost. Small blocks take the ordinary heap.
#include <cstddef>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace KwLargeAlloc {

constexpr std::size_t kHuge = std::size_t(2) << 20;
constexpr std::size_t kThreshold = std::size_t(4) << 20;

inline std::size_t mappedSize(std::size_t bytes) { return (bytes + kHuge - 1) & ~(kHuge - 1); }

inline void* allocate(std::size_t bytes)
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    if (bytes >= kThreshold) {
        const std::size_t size = mappedSize(bytes);
        // Over-map by one huge page, then give back what lies outside the aligned range.
        void* raw = mmap(nullptr, size + kHuge, PROT_READ | PROT_WRITE,
                         MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (raw == MAP_FAILED)
            throw std::bad_alloc();
        const auto base = reinterpret_cast<std::size_t>(raw);
        const std::size_t aligned = (base + kHuge - 1) & ~(kHuge - 1);
        if (aligned > base)
            munmap(raw, aligned - base);
        if (const std::size_t tail = base + size + kHuge - (aligned + size))
            munmap(reinterpret_cast<void*>(aligned + size), tail);
        // Only advice: without huge pages the block works the same with small ones. (Mapping
        // the whole block up front as well measured no faster, and would make reserved but
        // unused capacity resident.)
        madvise(reinterpret_cast<void*>(aligned), size, MADV_HUGEPAGE);
        return reinterpret_cast<void*>(aligned);
    }
#endif
    return ::operator new(bytes);
}

inline void deallocate(void* p, std::size_t bytes) noexcept
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    if (bytes >= kThreshold) {
        munmap(p, mappedSize(bytes));
        return;
    }
#endif
    ::operator delete(p);
}

} // namespace KwLargeAlloc

template <class T>
struct KwLargeAllocator
{
    using value_type = T;
    KwLargeAllocator() noexcept = default;
    template <class U>
    KwLargeAllocator(const KwLargeAllocator<U>&) noexcept
    {
    }
    T* allocate(std::size_t n) { return static_cast<T*>(KwLargeAlloc::allocate(n * sizeof(T))); }
    void deallocate(T* p, std::size_t n) noexcept { KwLargeAlloc::deallocate(p, n * sizeof(T)); }
    friend bool operator==(const KwLargeAllocator&, const KwLargeAllocator&) { return true; }
};
