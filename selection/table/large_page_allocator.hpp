#pragma once
// An allocator for the few vectors that hold a whole table of models. They
// are read in rank order, which jumps across tens of megabytes: with 4 KB
// pages nearly every row misses the TLB, and on a million models that was a
// fifth of the run. Blocks of 4 MB and more are aligned to 2 MB and offered to
// the kernel for transparent huge pages (Linux's madvise; a hint that costs
// nothing where it is not taken). Smaller blocks come from operator new.
#include <cstddef>
#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace drav::selection {

template <typename T>
class LargePageAllocator {
 public:
  using value_type = T;

  LargePageAllocator() noexcept = default;
  template <typename U>
  LargePageAllocator(const LargePageAllocator<U>&) noexcept {}

  T* allocate(std::size_t n) {
    if (n > std::size_t(-1) / sizeof(T)) throw std::bad_array_new_length();
    const std::size_t bytes = n * sizeof(T);
    if (bytes < kLarge) return static_cast<T*>(::operator new(bytes));
    const std::size_t rounded = (bytes + kHugePage - 1) / kHugePage * kHugePage;
    void* p = std::aligned_alloc(kHugePage, rounded);
    if (p == nullptr) throw std::bad_alloc();
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    madvise(p, rounded, MADV_HUGEPAGE);
#endif
    return static_cast<T*>(p);
  }

  void deallocate(T* p, std::size_t n) noexcept {
    if (n * sizeof(T) < kLarge) {
      ::operator delete(p);
    } else {
      std::free(p);
    }
  }

  template <typename U>
  bool operator==(const LargePageAllocator<U>&) const noexcept { return true; }

 private:
  static constexpr std::size_t kHugePage = std::size_t(2) << 20;
  static constexpr std::size_t kLarge = std::size_t(4) << 20;
};

}  // namespace drav::selection
