// How fast a help file is decoded and unpacked, apart from the disk. bench/unpack_bench.sh compares
// the program with others, on real files.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "chm/chm_reader.h"
#include "chm/container_writer.h"
#include "tests/bytes/memory_store.h"
#include "unpack/output_folder.h"
#include "unpack/unpack.h"

namespace scrivo {
namespace {

constexpr std::size_t kPages = 2000;

// Pages as help files have them: words of a limited vocabulary between tags.
std::string MakePage(std::mt19937* random) {
  std::string page = "<html><head><title>Page</title></head><body>\r\n";
  const std::size_t paragraphs = 5 + (*random)() % 40;
  for (std::size_t i = 0; i < paragraphs; ++i) {
    page += "<p class=\"body\">";
    for (int word = 0; word < 40; ++word) {
      // Small numbers are more frequent, as common words are.
      const std::uint32_t rank = (*random)() % 3000 * ((*random)() % 100) / 100;
      page += "word" + std::to_string(rank * 7919 % 3000) + ' ';
    }
    page += "</p>\r\n";
  }
  return page += "</body></html>\r\n";
}

const std::vector<std::uint8_t>& HelpFileBytes() {
  static const std::vector<std::uint8_t> bytes = [] {
    std::mt19937 random(1);
    MemoryStore store;
    ContainerWriter writer(store, {});
    for (std::size_t i = 0; i < kPages; ++i) {
      const std::string page = MakePage(&random);
      writer.AddCompressed(
          "/page" + std::to_string(i) + ".htm",
          std::span(reinterpret_cast<const std::uint8_t*>(page.data()), page.size()));
    }
    writer.Finish();
    return store.bytes;
  }();
  return bytes;
}

std::unique_ptr<ChmReader> OpenHelpFile() {
  Problems problems;
  return ChmReader::Open(std::make_unique<MemorySource>(HelpFileBytes()), &problems);
}

class NoFolder : public OutputFolder {
 public:
  NameRules Rules() const override { return NameRules::kPosix; }
  WriteResult Create(std::string_view, std::span<const std::uint8_t>) override { return {}; }
  WriteResult WritePart(std::string_view, std::uint64_t, std::span<const std::uint8_t>) override {
    return {};
  }
  WriteResult Start(std::string_view) override { return {}; }
  WriteResult Finish(std::string_view) override { return {}; }
  void GiveUp(std::string_view) override {}
  void RemoveEmptyFolders() override {}
};

class NoListener : public UnpackListener {
 public:
  void OnFile(const PlannedFile&) override {}
  void OnProblem(const Problem&) override {}
  void OnProgress(std::uint64_t, std::uint64_t) override {}
};

void BM_Open(benchmark::State& state) {
  HelpFileBytes();
  for (auto _ : state) benchmark::DoNotOptimize(OpenHelpFile());
}
BENCHMARK(BM_Open)->Unit(benchmark::kMillisecond);

void BM_DecodeIntervals(benchmark::State& state) {
  const auto reader = OpenHelpFile();
  const CompressedSection& section = *reader->Compressed();
  IntervalDecoder decoder(reader->Source(), section);
  std::vector<std::uint8_t> output(static_cast<std::size_t>(section.interval));
  for (auto _ : state) {
    for (std::size_t i = 0; i < section.starts.size(); ++i) {
      decoder.Decode(i, std::span(output).first(section.PaddedLength(i)));
    }
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(section.length));
}
BENCHMARK(BM_DecodeIntervals)->Unit(benchmark::kMillisecond);

// With as many threads as the argument says.
void BM_Unpack(benchmark::State& state) {
  const auto reader = OpenHelpFile();
  NoFolder folder;
  NoListener listener;
  UnpackOptions options;
  options.threads = static_cast<unsigned>(state.range(0));
  for (auto _ : state) Unpack(*reader, folder, options, listener);
  state.SetBytesProcessed(state.iterations() *
                          static_cast<std::int64_t>(reader->Compressed()->length));
}
BENCHMARK(BM_Unpack)->Arg(1)->Arg(2)->Arg(4)->UseRealTime()->Unit(benchmark::kMillisecond);

// One page out of the middle.
void BM_ReadOnePage(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    const auto reader = OpenHelpFile();
    state.ResumeTiming();
    benchmark::DoNotOptimize(reader->ReadWhole(*reader->Find("/page1000.htm")));
  }
}
BENCHMARK(BM_ReadOnePage)->Unit(benchmark::kMicrosecond)->Iterations(50);

}  // namespace
}  // namespace scrivo
