// How far a long run is.
#ifndef NX_TOOLS_PROGRESS_HPP
#define NX_TOOLS_PROGRESS_HPP

#include <cstdint>
#include <cstdio>

#include <unistd.h>

namespace nx::tools {

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

} // namespace nx::tools

#endif
