// Measures the real functions against MPFR: the largest error found in each range of arguments, as a
// Markdown table on stdout.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <unistd.h>

#include <CLI/CLI.hpp>

#include "real/functions.hpp"
#include "support/bits.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

/// Says on stderr how far all of the work is, on a terminal only.
class Progress {
public:
    explicit Progress(std::uint64_t all) : total(all), terminal(isatty(STDERR_FILENO) != 0) {}
    ~Progress() {
        if (terminal) {
            std::fputs("\r     \r", stderr);
        }
    }
    void Step() {
        if (++done % (total / 100 + 1) == 0 && terminal) {
            std::fprintf(stderr, "\r%3u %%", static_cast<unsigned>(100 * done / total));
        }
    }

private:
    std::uint64_t total, done = 0;
    bool terminal;
};

template <class T>
void MeasureRange(const RealFunction<T>& function, const char* type, const AccuracyRange<T>& range,
                  std::uint64_t samples, std::uint64_t seed, Progress& progress) {
    UlpMeter<T> meter;
    Random random(seed);
    double largest = 0;
    T worst = range.low;
    for (std::uint64_t i = 0; i < samples; ++i) {
        const T x = random.Between<T>(range.low, range.high);
        const double error = meter.Error(function.kernel(x), x, function.exact);
        // A NaN counts as the worst of errors.
        if (!(error <= largest)) {
            largest = error;
            worst = x;
        }
        progress.Step();
    }
    std::printf("| %s | %s | %.7g | %.7g | %.4f | %s |\n", function.name, type,
                static_cast<double>(range.low), static_cast<double>(range.high), largest,
                Show(worst).c_str());
    std::fflush(stdout);
}

int Run(int argc, char** argv) {
    std::vector<std::string> known;
    for (const auto& function : realFunctions<double>) {
        known.push_back(function.name);
    }
    CLI::App app{"Measures the largest error of the real functions, in units of the last place, "
                 "over random arguments in which every pattern of a range is equally likely."};
    std::vector<std::string> names;
    std::uint64_t samples = 100'000, seed = 1;
    app.add_option("functions", names, "Functions to measure; all of them by default")
        ->check(CLI::IsMember(known));
    app.add_option("--samples", samples, "Arguments in each range")
        ->capture_default_str()
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1} << 40));
    app.add_option("--seed", seed, "Seed of the random arguments")->capture_default_str();
    CLI11_PARSE(app, argc, argv);

    const auto forEachRange = [&](const auto& functions, const auto& visit) {
        for (const auto& function : functions) {
            if (names.empty() ||
                std::find(names.begin(), names.end(), function.name) != names.end()) {
                for (const auto& range : function.ranges) {
                    visit(function, range);
                }
            }
        }
    };
    std::uint64_t ranges = 0;
    const auto count = [&](const auto&, const auto&) { ++ranges; };
    forEachRange(realFunctions<double>, count);
    forEachRange(realFunctions<float>, count);

    Progress progress(ranges * samples);
    std::puts("| function | type | from | to | largest error, ulp | at |");
    std::puts("|---|---|---|---|---|---|");
    forEachRange(realFunctions<double>, [&](const auto& function, const auto& range) {
        MeasureRange(function, "double", range, samples, seed, progress);
    });
    forEachRange(realFunctions<float>, [&](const auto& function, const auto& range) {
        MeasureRange(function, "float", range, samples, seed, progress);
    });
    return 0;
}

} // namespace
} // namespace nx::test

int main(int argc, char** argv) {
    return nx::test::Run(argc, argv);
}
