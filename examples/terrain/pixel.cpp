// For the test: prints width and height of a PNG file and the red, green and blue of one pixel.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <png.h>

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: pixel FILE X Y\n");
        return 1;
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    std::vector<std::uint8_t> pixels;
    if (png_image_begin_read_from_file(&image, argv[1])) {
        image.format = PNG_FORMAT_RGB;
        pixels.resize(PNG_IMAGE_SIZE(image));
        png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr);
    }
    const unsigned long x = std::strtoul(argv[2], nullptr, 10);
    const unsigned long y = std::strtoul(argv[3], nullptr, 10);
    if (PNG_IMAGE_FAILED(image) || x >= image.width || y >= image.height) {
        std::fprintf(stderr, "pixel: %s: no such pixel\n", argv[1]);
        return 1;
    }
    const std::uint8_t* const pixel = &pixels[3 * (y * image.width + x)];
    std::printf("%u %u %u %u %u\n", image.width, image.height, pixel[0], pixel[1], pixel[2]);
}
