// Measures the real functions against MPFR: the largest error found in each range of arguments, as
// a Markdown table on stdout.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>

#include "parallel.hpp"
#include "real/functions.hpp"
#include "real/pair_functions.hpp"
#include "support/bits.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

/// The largest of the errors of many arguments. A NaN counts as the worst of errors.
template <class Draw, class Error>
auto Largest(std::uint64_t samples, Draw draw, Error error) {
    struct {
        decltype(draw()) worst;
        double error = -1;
    } largest;
    for (std::uint64_t i = 0; i < samples; ++i) {
        const auto x = draw();
        const double now = error(x);
        if (!(now <= largest.error)) {
            largest = {x, now};
        }
    }
    return largest;
}

std::string Row(const char* name, const char* type, const std::string& range, double error,
                const std::string& worst) {
    char text[40];
    std::snprintf(text, sizeof text, "%.4f", error);
    return std::string("| ") + name + " | " + type + " | " + range + " | " + text + " | " + worst +
           " |";
}

template <class T>
std::string Measure(const UnaryFunction<T>& function, const AccuracyRange<T>& range,
                    std::uint64_t samples, std::uint64_t seed) {
    UlpMeter<T> meter;
    Random random(seed);
    const auto largest = Largest(
        samples, [&] { return random.Between<T>(range.low, range.high); },
        [&](T x) { return meter.Error(function.kernel(x), x, function.exact); });
    char text[80];
    std::snprintf(text, sizeof text, "%.7g to %.7g", static_cast<double>(range.low),
                  static_cast<double>(range.high));
    return Row(function.name, typeName<T>, text, largest.error, Show(largest.worst));
}

template <class T>
std::string Measure(const PairFunction<T>& function, const PairRange<T>& range,
                    std::uint64_t samples, std::uint64_t seed) {
    UlpMeter<T> meter;
    Random random(seed);
    const auto largest = Largest(
        samples, [&] { return range.draw(random); },
        [&](Operands<T> at) {
            return meter.Error(function.kernel(at.x, at.y), at.x, at.y, function.exact);
        });
    return Row(function.name, typeName<T>, range.what, largest.error,
               Show(largest.worst.x) + ", " + Show(largest.worst.y));
}

int Run(int argc, char** argv) {
    std::vector<std::string> known;
    const auto addNames = [&](const auto& functions) {
        for (const auto& function : functions) {
            if (!function.ranges.empty()) {
                known.push_back(function.name);
            }
        }
    };
    addNames(unaryFunctions<double>);
    addNames(pairFunctions<double>);
    CLI::App app{"Measures the largest error of the real functions, in units of the last place, "
                 "over random arguments: those of one argument in ranges in which every pattern is "
                 "equally likely."};
    std::vector<std::string> names;
    std::uint64_t samples = 100'000, seed = 1;
    unsigned threads = std::max(1u, std::thread::hardware_concurrency());
    app.add_option("functions", names, "Functions to measure; all of them by default")
        ->check(CLI::IsMember(known));
    app.add_option("--samples", samples, "Arguments in each range")
        ->capture_default_str()
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1} << 40));
    app.add_option("--seed", seed, "Seed of the random arguments")->capture_default_str();
    app.add_option("--threads", threads, "Number of threads; one a processor by default")
        ->check(CLI::Range(1u, 1024u));
    CLI11_PARSE(app, argc, argv);

    std::vector<std::function<std::string()>> measurements;
    const auto add = [&](const auto& functions) {
        for (const auto& function : functions) {
            if (names.empty() ||
                std::find(names.begin(), names.end(), function.name) != names.end()) {
                for (const auto& range : function.ranges) {
                    measurements.emplace_back(
                        [&] { return Measure(function, range, samples, seed); });
                }
            }
        }
    };
    add(unaryFunctions<double>);
    add(unaryFunctions<float>);
    add(pairFunctions<double>);
    add(pairFunctions<float>);

    std::vector<std::string> rows(measurements.size());
    tools::RunParts("accuracy", rows.size(), threads, [&](std::uint64_t i) {
        rows[i] = measurements[i]();
        mpfr_free_cache();
        return true;
    });
    std::puts("| function | type | range | largest error, ulp | at |\n|---|---|---|---|---|");
    for (const std::string& row : rows) {
        std::puts(row.c_str());
    }
    return 0;
}

} // namespace
} // namespace nx::test

int main(int argc, char** argv) {
    return nx::test::Run(argc, argv);
}
