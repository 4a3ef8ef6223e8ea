// A picture of 8-bit colours, and the PNG file that it becomes.
#ifndef TERRAIN_PICTURE_HPP
#define TERRAIN_PICTURE_HPP

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace terrain {

struct Picture {
    std::size_t width;
    std::size_t height;
    std::vector<std::uint8_t> pixels; ///< red, green, blue; row by row from the top
};

/// Every pixel becomes a square of `scale` by `scale` pixels.
Picture Enlarge(const Picture& picture, std::size_t scale);

/// Writes a PNG file, replacing an older one only when the new one is complete. Throws
/// `std::runtime_error`; then nothing is left behind and an older file stands as it was.
void WritePng(const Picture& picture, const std::filesystem::path& file);

} // namespace terrain

#endif
