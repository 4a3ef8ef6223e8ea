// Measures the complex functions against MPC: the largest normwise error found in each region of
// arguments, as a Markdown table on stdout.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "complex/functions.hpp"
#include "progress.hpp"

namespace nx::test {
namespace {

template <class T>
constexpr const char* typeName = sizeof(T) == 8 ? "double" : "float";

std::string Show(std::complex<double> z, int digits) {
    char text[80];
    std::snprintf(text, sizeof text, "(%.*g, %.*g)", digits, z.real(), digits, z.imag());
    return text;
}

class Measurement {
public:
    Measurement(std::uint64_t samples, std::uint64_t seed, std::uint64_t rows)
        : count(samples), firstSeed(seed), progress("complex_accuracy", 2 * samples * rows) {
        std::puts("| function | type | region | largest error, ulp | at |");
        std::puts("|---|---|---|---|---|");
    }

    template <class T>
    void Measure(const ComplexFunction& f, const ComplexRegion& region) {
        ComplexUlpMeter<T> meter;
        Row<T>(f.name, region.name, [&](Random& random) {
            const std::complex<T> z = region.Draw<T>(random);
            return Found{meter.Error(f, z), Show(z, std::numeric_limits<T>::max_digits10)};
        });
    }

    template <class T>
    void Measure(const ComplexPowerRegion& region) {
        ComplexUlpMeter<T> meter;
        Row<T>("power", region.name, [&](Random& random) {
            const std::complex<T> a = region.bases.Draw<T>(random);
            const std::complex<T> b(region.exponent(random));
            return Found{meter.ErrorOfPower(a, b),
                         Show(a, std::numeric_limits<T>::max_digits10) + "^" + Show(b, 9)};
        });
    }

private:
    struct Found {
        double error;
        std::string at;
    };

    template <class T, class Draw>
    void Row(const char* function, const char* region, Draw draw) {
        Random random(firstSeed);
        Found worst{0, "-"};
        for (std::uint64_t i = 0; i < count; ++i) {
            Found found = draw(random);
            // A NaN counts as the worst of errors.
            if (!(found.error <= worst.error)) {
                worst = std::move(found);
            }
            progress.Step();
        }
        std::printf("| %s | %s | %s | %.4f | %s |\n", function, typeName<T>, region, worst.error,
                    worst.at.c_str());
        std::fflush(stdout);
    }

    std::uint64_t count, firstSeed;
    tools::Progress progress;
};

int Run(int argc, char** argv) {
    std::vector<std::string> known{"power"};
    for (const auto& function : complexFunctions) {
        known.push_back(function.name);
    }
    CLI::App app{
        "Measures the largest error of the complex functions, as the distance from the exact "
        "value in units of the last place of its magnitude, over random arguments."};
    std::vector<std::string> names;
    std::uint64_t samples = 100'000, seed = 1;
    app.add_option("functions", names, "Functions to measure; all of them by default")
        ->check(CLI::IsMember(known));
    app.add_option("--samples", samples, "Arguments in each region")
        ->capture_default_str()
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1} << 40));
    app.add_option("--seed", seed, "Seed of the random arguments")->capture_default_str();
    CLI11_PARSE(app, argc, argv);

    const auto isWanted = [&](const char* name) {
        return names.empty() || std::find(names.begin(), names.end(), name) != names.end();
    };
    std::uint64_t rows = isWanted("power") ? std::size(complexPowers) : 0;
    for (const auto& function : complexFunctions) {
        rows += isWanted(function.name) ? function.bounds.size() : 0;
    }
    Measurement measurement(samples, seed, rows);
    for (const auto& function : complexFunctions) {
        if (isWanted(function.name)) {
            for (const auto& [region, ofDouble, ofSingle] : function.bounds) {
                measurement.Measure<double>(function, region);
                measurement.Measure<float>(function, region);
            }
        }
    }
    if (isWanted("power")) {
        for (const auto& region : complexPowers) {
            measurement.Measure<double>(region);
            measurement.Measure<float>(region);
        }
    }
    return 0;
}

} // namespace
} // namespace nx::test

int main(int argc, char** argv) {
    return nx::test::Run(argc, argv);
}
