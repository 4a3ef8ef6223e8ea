// Reads a grid of heights, takes the logarithm of every one and the light on it with nx, and paints
// the result.
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include <CLI/CLI.hpp>

#include "colour.hpp"
#include "grid.hpp"
#include "logarithm.hpp"
#include "picture.hpp"
#include "relief.hpp"
#include "report.hpp"

int main(int argc, char** argv) {
    std::filesystem::path input;
    std::filesystem::path output = "terrain.png";
    unsigned scale = 8;
    terrain::Light light;

    CLI::App app("Paints the logarithm of the heights of a terrain, land and sea floor.");
    app.add_option("grid", input, "CSV file: longitudes across, latitudes down, heights in metres")
        ->required();
    app.add_option("-o,--output", output, "PNG file to write")->capture_default_str();
    app.add_option("--scale", scale, "pixels of the picture along each side of a cell")
        ->capture_default_str()
        ->check(CLI::Range(1, 64));

    app.add_option("--azimuth", light.azimuth,
                   "where the light comes from, in degrees clockwise from north")
        ->capture_default_str()
        ->check(CLI::Range(-360.0, 360.0));
    app.add_option("--altitude", light.altitude, "the light's height above the horizon, in degrees")
        ->capture_default_str()
        ->check(CLI::Range(1.0, 90.0));
    app.add_option("--exaggeration", light.exaggeration,
                   "by how much heights are stretched; 0 gives no relief")
        ->capture_default_str()
        ->check(CLI::Range(0.0, 1000.0));

    try {
        app.parse(argc, argv);
        terrain::Grid grid = terrain::ReadGrid(input);
        terrain::Logarithm logarithm = terrain::ComputeLogarithm(grid);
        std::vector<std::uint8_t> gray = terrain::ComputeGray(grid, light);
        const terrain::Picture picture = Enlarge(Paint(grid, logarithm, gray), scale);
        WritePng(picture, output);
        PrintReport(grid, logarithm);
        std::printf("\nPicture, %zu by %zu: %s\n", picture.width, picture.height, output.c_str());
        if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
            throw std::runtime_error("cannot write to the standard output");
        }
    } catch (const CLI::CallForHelp& help) {
        return app.exit(help);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "terrain: %s\n", error.what());
        return 1;
    }
}
