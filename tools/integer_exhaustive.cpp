// Checks the wide paths of 16-bit integers for all 2^32 pairs of operands, which tests have no time
// for: what an array gives against what its elements give one at a time.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include <unistd.h>

#include <CLI/CLI.hpp>

#include <nx/nx.hpp>

namespace nx::test {
namespace {

/// Says on stderr how far a check is: once a second on a terminal, every tenth of it elsewhere.
class Progress {
public:
    explicit Progress(std::string what) : name(std::move(what)) {}

    void Show(unsigned done, unsigned total) {
        const bool terminal = isatty(STDERR_FILENO) != 0;
        const auto now = std::chrono::steady_clock::now();
        if (done != total &&
            (terminal ? now - shown < std::chrono::seconds(1) : done * 10 / total == tenths)) {
            return;
        }
        shown = now;
        tenths = done * 10 / total;
        const double elapsed = std::chrono::duration<double>(now - begin).count();
        std::fprintf(stderr, "%s%s: %3u %%, %.0f s left%s", terminal ? "\r" : "", name.c_str(),
                     100 * done / total, elapsed * (total - done) / done,
                     terminal && done != total ? "   " : "\n");
    }

private:
    std::string name;
    std::chrono::steady_clock::time_point begin = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point shown = begin;
    unsigned tenths = 0;
};

template <class T>
using Call = void (*)(T*, T*, T*, unsigned long, unsigned long, unsigned long, unsigned long);

template <class T>
struct Family {
    const char* name;
    Call<T> call;
    T lowestSecond;
};

/// Each second operand with every first one: as an array, and one element a call.
template <class T>
bool Check(const Family<T>& family) {
    const std::string name = std::string(family.name) +
                             (std::numeric_limits<T>::is_signed ? " short" : " unsigned short");
    constexpr unsigned values = 1 << 16;
    std::vector<T> as(values), got(values);
    std::iota(as.begin(), as.end(), std::numeric_limits<T>::min());
    const unsigned seconds =
        static_cast<unsigned>(std::numeric_limits<T>::max() - family.lowestSecond) + 1;
    Progress progress(name);
    for (unsigned i = 0; i < seconds; ++i) {
        T b = static_cast<T>(family.lowestSecond + static_cast<int>(i));
        family.call(got.data(), as.data(), &b, 1, 1, 0, values);
        for (unsigned j = 0; j < values; ++j) {
            T want{};
            family.call(&want, &as[j], &b, 1, 1, 1, 1);
            if (got[j] != want) {
                std::cout << name << ": MISMATCH at " << as[j] << ' ' << b << ": array " << got[j]
                          << ", element " << want << std::endl;
                return false;
            }
        }
        progress.Show(i + 1, seconds);
    }
    std::cout << name << ": " << std::uint64_t{seconds} * values << " pairs, all the same"
              << std::endl;
    return true;
}

template <class T>
constexpr T lowest = std::numeric_limits<T>::min();

template <class T>
const Family<T> families[] = {
    {"Rdivide", nx::IntVectorRdivide<T>, lowest<T>},
    {"Rem", nx::IntVectorRem<T>, lowest<T>},
    {"Mod", nx::IntVectorMod<T>, lowest<T>},
    // A negative exponent throws.
    {"Power", nx::IntVectorPower<T>, 0},
};

int Run(int argc, char** argv) {
    CLI::App app{
        "Compares division, remainders and powers of 16-bit integers over blocks with those "
        "of single elements, for all pairs of operands."};
    std::vector<std::string> known, names;
    for (const auto& family : families<short>) {
        known.push_back(family.name);
    }
    app.add_option("families", names, "Families to check; all of them by default")
        ->check(CLI::IsMember(known));
    CLI11_PARSE(app, argc, argv);

    bool held = true;
    const auto checkAll = [&](const auto& all) {
        for (const auto& family : all) {
            if (names.empty() ||
                std::find(names.begin(), names.end(), family.name) != names.end()) {
                held = Check(family) && held;
            }
        }
    };
    checkAll(families<short>);
    checkAll(families<unsigned short>);
    return held ? 0 : 1;
}

} // namespace
} // namespace nx::test

int main(int argc, char** argv) {
    return nx::test::Run(argc, argv);
}
