// Memory between two pages that fault on every access.
#ifndef NX_TESTS_SUPPORT_GUARDED_HPP
#define NX_TESTS_SUPPORT_GUARDED_HPP

#include <cerrno>
#include <cstddef>
#include <system_error>

#include <sys/mman.h>
#include <unistd.h>

#include "support/strided.hpp"

namespace nx::test {

/// Where in its pages an array lies: some elements behind the front guard, or up against the back
/// one.
enum class Placement { front, frontPlus1, frontPlus2, frontPlus3, back };

inline constexpr Placement placements[] = {Placement::front, Placement::frontPlus1,
                                           Placement::frontPlus2, Placement::frontPlus3,
                                           Placement::back};

class GuardedPages {
public:
    GuardedPages()
        : pageBytes(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
          base(static_cast<std::byte*>(mmap(nullptr, (usable + 2) * pageBytes, PROT_NONE,
                                            MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
        if (base == MAP_FAILED ||
            mprotect(base + pageBytes, usable * pageBytes, PROT_READ | PROT_WRITE)) {
            throw std::system_error(errno, std::generic_category(), "guarded page");
        }
    }
    ~GuardedPages() {
        munmap(base, (usable + 2) * pageBytes);
    }
    GuardedPages(const GuardedPages&) = delete;
    GuardedPages& operator=(const GuardedPages&) = delete;

    /// Element 0 of `count` elements of a stride.
    template <class T>
    T* Place(std::size_t count, long stride, Placement placement) const {
        const std::size_t reach = Reach(count, stride);
        T* const lowest =
            placement == Placement::back
                ? reinterpret_cast<T*>(base + (usable + 1) * pageBytes) - reach
                : reinterpret_cast<T*>(base + pageBytes) + static_cast<std::size_t>(placement);
        return stride < 0 && count != 0 ? lowest + (reach - 1) : lowest;
    }

private:
    static constexpr std::size_t usable = 4;

    std::size_t pageBytes;
    std::byte* base;
};

} // namespace nx::test

#endif
