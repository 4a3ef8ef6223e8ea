// Runs the table of cases. A benchmark is named Family/type/arguments/size/implementation.
//
// Every family is also measured with nx on arrays that begin one element past an aligned address
// (`nx-misaligned`) and with every second element (`nx-stride2`), on its first kind of arguments.
#include <benchmark/benchmark.h>
#include <gnu/libc-version.h>

#include "cases.hpp"

namespace bench {
namespace {

struct Size {
    const char* name;
    unsigned long count;
};

/// All arrays of a call in the first-level cache, and none of them in any.
constexpr Size inCache{"L1", 1024};
constexpr Size inMemory{"memory", 1 << 22};

struct Layout {
    const char* suffix;
    unsigned long stride;
    unsigned long firstElement;
};

constexpr Layout adjacent{"", 1, 0};
constexpr Layout misaligned{"-misaligned", 1, 1};
constexpr Layout everySecond{"-stride2", 2, 0};

struct alignas(64) CacheLine {
    std::byte bytes[64];
};

/// An odd number of lines between arrays, so that equal indexes do not meet in one cache set.
constexpr std::size_t linesBetween = 21;

/// The arrays of a call, one after the other in memory that all benchmarks share.
Arrays Arrange(const Case& benchmarked, const Data& data, unsigned long count, Layout layout) {
    static std::vector<CacheLine> pool;
    const unsigned long elements = count * layout.stride + layout.firstElement;
    const auto lines = [&](std::size_t elementSize) {
        return elements * elementSize / sizeof(CacheLine) + linesBetween;
    };
    const std::size_t srcLines = lines(benchmarked.srcSize);
    const std::size_t dstLine = srcLines * benchmarked.fill.size();
    const std::size_t needed = dstLine + lines(benchmarked.dstSize);
    if (pool.size() < needed) {
        pool.resize(needed);
    }
    const auto first = [&](std::size_t line, std::size_t elementSize) {
        return pool[line].bytes + layout.firstElement * elementSize;
    };

    Arrays arrays{first(dstLine, benchmarked.dstSize), {}, layout.stride, count};
    Random random;
    for (std::size_t i = 0; i < benchmarked.fill.size(); ++i) {
        arrays.src[i] = first(i * srcLines, benchmarked.srcSize);
        const bool isOther = i == 1 && data.drawSecond;
        benchmarked.fill[i](arrays.src[i], count * layout.stride,
                            isOther ? Data{data.name, data.drawSecond} : data, random);
    }
    return arrays;
}

void Register(const Case& benchmarked, const Data& data, Size size,
              const Implementation& implementation, Layout layout) {
    const std::string name = benchmarked.family + "/" + benchmarked.type + "/" + data.name + "/" +
                             size.name + "/" + implementation.name + layout.suffix;
    // A stride spreads fewer elements over the same memory.
    const unsigned long count = size.count / layout.stride;
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        const Arrays arrays = Arrange(benchmarked, data, count, layout);
        implementation.call(arrays);
        for (auto _ : state) {
            implementation.call(arrays);
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
    });
}

void RegisterAll(const std::vector<Case>& cases) {
    for (const Case& benchmarked : cases) {
        for (const Data& data : benchmarked.data) {
            for (const Size size : {inCache, inMemory}) {
                for (const Implementation& implementation : benchmarked.implementations) {
                    Register(benchmarked, data, size, implementation, adjacent);
                }
            }
        }
        for (const Layout layout : {misaligned, everySecond}) {
            Register(benchmarked, benchmarked.data.front(), inCache,
                     benchmarked.implementations.front(), layout);
        }
    }
}

} // namespace
} // namespace bench

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
#ifdef __clang__
    benchmark::AddCustomContext("compiler", __VERSION__);
#else
    benchmark::AddCustomContext("compiler", "g++ " __VERSION__);
#endif
    benchmark::AddCustomContext("libc", std::string("glibc ") + gnu_get_libc_version());
    for (const auto& [peer, version] : bench::PeerVersions()) {
        benchmark::AddCustomContext(peer, version);
    }
    bench::RegisterAll(bench::Arithmetic());
    bench::RegisterAll(bench::ComplexArithmetic());
    bench::RegisterAll(bench::OneOperand());
    bench::RegisterAll(bench::Selection());
    bench::RegisterAll(bench::Logarithms());
    bench::RegisterAll(bench::Elementary());
    bench::RegisterAll(bench::Angles());
    bench::RegisterAll(bench::Reciprocals());
    bench::RegisterAll(bench::RealPairs());
    bench::RegisterAll(bench::FlatEntries());
    bench::RegisterAll(bench::MixedRanges());
    bench::RegisterAll(bench::ComplexKernels());
    bench::RegisterAll(bench::IntegerFamilies());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
