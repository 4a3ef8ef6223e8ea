// Checks the real functions beyond what tests have time for: each over lanes against its kernel, and
// the kernel against the slow reference. For `float` over all arguments there are; for `double`,
// with --doubles, over as many random ones as asked for.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

#include <CLI/CLI.hpp>

#include "real/functions.hpp"
#include "support/bits.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

constexpr std::uint64_t chunkElements = 1 << 16;

/// Says on stderr how far a check is: once a second on a terminal, every tenth of it elsewhere.
class Progress {
public:
    Progress(std::string what, std::uint64_t all)
        : name(std::move(what)), total(all), begin(std::chrono::steady_clock::now()) {}

    void Show(std::uint64_t done) {
        const bool terminal = isatty(STDERR_FILENO) != 0;
        const unsigned percent = static_cast<unsigned>(100 * done / total);
        if (done == 0 || (!terminal && percent / 10 == lastPercent / 10)) {
            return;
        }
        lastPercent = percent;
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
        const double left =
            elapsed.count() * static_cast<double>(total - done) / static_cast<double>(done);
        std::fprintf(stderr, "%s%s: %3u %%, %.0f s left%s", terminal ? "\r" : "", name.c_str(),
                     percent, left, terminal && done < total ? "   " : "\n");
    }

private:
    std::string name;
    std::uint64_t total;
    std::chrono::steady_clock::time_point begin;
    unsigned lastPercent = 0;
};

template <class T>
struct Mismatch {
    T x, lanes, kernel, reference;
};

/// Chunk number `chunk` of the arguments: consecutive patterns of a `float`; a `double` at random,
/// ordinary ones and any patterns by turns.
void FillChunk(std::vector<float>& x, std::uint64_t chunk) {
    for (std::uint64_t i = 0; i < chunkElements; ++i) {
        x[i] = FromBits<float>(static_cast<std::uint32_t>(chunk * chunkElements + i));
    }
}

void FillChunk(std::vector<double>& x, std::uint64_t chunk) {
    Random random(chunk);
    for (double& element : x) {
        element = chunk % 2 == 0 ? random.Between(0x1p-10, 0x1p10) : random.AnyPattern<double>();
    }
}

/// The first element of a chunk at which results differ.
template <class T>
std::optional<Mismatch<T>> CheckChunk(const RealFunction<T>& function, std::vector<T>& x,
                                      std::vector<T>& lanes) {
    function.lanes(lanes.data(), x.data(), 1, 1, x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        const T kernel = function.kernel(x[i]);
        const T reference = function.reference(x[i]);
        if (BitsOf(lanes[i]) != BitsOf(kernel) || BitsOf(kernel) != BitsOf(reference)) {
            return Mismatch<T>{x[i], lanes[i], kernel, reference};
        }
    }
    return std::nullopt;
}

/// Whether all chunks hold. Threads take chunks in order and stop after the first mismatch.
template <class T>
bool Check(const RealFunction<T>& function, const char* type, std::uint64_t chunks,
           unsigned threadCount) {
    const std::string name = std::string(function.name) + ' ' + type;
    std::atomic<std::uint64_t> next{0}, done{0};
    std::atomic<unsigned> running{threadCount};
    std::mutex mutex;
    std::optional<Mismatch<T>> first;
    std::uint64_t firstChunk = chunks;
    const auto work = [&] {
        std::vector<T> x(chunkElements), lanes(chunkElements);
        for (std::uint64_t chunk; (chunk = next++) < chunks; ++done) {
            FillChunk(x, chunk);
            if (const auto mismatch = CheckChunk(function, x, lanes)) {
                const std::lock_guard lock(mutex);
                if (chunk < firstChunk) {
                    firstChunk = chunk;
                    first = mismatch;
                }
                next = chunks;
                break;
            }
        }
        --running;
    };
    Progress progress(name, chunks);
    std::vector<std::jthread> threads;
    for (unsigned i = 0; i < threadCount; ++i) {
        threads.emplace_back(work);
    }
    while (running != 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        progress.Show(done);
    }
    threads.clear();
    if (first) {
        std::cout << name << ": MISMATCH at " << test::Show(first->x) << ": lanes "
                  << test::Show(first->lanes) << ", kernel " << test::Show(first->kernel)
                  << ", reference " << test::Show(first->reference) << std::endl;
    } else {
        std::cout << name << ": " << chunks * chunkElements << " arguments, all the same"
                  << std::endl;
    }
    return !first;
}

int Run(int argc, char** argv) {
    std::vector<std::string> known;
    for (const auto& function : realFunctions<float>) {
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
    const auto checkAll = [&](const auto& functions, const char* type, std::uint64_t chunks) {
        for (const auto& function : functions) {
            if (names.empty() ||
                std::find(names.begin(), names.end(), function.name) != names.end()) {
                held = Check(function, type, chunks, threads) && held;
            }
        }
    };
    if (doubles != 0) {
        checkAll(realFunctions<double>, "double", (doubles - 1) / chunkElements + 1);
    } else {
        checkAll(realFunctions<float>, "float", (std::uint64_t{1} << 32) / chunkElements);
    }
    return held ? 0 : 1;
}

} // namespace
} // namespace nx::test

int main(int argc, char** argv) {
    return nx::test::Run(argc, argv);
}
