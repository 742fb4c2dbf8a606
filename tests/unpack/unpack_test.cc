#include "unpack/unpack.h"

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "chm/chm_reader.h"
#include "tests/chm/chm_image.h"
#include "tests/unpack/memory_output_folder.h"
#include "tests/unpack/recording_listener.h"
#include "text/visible_text.h"

namespace scrivo {
namespace {

using Lines = std::vector<std::string>;

class UnpackTest : public testing::Test {
 protected:
  UnpackResult Run(const ChmImage& image, const UnpackOptions& options = {}) {
    Problems problems;
    const auto reader = ChmReader::Open(std::make_unique<MemorySource>(image.bytes), &problems);
    for (const Problem& problem : problems) ADD_FAILURE() << Describe(problem);
    return Unpack(*reader, folder_, options, listener_);
  }

  MemoryOutputFolder folder_;
  RecordingListener listener_;
};

// Many files of many sizes, some of them longer than what a thread decodes in one go.
std::vector<ImageFile> ManyFiles() {
  std::vector<ImageFile> files;
  for (unsigned i = 0; i < 60; ++i) {
    const std::size_t size = i % 10 == 0 ? 700000 : i % 7 == 0 ? 0 : 1000 * i + 17;
    files.push_back(
        {"/folder" + std::to_string(i % 5) + "/file" + std::to_string(i), SampleText(size, i)});
  }
  return files;
}

TEST_F(UnpackTest, WritesEveryFileOnceWithAnyNumberOfThreads) {
  const std::vector<ImageFile> files = ManyFiles();
  const ChmImage image(files);
  for (const unsigned threads : {1U, 2U, 3U, 8U}) {
    folder_.files.clear();
    folder_.times_created.clear();
    listener_ = {};
    const UnpackResult result = Run(image, {false, threads});
    EXPECT_EQ(result.written, files.size());
    EXPECT_EQ(result.problems, 0U);
    ASSERT_EQ(folder_.files.size(), files.size());
    for (const ImageFile& file : files) {
      ASSERT_TRUE(folder_.files[file.name.substr(1)] == file.content) << file.name;
      ASSERT_EQ(folder_.times_created[file.name.substr(1)], 1) << file.name;
    }
    EXPECT_EQ(listener_.done, listener_.total);
  }
}

TEST_F(UnpackTest, TellsTheFilesInTheSameOrderWithAnyNumberOfThreads) {
  const ChmImage image(ManyFiles());
  Run(image, {false, 1});
  const Lines alone = listener_.files;
  listener_ = {};
  Run(image, {false, 8});
  EXPECT_EQ(listener_.files, alone);
}

TEST_F(UnpackTest, TellsFilesInTheOrderInWhichTheyAreStored) {
  Run(ChmImage({{"/z.htm", "1"}, {"/a.htm", "2"}, {"/m.htm", "3"}}));
  EXPECT_EQ(listener_.files, (Lines{"z.htm", "a.htm", "m.htm"}));
}

TEST_F(UnpackTest, WritesContentsAndIndexFilesButNoStreams) {
  const ChmImage image({{"/toc.hhc", "toc"},
                        {"/index.hhk", "index"},
                        {"/#SYSTEM", "system", 0},
                        {"/$FIftiMain", "search"},
                        {"/$WWKeywordLinks/BTree", "tree"}});
  Run(image);
  EXPECT_EQ(listener_.files, (Lines{"toc.hhc", "index.hhk"}));
  Run(image, {true, 0});
  EXPECT_EQ(folder_.files["#SYSTEM"], "system");
  EXPECT_EQ(folder_.files["$FIftiMain"], "search");
  EXPECT_EQ(folder_.files["$WWKeywordLinks/BTree"], "tree");
  EXPECT_EQ(folder_.files["DataSpace/Storage/MSCompressed/SpanInfo"].size(), 8U);
  EXPECT_EQ(listener_.problems, Lines());
}

TEST_F(UnpackTest, CopiesLargeUncompressedFiles) {
  const std::string large = SampleText(900000);
  Run(ChmImage({{"/plain.bin", large, 0}}));
  EXPECT_TRUE(folder_.files["plain.bin"] == large);
}

TEST_F(UnpackTest, NumbersNamesThatDifferOnlyInCase) {
  Run(ChmImage({{"/Page.htm", "1"}, {"/page.HTM", "2"}, {"/page~2.htm", "3"}, {"/PAGE.htm", "4"}}));
  EXPECT_EQ(folder_.files.size(), 4U);
  EXPECT_EQ(folder_.files["Page.htm"], "1");
  EXPECT_EQ(listener_.problems.size(), 3U);
  EXPECT_EQ(folder_.files["page~2.HTM"], "2");
  EXPECT_EQ(listener_.problems[0], "/page.HTM: unpacked as page~2.HTM");
}

TEST_F(UnpackTest, NumbersNamesThatDifferOnlyInCaseBeyondAscii) {
  Run(ChmImage({{"/\u00C4.htm", "1"}, {"/\u00E4.htm", "2"}}));
  EXPECT_EQ(folder_.files["\u00C4.htm"], "1");
  EXPECT_EQ(folder_.files["\u00E4~2.htm"], "2");
}

TEST_F(UnpackTest, NumbersAFileWhoseNameIsNeededForAFolder) {
  Run(ChmImage({{"/a", "file"}, {"/A/b.htm", "in folder"}}));
  EXPECT_EQ(folder_.files["a~2"], "file");
  EXPECT_EQ(folder_.files["A/b.htm"], "in folder");
  EXPECT_EQ(listener_.problems, Lines{"/a: unpacked as a~2"});
}

TEST_F(UnpackTest, NamesWhatItMapsAndRefusesAndUnpacksTheRest) {
  const UnpackResult result = Run(ChmImage({{"/../up.htm", "1"},
                                            {"//server/a.htm", "2"},
                                            {"/c:/drive.htm", "3"},
                                            {"/nul.htm", "4"},
                                            {"/a.htm:stream", "5"},
                                            {"/end. ", "6"},
                                            {"/good.htm", "7"}}));
  EXPECT_EQ(listener_.problems,
            (Lines{"/../up.htm: not unpacked: the name leads out of the folder",
                   "//server/a.htm: not unpacked: the name is an absolute path",
                   "/c:/drive.htm: not unpacked: the name names a drive",
                   "/a.htm:stream: unpacked as a.htm_stream", "/end. : unpacked as end__",
                   "/nul.htm: unpacked as _nul.htm"}));
  EXPECT_EQ(folder_.files,
            (std::map<std::string, std::string>{
                {"_nul.htm", "4"}, {"a.htm_stream", "5"}, {"end__", "6"}, {"good.htm", "7"}}));
  EXPECT_EQ(result.written, 4U);
  EXPECT_EQ(result.problems, 6U);
}

TEST_F(UnpackTest, ADamagedIntervalCostsTheFilesInIt) {
  // Of the large file only its last interval is damaged; it is not left behind in part.
  ChmImage image({{"/first.htm", SampleText(100, 1)},
                  {"/large.bin", SampleText(2000000, 2)},
                  {"/last.htm", SampleText(100, 3)}});
  image.bytes[image.intervals[10] + 1] = 0;
  for (const unsigned threads : {1U, 4U}) {
    listener_ = {};
    folder_.files.clear();
    const UnpackResult result = Run(image, {false, threads});
    EXPECT_EQ(listener_.problems, Lines{"/large.bin: not unpacked: damaged content"});
    EXPECT_EQ(listener_.files, (Lines{"first.htm", "last.htm"}));
    EXPECT_EQ(folder_.files.size(), 2U);
    EXPECT_EQ(result.written, 2U);
    EXPECT_EQ(result.problems, 1U);
  }
}

TEST_F(UnpackTest, NamesFilesThatCannotBeWritten) {
  folder_.refuse = {{"a.htm", WriteOutcome::kLinkInTheWay},
                    {"b.htm", WriteOutcome::kFileInTheWay},
                    {"c.htm", WriteOutcome::kFolderInTheWay},
                    {"large.bin", WriteOutcome::kFailed}};
  folder_.break_parts = {"other.bin", "plain.bin"};
  Run(ChmImage({{"/a.htm", "1"},
                {"/b.htm", "2"},
                {"/c.htm", "3"},
                {"/large.bin", SampleText(1500000)},
                {"/other.bin", SampleText(1500000)},
                {"/plain.bin", SampleText(900000), 0},
                {"/d.htm", "4"}}));
  const std::string full = std::make_error_code(std::errc::no_space_on_device).message();
  const std::string io = std::make_error_code(std::errc::io_error).message();
  EXPECT_EQ(listener_.problems,
            (Lines{"/plain.bin: not unpacked: writing failed: " + io,
                   "/a.htm: not unpacked: a link in its place leads elsewhere",
                   "/b.htm: not unpacked: a file is in the place of its folder",
                   "/c.htm: not unpacked: what is in its place is not a regular file",
                   "/large.bin: not unpacked: writing failed: " + full,
                   "/other.bin: not unpacked: writing failed: " + io}));
  EXPECT_EQ(listener_.files, Lines{"d.htm"});
  EXPECT_EQ(folder_.files, (std::map<std::string, std::string>{{"d.htm", "4"}}));
}

TEST_F(UnpackTest, TellsOnceThatTheDiskIsFullAndHowManyFilesAreMissing) {
  std::vector<ImageFile> files = {{"/a.htm", "1"}, {"/large.bin", SampleText(1500000)}};
  for (int i = 0; i < 50; ++i) files.push_back({"/b/" + std::to_string(i) + ".htm", "page"});
  for (const char* full : {"a.htm", "large.bin", "b/7.htm"}) {
    for (const unsigned threads : {1U, 3U}) {
      folder_.files.clear();
      folder_.refuse = {{full, WriteOutcome::kDiskFailed}};
      listener_ = {};
      const UnpackResult result = Run(ChmImage(files), {false, threads});
      ASSERT_EQ(listener_.problems.size(), 2U) << full;
      EXPECT_EQ(listener_.problems[0],
                std::string("/") + full + ": not unpacked: writing failed: " +
                    std::make_error_code(std::errc::no_space_on_device).message());
      EXPECT_EQ(listener_.problems[1], "nothing more can be written: " +
                                           std::to_string(files.size() - folder_.files.size() - 1) +
                                           " further files are not unpacked");
      EXPECT_EQ(result.written, folder_.files.size());
      EXPECT_EQ(listener_.files.size(), result.written);
      EXPECT_EQ(result.problems, files.size() - result.written);
      EXPECT_TRUE(folder_.growing.empty());
      EXPECT_TRUE(folder_.has_removed_folders);
    }
  }
}

// Wants to stop when it has been asked so many times.
class StoppingListener : public RecordingListener {
 public:
  explicit StoppingListener(int questions) : questions_(questions) {}
  bool StopWanted() const override { return --questions_ < 0; }

 private:
  mutable std::atomic<int> questions_;
};

TEST_F(UnpackTest, StopsAtAnyMomentWithoutHalfAFile) {
  const std::vector<ImageFile> files = {{"/plain.bin", SampleText(900000), 0},
                                        {"/a.htm", "1"},
                                        {"/large.bin", SampleText(1500000)},
                                        {"/z.htm", "2"}};
  std::map<std::string, std::string> whole;
  for (const ImageFile& file : files) whole[file.name.substr(1)] = file.content;
  const ChmImage image(files);
  Problems problems;
  const auto reader = ChmReader::Open(std::make_unique<MemorySource>(image.bytes), &problems);
  bool has_finished = false;
  for (int questions = 0; !has_finished; ++questions) {
    folder_.files.clear();
    folder_.has_removed_folders = false;
    StoppingListener listener(questions);
    const UnpackResult result = Unpack(*reader, folder_, {false, 2}, listener);
    has_finished = !result.stopped;
    EXPECT_EQ(folder_.has_removed_folders, result.stopped);
    EXPECT_TRUE(folder_.growing.empty()) << questions;
    EXPECT_TRUE(listener.problems.empty()) << questions;
    for (const auto& [name, content] : folder_.files) EXPECT_TRUE(content == whole[name]) << name;
  }
  EXPECT_EQ(folder_.files.size(), files.size());
}

TEST_F(UnpackTest, UnpacksEntriesThatShareTheirContent) {
  ChmImage image({{"/a.bin", SampleText(600000)}, {"/b.bin", SampleText(600000)}});
  // The second entry gets the first one's offset, as padded numbers of the same length.
  const std::size_t a = image.FindText("/a.bin", image.first_chunk) + 7;
  const std::size_t b = image.FindText("/b.bin", image.first_chunk) + 7;
  ASSERT_EQ(image.bytes[a], 0);
  for (const std::size_t i : {0U, 1U}) image.bytes[b + i] = 0x80;
  image.bytes[b + 2] = 0x00;
  Run(image);
  EXPECT_TRUE(folder_.files["a.bin"] == SampleText(600000));
  EXPECT_TRUE(folder_.files["b.bin"] == SampleText(600000));
}

TEST(ProblemTest, ShowsTrickyBytesInNames) {
  EXPECT_EQ(PrintableName("/a\x1B[2Jb\n\xC3"), "/a\\x1B[2Jb\\x0A\\xC3");
  EXPECT_EQ(PrintableName("/\u202Egnp.exe"), "/\\xE2\\x80\\xAEgnp.exe");
  EXPECT_EQ(PrintableName("/\u0413.htm"), "/\u0413.htm");
}

TEST(ProblemTest, CountsWhatIsTooMuchToList) {
  Problems problems;
  for (int i = 0; i < 250; ++i) AddProblem(&problems, {ProblemKind::kChunkUnknown});
  EXPECT_EQ(problems.size(), 101U);
  EXPECT_EQ(Describe(problems.back()), "and 150 more problems of this kind");
}

}  // namespace
}  // namespace scrivo
