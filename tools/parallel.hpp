// Long work in many parts, on several threads, with progress on stderr.
#ifndef NX_TOOLS_PARALLEL_HPP
#define NX_TOOLS_PARALLEL_HPP

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "progress.hpp"

namespace nx::tools {

/// Calls work(0) to work(parts - 1), begun in this order, until one returns false.
inline void RunParts(const std::string& name, std::uint64_t parts, unsigned threadCount,
                     const std::function<bool(std::uint64_t)>& work) {
    std::atomic<std::uint64_t> next{0};
    std::mutex mutex;
    Progress progress(name, parts);
    const auto run = [&] {
        for (std::uint64_t part; (part = next++) < parts;) {
            if (!work(part)) {
                next = parts;
                return;
            }
            const std::lock_guard lock(mutex);
            progress.Step();
        }
    };
    std::vector<std::jthread> threads;
    for (unsigned i = 0; i < threadCount; ++i) {
        threads.emplace_back(run);
    }
}

} // namespace nx::tools

#endif
