#include "picture.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

#include <png.h>
#include <unistd.h>

namespace terrain {

namespace {

constexpr std::size_t channels = 3;

/// A file beside the final one that is removed again unless it takes the final name.
class TemporaryFile {
public:
    explicit TemporaryFile(std::filesystem::path finalPath)
        : target(std::move(finalPath)),
          path(target.string() + "." + std::to_string(getpid()) + ".tmp"),
          stream(std::fopen(path.c_str(), "wbx")) {
        if (stream == nullptr) {
            throw std::runtime_error(std::strerror(errno));
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (stream != nullptr) {
            std::fclose(stream);
        }
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    std::FILE* Stream() const {
        return stream;
    }

    void MoveToTarget() {
        // Closing is the last chance to hear of a failed write.
        if (std::fclose(std::exchange(stream, nullptr)) != 0) {
            throw std::runtime_error(std::strerror(errno));
        }
        std::filesystem::rename(path, target);
    }

private:
    std::filesystem::path target;
    std::filesystem::path path;
    std::FILE* stream;
};

/// Where the file really is: a link must not be replaced, nor a device or a directory.
std::filesystem::path ResolveTarget(const std::filesystem::path& file) {
    if (!std::filesystem::exists(file)) {
        return file;
    }
    if (!std::filesystem::is_regular_file(file)) {
        throw std::runtime_error("not a regular file");
    }
    return std::filesystem::canonical(file);
}

void WriteStream(const Picture& picture, std::FILE* stream) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    constexpr int asEightBits = 0;
    constexpr int adjacentRows = 0;
    if (!png_image_write_to_stdio(&image, stream, asEightBits, picture.pixels.data(), adjacentRows,
                                  nullptr)) {
        throw std::runtime_error(image.message);
    }
}

} // namespace

Picture Enlarge(const Picture& picture, std::size_t scale) {
    Picture result{picture.width * scale, picture.height * scale, {}};
    result.pixels.reserve(result.width * result.height * channels);
    for (std::size_t y = 0; y < result.height; ++y) {
        for (std::size_t x = 0; x < result.width; ++x) {
            const std::uint8_t* const pixel =
                picture.pixels.data() + (y / scale * picture.width + x / scale) * channels;
            result.pixels.insert(result.pixels.end(), pixel, pixel + channels);
        }
    }
    return result;
}

void WritePng(const Picture& picture, const std::filesystem::path& file) {
    try {
        TemporaryFile temporary(ResolveTarget(file));
        WriteStream(picture, temporary.Stream());
        temporary.MoveToTarget();
    } catch (const std::filesystem::filesystem_error& error) {
        throw std::runtime_error(file.string() + ": cannot write: " + error.code().message());
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file.string() + ": cannot write: " + error.what());
    }
}

} // namespace terrain
