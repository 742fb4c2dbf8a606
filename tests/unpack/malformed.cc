#include "tests/unpack/malformed.h"

#include <algorithm>
#include <map>
#include <memory>
#include <ostream>

#include "chm/chm_reader.h"
#include "chm/problem.h"
#include "tests/unpack/memory_output_folder.h"
#include "tests/unpack/recording_listener.h"
#include "unpack/unpack.h"

namespace scrivo {
namespace {

const std::vector<ImageFile> kFiles = {
    {"/a.htm", SampleText(100, 1)},     {"/b.htm", SampleText(40000, 2)},
    {"/c/c.htm", SampleText(50000, 3)}, {"/c/d.htm", SampleText(200, 4)},
    {"/e.txt", SampleText(150000, 5)},  {"/#SYSTEM", "not looked at", 0}};

struct Outcome {
  Lines said;
  std::map<std::string, std::string> files;
};

Outcome UnpackImage(const ChmImage& image) {
  Outcome outcome;
  Problems problems;
  const auto reader = ChmReader::Open(std::make_unique<MemorySource>(image.bytes), &problems);
  for (const Problem& problem : problems) outcome.said.push_back(Describe(problem));
  if (reader == nullptr) return outcome;
  MemoryOutputFolder folder;
  RecordingListener listener;
  Unpack(*reader, folder, {}, listener);
  outcome.said.insert(outcome.said.end(), listener.problems.begin(), listener.problems.end());
  outcome.files = folder.files;
  return outcome;
}

}  // namespace

void PrintTo(const Defect& defect, std::ostream* out) { *out << defect.name; }

std::size_t Row(const ChmImage& image, const std::string& name) {
  return image.FindText(name, image.first_chunk);
}

std::string DefectName(const testing::TestParamInfo<Defect>& info) { return info.param.name; }

TEST_P(MalformedTest, IsNamedAndCostsNoMoreThanItMust) {
  ChmImage image(kFiles);
  GetParam().make(image);
  const Outcome outcome = UnpackImage(image);
  EXPECT_EQ(outcome.said, GetParam().said);
  Lines saved;
  for (const auto& [path, content] : outcome.files) {
    saved.push_back(path);
    const std::string name = "/" + path;
    const auto file = std::find_if(kFiles.begin(), kFiles.end(), [&name](const ImageFile& wanted) {
      return wanted.name == name;
    });
    ASSERT_NE(file, kFiles.end()) << path;
    EXPECT_TRUE(content == file->content) << path << " is not right";
  }
  EXPECT_EQ(saved, GetParam().saved);
}

TEST(WellFormedTest, AFlawlessFileIsUnpackedInSilence) {
  const Outcome outcome = UnpackImage(ChmImage(kFiles));
  EXPECT_EQ(outcome.said, Lines());
  Lines saved;
  for (const auto& [path, content] : outcome.files) saved.push_back(path);
  EXPECT_EQ(saved, kAll);
}

}  // namespace scrivo
