// An array with any stride and alignment, and a known pattern everywhere around its elements.
#ifndef NX_TESTS_SUPPORT_STRIDED_HPP
#define NX_TESTS_SUPPORT_STRIDED_HPP

#include <algorithm>
#include <complex>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace nx::test {

/// A negative stride is what a call gets as the two's complement of a small number.
inline unsigned long AsStride(long stride) {
    return static_cast<unsigned long>(stride);
}

/// How many places of an array `count` elements of a stride reach over.
inline std::size_t Reach(std::size_t count, long stride) {
    return count == 0 ? 0 : static_cast<std::size_t>(std::labs(stride)) * (count - 1) + 1;
}

template <class T>
class Strided {
public:
    /// `offset` elements off a 16-byte boundary.
    Strided(std::size_t count, long stride, std::size_t offset = 0)
        : size(count), step(stride), storage(Reach(count, stride) + 2 * margin + offset),
          first(margin + offset + (stride < 0 ? Reach(count, stride) - (count != 0) : 0)) {
        std::memset(static_cast<void*>(storage.data()), canary, storage.size() * sizeof(T));
    }

    Strided(const std::vector<T>& values, long stride, std::size_t offset = 0)
        : Strided(values.size(), stride, offset) {
        for (std::size_t i = 0; i < size; ++i) {
            (*this)[i] = values[i];
        }
    }

    T* Data() {
        return storage.data() + first;
    }
    unsigned long Stride() const {
        return AsStride(step);
    }
    T& operator[](std::size_t i) {
        return storage[Place(i)];
    }

    /// Whether every byte but those of the first `written` elements holds what it held at first.
    bool IsUntouchedFrom(std::size_t written) const {
        std::vector<bool> free(storage.size(), false);
        for (std::size_t i = 0; i < written; ++i) {
            free[Place(i)] = true;
        }
        for (std::size_t place = 0; place < storage.size(); ++place) {
            unsigned char bytes[sizeof(T)];
            std::memcpy(bytes, &storage[place], sizeof(T));
            if (!free[place] && std::any_of(bytes, bytes + sizeof(T),
                                            [](unsigned char byte) { return byte != canary; })) {
                return false;
            }
        }
        return true;
    }

private:
    static constexpr std::size_t margin = 16;
    static constexpr unsigned char canary = 0xA5;

    std::size_t Place(std::size_t i) const {
        return first + i * static_cast<std::size_t>(step);
    }

    std::size_t size;
    long step;
    std::vector<T> storage;
    std::size_t first;
};

} // namespace nx::test

#endif
