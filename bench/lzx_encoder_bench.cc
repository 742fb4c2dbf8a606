// Speed and compression of the LZX encoder, and of the pipeline on several threads.
//
// The pages come from a folder, SCRIVO_BENCH_PAGES, read in the order of their names; without it,
// made-up pages stand in, which compress better than real ones.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "lzx/encoder.h"
#include "lzx/parallel_encoder.h"
#include "tests/lzx/sample_data.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMadeUpSize = std::size_t{64} << 20;

std::vector<std::uint8_t> ReadPages(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file() && entry.path().extension() == ".html") {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  std::vector<std::uint8_t> pages;
  for (const fs::path& file : files) {
    std::ifstream in(file, std::ios::binary);
    pages.insert(pages.end(), std::istreambuf_iterator<char>(in), {});
  }
  return pages;
}

const std::vector<std::uint8_t>& Pages() {
  static const std::vector<std::uint8_t> pages = [] {
    const char* folder = std::getenv("SCRIVO_BENCH_PAGES");
    return folder != nullptr ? ReadPages(folder) : PageBytes(kMadeUpSize, 1);
  }();
  return pages;
}

void Report(benchmark::State& state, std::size_t input, std::size_t output) {
  state.SetBytesProcessed(static_cast<std::int64_t>(input) * state.iterations());
  state.counters["input"] = static_cast<double>(input);
  state.counters["output"] = static_cast<double>(output);
}

// One thread, one interval after another.
void EncodeIntervals(benchmark::State& state, const std::vector<std::uint8_t>& input,
                     std::size_t interval) {
  LzxEncoder encoder(interval);
  LzxInterval result;
  std::size_t output = 0;
  for ([[maybe_unused]] auto pass : state) {
    output = 0;
    for (std::size_t at = 0; at < input.size(); at += interval) {
      const std::size_t size = std::min(interval, input.size() - at);
      encoder.Encode(std::span(input).subspan(at, size), result);
      output += result.bytes.size();
    }
  }
  Report(state, input.size(), output);
}

void EncodePages(benchmark::State& state) {
  EncodeIntervals(state, Pages(), kLzxUsualInterval * static_cast<std::size_t>(state.range(0)));
}
BENCHMARK(EncodePages)
    ->ArgName("interval_64K")
    ->Arg(1)
    ->Arg(2)
    ->Arg(8)
    ->Unit(benchmark::kMillisecond);

// What images cost, which do not compress.
void EncodeNoise(benchmark::State& state) {
  EncodeIntervals(state, RandomBytes(std::size_t{8} << 20, 1), kLzxUsualInterval);
}
BENCHMARK(EncodeNoise)->Unit(benchmark::kMillisecond);

// The slowest input known: so few different strings that every chain is long.
void EncodeTwoLetters(benchmark::State& state) {
  std::vector<std::uint8_t> input = RandomBytes(std::size_t{1} << 20, 1);
  for (std::uint8_t& byte : input) byte = byte & 1 ? 'a' : 'b';
  EncodeIntervals(state, input, kLzxUsualInterval);
}
BENCHMARK(EncodeTwoLetters)->Unit(benchmark::kMillisecond);

void CompressOnThreads(benchmark::State& state) {
  std::size_t output = 0;
  for ([[maybe_unused]] auto pass : state) {
    output = 0;
    ParallelEncoder pipeline(
        kLzxUsualInterval, static_cast<int>(state.range(0)),
        [&output](const LzxInterval& interval) { output += interval.bytes.size(); });
    pipeline.Append(Pages());
    pipeline.Finish();
  }
  Report(state, Pages().size(), output);
}
BENCHMARK(CompressOnThreads)
    ->ArgName("threads")
    ->Arg(1)
    ->Arg(2)
    ->Arg(4)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace scrivo
