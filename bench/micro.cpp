// Times of the hot pieces, each alone: header decoding, line printers, digits, the search for
// end-of-contents octets.
//
//     cmake --preset release -DZXQTLV_BENCHMARKS=ON && cmake --build --preset release
//     build/release/bench/micro

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <vector>

#include "cli/tool_table.h"
#include "contents/contents_text.h"
#include "runtime/context.h"
#include "runtime/hex_text.h"
#include "runtime/print.h"
#include "tlv/decomposed_line.h"
#include "tlv/end_search.h"
#include "tlv/header.h"
#include "tlv/hexadecimal_line.h"
#include "tlv/syntax_line.h"

namespace zxqtlv {
namespace {

using Octets = std::vector<std::uint8_t>;

OctetView viewOf(const Octets& octets) {
    return {octets.data(), static_cast<std::int32_t>(octets.size())};
}

int dropText(ZxqGlobal* /*context*/, const char* /*format*/, ...) {
    return 0;
}

// A context whose text goes nowhere.
class QuietContext {
  public:
    QuietContext() {
        zxqinit(&context_, &toolTable());
        context_.printHook = &dropText;
    }
    ~QuietContext() { zxqterm(&context_); }
    QuietContext(const QuietContext&) = delete;
    QuietContext& operator=(const QuietContext&) = delete;

    ZxqGlobal& get() { return context_; }

  private:
    ZxqGlobal context_{};
};

const Octets kIdentifier{0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x01, 0x0B};
const Octets kLongHeader{0x30, 0x82, 0x00, 0x02, 0x05, 0x00};

void readHeaders(benchmark::State& state, const Octets& octets) {
    const OctetView view = viewOf(octets);
    for (auto _ : state) {
        benchmark::DoNotOptimize(readHeader(view, kBerTagMask));
    }
}
BENCHMARK_CAPTURE(readHeaders, shortForm, kIdentifier);
BENCHMARK_CAPTURE(readHeaders, longForm, kLongHeader);

void printLines(benchmark::State& state, LinePrinter printLine) {
    QuietContext context;
    EndSearch search(context.get(), kIdentifier.data());
    ContentsReader reader(context.get(), search);
    const OctetView view = viewOf(kIdentifier);
    const TripleHeader header = readHeader(view, kBerTagMask);
    for (auto _ : state) {
        printLine(context.get(), reader, {view, header, 4, false, false});
    }
}
BENCHMARK_CAPTURE(printLines, hexadecimal, &printHexadecimalLine);
BENCHMARK_CAPTURE(printLines, syntax, &printSyntaxLine);

void printDecomposedLines(benchmark::State& state) {
    QuietContext context;
    EndSearch search(context.get(), kIdentifier.data());
    ContentsReader reader(context.get(), search);
    const OctetView view = viewOf(kIdentifier);
    const TripleHeader header = readHeader(view, kBerTagMask);
    for (auto _ : state) {
        printDecomposedLine(context.get(), reader, {view, header, 4, 1234, false});
    }
}
BENCHMARK(printDecomposedLines);

void writeHex(benchmark::State& state) {
    const Octets octets(static_cast<std::size_t>(state.range(0)), 0xA5);
    std::vector<char> text(2 * octets.size());
    for (auto _ : state) {
        benchmark::DoNotOptimize(writeHexPairs(text.data(), octets.data(), octets.size()));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(writeHex)->Arg(16)->Arg(1024);

void writeNumbers(benchmark::State& state) {
    std::array<char, 32> text{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(writePadded<4>(text.data(), state.range(0)));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(writeNumbers)->Arg(7)->Arg(42)->Arg(1234567);

// All levels of a nest, asked for from the outside in, as a walk does.
void searchEnds(benchmark::State& state) {
    QuietContext context;
    const auto levels = static_cast<std::size_t>(state.range(0));
    Octets octets;
    for (std::size_t level = 0; level < levels; ++level) {
        octets.insert(octets.end(), {0x30, 0x80});
    }
    octets.insert(octets.end(), 2 * levels, 0x00);
    for (auto _ : state) {
        EndSearch search(context.get(), octets.data());
        for (std::size_t level = 0; level < levels; ++level) {
            const auto inside = static_cast<std::int32_t>(octets.size() - 4 * level);
            benchmark::DoNotOptimize(search.find({octets.data() + 2 * level, inside}, 2));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(searchEnds)->Arg(10)->Arg(1000)->Arg(100000);

}  // namespace
}  // namespace zxqtlv

BENCHMARK_MAIN();
