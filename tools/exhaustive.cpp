// Checks the real functions of one argument beyond what tests have time for: each kernel over lanes,
// also beside huge arguments, against the same for one element, and that against the slow reference;
// each array family against the function of its elements, and where it stops. For `float` over all
// arguments there are; for `double`, with --doubles, over as many random ones as asked for.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <iostream>
#include <limits>
#include <mutex>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>

#include "array/elementary_cases.hpp"
#include "parallel.hpp"
#include "real/functions.hpp"
#include "support/bits.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

constexpr std::uint64_t chunkElements = 1 << 16;

/// What is wrong in chunk number `chunk` of the arguments, if anything.
using CheckChunk = std::function<std::optional<std::string>(std::uint64_t chunk)>;

/// Consecutive patterns of a `float`; a `double` at random, any pattern, any of a range of the
/// function and evenly from such a range by turns.
void FillChunk(std::vector<float>& x, const std::vector<AccuracyRange<float>>&,
               std::uint64_t chunk) {
    for (std::uint64_t i = 0; i < chunkElements; ++i) {
        x[i] = FromBits<float>(static_cast<std::uint32_t>(chunk * chunkElements + i));
    }
}

void FillChunk(std::vector<double>& x, const std::vector<AccuracyRange<double>>& ranges,
               std::uint64_t chunk) {
    Random random(chunk);
    const auto& [low, high, bound] = ranges[chunk / 3 % ranges.size()];
    for (double& element : x) {
        const double part = static_cast<double>(random.Bits() >> 11) * 0x1p-53;
        element = chunk % 3 == 0   ? random.AnyPattern<double>()
                  : chunk % 3 == 1 ? random.Between(low, high)
                                   : low + (high - low) * part;
    }
}

/// The results over lanes with two other arguments before every 62 of x: a block may go another way
/// for some of its elements.
template <class T>
std::vector<T> Beside(T other, const UnaryFunction<T>& function, const std::vector<T>& x) {
    constexpr std::size_t apart = 62;
    std::vector<T> mixed, results;
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (i % apart == 0) {
            mixed.insert(mixed.end(), 2, other);
        }
        mixed.push_back(x[i]);
    }
    // Whole vectors: the others are elements of their own.
    while (mixed.size() % core::Lanes<core::Vector<T>>::count != 0) {
        mixed.push_back(other);
    }
    function.lanes(mixed.data(), mixed.data(), 1, 1, mixed.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        results.push_back(mixed[i + 2 * (i / apart) + 2]);
    }
    return results;
}

/// The first element at which the results of a kernel differ.
template <class T>
std::optional<std::string> CheckKernel(const UnaryFunction<T>& function, std::uint64_t chunk) {
    std::vector<T> x(chunkElements), lanes(chunkElements);
    FillChunk(x, function.ranges, chunk);
    function.lanes(lanes.data(), x.data(), 1, 1, x.size());
    const std::vector<T> besideHuge = Beside(std::numeric_limits<T>::max(), function, x);
    const std::vector<T> besideMedium = Beside(T{60}, function, x);
    for (std::size_t i = 0; i < x.size(); ++i) {
        const T kernel = function.kernel(x[i]);
        const T reference = function.reference(x[i]);
        if (!function.same(lanes[i], kernel) || !function.same(besideHuge[i], kernel) ||
            !function.same(besideMedium[i], kernel) || !function.same(kernel, reference)) {
            std::ostringstream what;
            what << Show(x[i]) << ": lanes " << Show(lanes[i]) << ", beside huge arguments "
                 << Show(besideHuge[i]) << ", beside 60 " << Show(besideMedium[i]) << ", kernel "
                 << Show(kernel) << ", reference " << Show(reference);
            return what.str();
        }
    }
    return std::nullopt;
}

/// The first element at which a family gives another result than for one element, or stops or goes
/// on wrongly. After a stop the family starts anew.
template <class T>
std::optional<std::string> CheckFamily(const ElementaryCase<T>& family, std::uint64_t chunk) {
    static const std::vector<AccuracyRange<T>> ranges = {
        {T(1e-3), T(1e3), 0}, {-2, 2, 0}, {-400, 400, 0}};
    std::vector<T> x(chunkElements), results(chunkElements);
    FillChunk(x, ranges, chunk);
    for (std::size_t first = 0; first < x.size();) {
        const std::size_t stop = x.size() - family.real(results.data() + first, x.data() + first, 1,
                                                        1, x.size() - first);
        for (std::size_t i = first; i < stop; ++i) {
            const T want = family.value(x[i]);
            if (!BitwiseButNaN{}(results[i], want) || family.isOutside(x[i])) {
                return Show(x[i]) + ": array " + Show(results[i]) + ", element " + Show(want);
            }
        }
        if (stop < x.size() && !family.isOutside(x[stop])) {
            return Show(x[stop]) + ": a stop in the domain";
        }
        first = stop + 1;
    }
    return std::nullopt;
}

/// Whether all chunks hold; stops after the first mismatch.
bool Check(const std::string& name, std::uint64_t chunks, unsigned threads,
           const CheckChunk& check) {
    std::mutex mutex;
    std::optional<std::string> first;
    std::uint64_t firstChunk = chunks;
    tools::RunParts(name, chunks, threads, [&](std::uint64_t chunk) {
        const auto mismatch = check(chunk);
        const std::lock_guard lock(mutex);
        if (mismatch && chunk < firstChunk) {
            firstChunk = chunk;
            first = mismatch;
        }
        return !mismatch;
    });
    if (first) {
        std::cout << name << ": MISMATCH at " << *first << std::endl;
    } else {
        std::cout << name << ": " << chunks * chunkElements << " arguments, all the same"
                  << std::endl;
    }
    return !first;
}

int Run(int argc, char** argv) {
    std::vector<std::string> known;
    for (const auto& function : unaryFunctions<float>) {
        known.push_back(function.name);
    }
    for (const auto& family : ElementaryCases<float>()) {
        known.push_back(family.name);
    }
    CLI::App app{
        "Compares the real kernels (sin) over lanes with the same for one element and with the "
        "slow "
        "reference, and array families (Sin) with the function of their elements: for all 2^32 "
        "arguments of float, or for random ones of double."};
    std::vector<std::string> names;
    std::uint64_t doubles = 0;
    unsigned threads = std::max(1u, std::thread::hardware_concurrency());
    app.add_option("functions", names, "Functions to check; all of them by default")
        ->check(CLI::IsMember(known));
    app.add_option("--doubles", doubles, "Check this many random double arguments instead of float")
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1} << 40));
    app.add_option("--threads", threads, "Number of threads; one a processor by default")
        ->check(CLI::Range(1u, 1024u));
    CLI11_PARSE(app, argc, argv);

    bool held = true;
    const auto checkAll = [&](auto zero, std::uint64_t chunks) {
        using T = decltype(zero);
        const auto checkIfNamed = [&](const std::string& name, const CheckChunk& check) {
            if (names.empty() || std::find(names.begin(), names.end(), name) != names.end()) {
                held = Check(name + ' ' + typeName<T>, chunks, threads, check) && held;
            }
        };
        for (const auto& function : unaryFunctions<T>) {
            checkIfNamed(function.name,
                         [&](auto chunk) { return CheckKernel<T>(function, chunk); });
        }
        for (const auto& family : ElementaryCases<T>()) {
            checkIfNamed(family.name, [&](auto chunk) { return CheckFamily<T>(family, chunk); });
        }
    };
    if (doubles != 0) {
        checkAll(0.0, (doubles - 1) / chunkElements + 1);
    } else {
        checkAll(0.0f, (std::uint64_t{1} << 32) / chunkElements);
    }
    return held ? 0 : 1;
}

} // namespace
} // namespace nx::test

int main(int argc, char** argv) {
    return nx::test::Run(argc, argv);
}
