// What the container writer makes is read by programs that others wrote: 7-Zip and the extractor of
// CHMLib. Where one is not installed its test is skipped.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "bytes/output_file.h"
#include "chm/container_writer.h"
#include "tests/doubles/temp_folder.h"
#include "tests/lzx/sample_data.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

using Bytes = std::vector<std::uint8_t>;

struct Page {
  std::string name;  // without "/" in front
  Bytes bytes;
};

// Sections of every kind: many frames, sizes around a frame's, no bytes, noise, runs.
std::vector<std::vector<Page>> Samples() {
  std::vector<std::vector<Page>> samples;
  for (const std::size_t size : {1, 0x7FFE, 0x7FFF, 0x8000, 0x8001, 0xFFFF, 0x10000, 0x10001}) {
    samples.push_back({{"index.htm", PageBytes(size, 1)}});
  }
  samples.push_back({{"index.htm", PageBytes(200000, 2)},
                     {"images/noise.png", RandomBytes(300000, 3)},
                     {"images/black.bmp", Bytes(250000, 0)},
                     {"empty.txt", {}},
                     {"a folder/sub/page one.htm", PageBytes(5000, 4)}});
  std::vector<Page> many;
  for (int i = 0; i < 1000; ++i) {
    std::string name = "topics/";
    name.append(std::to_string(i % 30)).append("/page").append(std::to_string(i)).append(".htm");
    many.push_back({name, PageBytes(static_cast<std::size_t>(i), static_cast<std::uint32_t>(i))});
  }
  samples.push_back(many);
  return samples;
}

// Runs `program` followed by `arguments`; gives its exit code.
int RunQuietly(const std::string& program, const std::string& arguments) {
  const std::string command = program + " " + arguments + " >/dev/null 2>&1 </dev/null";
  return std::system(command.c_str());
}

bool IsInstalled(const std::string& program) { return RunQuietly("command -v", program) == 0; }

Bytes Content(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// `extract` is called with a help file and an empty folder, and gives the exit code.
template <typename Extract>
void CheckSamples(Extract extract) {
  int number = 0;
  for (const std::vector<Page>& pages : Samples()) {
    for (const std::size_t factor : {1, 8}) {
      SCOPED_TRACE(++number);
      const TempFolder temporary;
      const fs::path folder = temporary.path();
      fs::create_directories(folder / "out");
      const fs::path file = folder / "sample.chm";
      std::error_code error;
      const auto output = OutputFile::Create(file, &error);
      ASSERT_NE(output, nullptr) << error.message();
      ContainerWriter writer(*output, {.threads = 2, .interval = factor * kLzxUsualInterval});
      for (const Page& page : pages) writer.AddCompressed("/" + page.name, page.bytes);
      writer.AddPlain("/#SYSTEM", Bytes{3, 0, 0, 0});
      ASSERT_EQ(writer.Finish(), ContainerStatus::kOk);
      ASSERT_TRUE(output->Commit());
      EXPECT_EQ(extract(file.string(), (folder / "out").string()), 0);
      for (const Page& page : pages) {
        ASSERT_TRUE(fs::exists(folder / "out" / page.name)) << page.name;
        ASSERT_TRUE(Content(folder / "out" / page.name) == page.bytes) << page.name;
      }
    }
  }
}

TEST(OtherReadersTest, SevenZipExtractsEveryByte) {
  if (!IsInstalled("7z")) GTEST_SKIP() << "7z is not installed";
  CheckSamples([](const std::string& file, const std::string& folder) {
    return RunQuietly("7z x -y", "-o'" + folder + "' '" + file + "'");
  });
}

TEST(OtherReadersTest, ChmLibExtractsEveryByte) {
  if (!IsInstalled("extract_chmLib")) GTEST_SKIP() << "extract_chmLib is not installed";
  CheckSamples([](const std::string& file, const std::string& folder) {
    return RunQuietly("extract_chmLib", "'" + file + "' '" + folder + "'");
  });
}

}  // namespace
}  // namespace scrivo
