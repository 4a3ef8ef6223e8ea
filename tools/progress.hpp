// How far a long run is.
#ifndef NX_TOOLS_PROGRESS_HPP
#define NX_TOOLS_PROGRESS_HPP

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

#include <unistd.h>

namespace nx::tools {

/// Says on stderr how far all of the work is: every hundredth of it on a terminal, every tenth
/// elsewhere.
class Progress {
public:
    Progress(std::string what, std::uint64_t all)
        : name(std::move(what)), total(all), terminal(isatty(STDERR_FILENO) != 0),
          begin(std::chrono::steady_clock::now()) {}

    void Step() {
        const std::uint64_t parts = terminal ? 100 : 10;
        const std::uint64_t before = done * parts / total;
        ++done;
        if (done * parts / total == before) {
            return;
        }
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
        const double left =
            elapsed.count() * (static_cast<double>(total) / static_cast<double>(done) - 1);
        std::fprintf(stderr, "%s%s: %3u %%, %.0f s left%s", terminal ? "\r" : "", name.c_str(),
                     static_cast<unsigned>(100 * done / total), left,
                     terminal && done < total ? "   " : "\n");
    }

private:
    std::string name;
    std::uint64_t total, done = 0;
    bool terminal;
    std::chrono::steady_clock::time_point begin;
};

} // namespace nx::tools

#endif
