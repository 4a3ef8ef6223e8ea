// Checks the real functions of one argument beyond what tests have time for: each over lanes
// against its kernel, and the kernel against the slow reference. For `float` over all arguments
// there are; for `double`, with --doubles, over as many random ones as asked for.
#include <algorithm>
#include <cstdint>
#include <iostream>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>

#include "parallel.hpp"
#include "real/functions.hpp"
#include "support/bits.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

constexpr std::uint64_t chunkElements = 1 << 16;

template <class T>
struct Mismatch {
    T x, lanes, kernel, reference;
};

/// Chunk number `chunk` of the arguments: consecutive patterns of a `float`; a `double` at random,
/// any pattern, any of a range of the function and evenly from such a range by turns.
void FillChunk(std::vector<float>& x, const UnaryFunction<float>&, std::uint64_t chunk) {
    for (std::uint64_t i = 0; i < chunkElements; ++i) {
        x[i] = FromBits<float>(static_cast<std::uint32_t>(chunk * chunkElements + i));
    }
}

void FillChunk(std::vector<double>& x, const UnaryFunction<double>& function, std::uint64_t chunk) {
    Random random(chunk);
    const auto& [low, high, bound] = function.ranges[chunk / 3 % function.ranges.size()];
    for (double& element : x) {
        const double part = static_cast<double>(random.Bits() >> 11) * 0x1p-53;
        element = chunk % 3 == 0   ? random.AnyPattern<double>()
                  : chunk % 3 == 1 ? random.Between(low, high)
                                   : low + (high - low) * part;
    }
}

/// The first element of a chunk at which results differ.
template <class T>
std::optional<Mismatch<T>> CheckChunk(const UnaryFunction<T>& function, std::uint64_t chunk) {
    std::vector<T> x(chunkElements), lanes(chunkElements);
    FillChunk(x, function, chunk);
    function.lanes(lanes.data(), x.data(), 1, 1, x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        const T kernel = function.kernel(x[i]);
        const T reference = function.reference(x[i]);
        if (!function.same(lanes[i], kernel) || !function.same(kernel, reference)) {
            return Mismatch<T>{x[i], lanes[i], kernel, reference};
        }
    }
    return std::nullopt;
}

/// Whether all chunks hold; stops after the first mismatch.
template <class T>
bool Check(const UnaryFunction<T>& function, std::uint64_t chunks, unsigned threads) {
    const std::string name = std::string(function.name) + ' ' + typeName<T>;
    std::mutex mutex;
    std::optional<Mismatch<T>> first;
    std::uint64_t firstChunk = chunks;
    tools::RunParts(name, chunks, threads, [&](std::uint64_t chunk) {
        const auto mismatch = CheckChunk(function, chunk);
        const std::lock_guard lock(mutex);
        if (mismatch && chunk < firstChunk) {
            firstChunk = chunk;
            first = mismatch;
        }
        return !mismatch;
    });
    if (first) {
        std::cout << name << ": MISMATCH at " << Show(first->x) << ": lanes " << Show(first->lanes)
                  << ", kernel " << Show(first->kernel) << ", reference " << Show(first->reference)
                  << std::endl;
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
    CLI::App app{
        "Compares the real functions over lanes with their scalar kernels and with the slow "
        "reference: for all 2^32 arguments of float, or for random ones of double."};
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
    const auto checkAll = [&](const auto& functions, std::uint64_t chunks) {
        for (const auto& function : functions) {
            if (names.empty() ||
                std::find(names.begin(), names.end(), function.name) != names.end()) {
                held = Check(function, chunks, threads) && held;
            }
        }
    };
    if (doubles != 0) {
        checkAll(unaryFunctions<double>, (doubles - 1) / chunkElements + 1);
    } else {
        checkAll(unaryFunctions<float>, (std::uint64_t{1} << 32) / chunkElements);
    }
    return held ? 0 : 1;
}

} // namespace
} // namespace nx::test

int main(int argc, char** argv) {
    return nx::test::Run(argc, argv);
}
