// Long work in equal parts, on several threads, with progress on stderr.
#ifndef NX_TOOLS_PARALLEL_HPP
#define NX_TOOLS_PARALLEL_HPP

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

namespace nx::tools {

/// Says on stderr how far work is: as it goes on a terminal, every tenth of it elsewhere.
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

/// Calls work(0) to work(parts - 1), begun in this order, until one returns false.
inline void RunParts(const std::string& name, std::uint64_t parts, unsigned threadCount,
                     const std::function<bool(std::uint64_t)>& work) {
    std::atomic<std::uint64_t> next{0}, done{0};
    std::atomic<unsigned> running{threadCount};
    const auto run = [&] {
        for (std::uint64_t part; (part = next++) < parts; ++done) {
            if (!work(part)) {
                next = parts;
            }
        }
        --running;
    };
    Progress progress(name, parts);
    std::vector<std::jthread> threads;
    for (unsigned i = 0; i < threadCount; ++i) {
        threads.emplace_back(run);
    }
    while (running != 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        progress.Show(done);
    }
}

} // namespace nx::tools

#endif
