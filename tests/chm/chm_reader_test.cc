#include "chm/chm_reader.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "chm/container_format.h"
#include "tests/chm/chm_image.h"

namespace scrivo {
namespace {

using ReadLog = std::vector<std::pair<std::size_t, std::size_t>>;

// Notes which bytes are read.
class WatchedSource : public ByteSource {
 public:
  WatchedSource(std::vector<std::uint8_t> bytes, ReadLog* log)
      : source_(std::move(bytes)), log_(log) {}
  std::uint64_t Size() const override { return source_.Size(); }
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override {
    log_->emplace_back(offset, offset + out.size());
    return source_.ReadAt(offset, out);
  }

 private:
  MemorySource source_;
  ReadLog* log_;
};

std::unique_ptr<ChmReader> OpenImage(const ChmImage& image) {
  Problems problems;
  auto reader = ChmReader::Open(std::make_unique<MemorySource>(image.bytes), &problems);
  for (const Problem& problem : problems) ADD_FAILURE() << Describe(problem);
  return reader;
}

std::string ReadText(ChmReader& reader, const std::string& name) {
  const Entry* entry = reader.Find(name);
  if (entry == nullptr) return "<not there>";
  const auto bytes = reader.ReadWhole(*entry);
  return bytes ? std::string(bytes->begin(), bytes->end()) : "<unreadable>";
}

TEST(ChmReaderTest, ListsEntriesInTheOrderOfTheDirectory) {
  const auto reader =
      OpenImage(ChmImage({{"/b.htm", "bb"}, {"/A.htm", "a"}, {"/#SYSTEM", "s", 0}}));
  ASSERT_NE(reader, nullptr);
  std::vector<std::string> names;
  for (const Entry& entry : reader->Entries()) {
    if (!entry.name.starts_with("::")) names.emplace_back(entry.name);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"/", "/#SYSTEM", "/A.htm", "/b.htm"}));
  EXPECT_EQ(reader->Find("/b.htm")->length, 2U);
  EXPECT_EQ(reader->Find("/b.htm")->section, kSectionCompressed);
  EXPECT_EQ(reader->Find("/#SYSTEM")->section, kSectionUncompressed);
}

TEST(ChmReaderTest, FindsNamesInAnyCase) {
  const auto reader = OpenImage(ChmImage({{"/Folder/Page.htm", "text"}, {"/_x.htm", "x"}}));
  EXPECT_EQ(ReadText(*reader, "/folder/PAGE.HTM"), "text");
  EXPECT_EQ(ReadText(*reader, "/_X.htm"), "x");
  EXPECT_EQ(reader->Find("/folder/page.html"), nullptr);
  EXPECT_EQ(reader->Find(""), nullptr);
}

TEST(ChmReaderTest, ReadsFilesAcrossIntervals) {
  const std::string large = SampleText(200000, 1);
  const auto reader = OpenImage(ChmImage({{"/small.htm", "small"}, {"/large.bin", large}}));
  EXPECT_EQ(ReadText(*reader, "/small.htm"), "small");
  EXPECT_TRUE(ReadText(*reader, "/large.bin") == large);
}

TEST(ChmReaderTest, ReadsManyListingChunks) {
  std::vector<ImageFile> files;
  for (int i = 0; i < 1000; ++i) {
    files.push_back({"/page" + std::to_string(i) + ".htm", "page " + std::to_string(i)});
  }
  const ChmImage image(files);
  EXPECT_GT(image.chunks, 5U);
  const auto reader = OpenImage(image);
  for (const ImageFile& file : files) ASSERT_EQ(ReadText(*reader, file.name), file.content);
}

TEST(ChmReaderTest, ReadsListsWhoseFirstChunkIsWronglyGiven) {
  std::vector<ImageFile> files;
  for (int i = 0; i < 300; ++i) files.push_back({"/page" + std::to_string(i) + ".htm", "x"});
  ChmImage image(files);
  image.Put32(image.directory + itsp::kFirstListing, 1);
  const auto reader = OpenImage(image);
  for (const ImageFile& file : files) ASSERT_NE(reader->Find(file.name), nullptr) << file.name;
}

TEST(ChmReaderTest, ReadsVersion2Headers) {
  ImageOptions options;
  options.version = 2;
  const auto reader = OpenImage(ChmImage({{"/a.htm", "text"}}, options));
  EXPECT_EQ(ReadText(*reader, "/a.htm"), "text");
}

TEST(ChmReaderTest, ReadsOtherIntervals) {
  for (const std::size_t interval : {0x8000, 0x20000}) {
    ImageOptions options;
    options.interval = interval;
    const std::string large = SampleText(300000, 1);
    const auto reader = OpenImage(ChmImage({{"/large.bin", large}}, options));
    EXPECT_TRUE(ReadText(*reader, "/large.bin") == large) << interval;
  }
}

TEST(ChmReaderTest, ReadsParametersCountedInBytes) {
  ChmImage image({{"/a.htm", SampleText(100000)}});
  const std::size_t control = image.At(std::string(kControlDataName));
  image.Put32(control + control_data::kVersion, 1);
  image.Put32(control + control_data::kResetInterval, 0x10000);
  image.Put32(control + control_data::kWindow, 0x10000);
  EXPECT_TRUE(ReadText(*OpenImage(image), "/a.htm") == SampleText(100000));
}

TEST(ChmReaderTest, ReadsATableWithOneEntryTooMany) {
  ImageOptions options;
  options.extra_reset_entry = true;
  const auto reader = OpenImage(ChmImage({{"/a.htm", SampleText(65536)}}, options));
  EXPECT_TRUE(ReadText(*reader, "/a.htm") == SampleText(65536));
}

TEST(ChmReaderTest, ReadsPaddedNumbers) {
  ImageOptions options;
  options.encint_padding = 6;
  const auto reader = OpenImage(ChmImage({{"/a.htm", "text"}}, options));
  EXPECT_EQ(ReadText(*reader, "/a.htm"), "text");
}

TEST(ChmReaderTest, ReadsFilesOfNoLengthWhereverTheyAreSaidToBe) {
  ChmImage image({{"/a.htm", "text"}, {"/none.htm", ""}});
  image.bytes[image.FindText("/none.htm", image.first_chunk) + 10] = 0x7F;
  EXPECT_EQ(ReadText(*OpenImage(image), "/none.htm"), "");
}

TEST(ChmReaderTest, OpensAFileWithoutCompressedContent) {
  ChmImage image({{"/plain.htm", "plain", 0}});
  image.bytes[image.FindText(std::string(kContentName), image.first_chunk)] = '~';
  EXPECT_EQ(ReadText(*OpenImage(image), "/plain.htm"), "plain");
}

TEST(ChmReaderTest, ReadsAPartWithTheIntervalsThatHoldIt) {
  const std::string large = SampleText(400000, 1);
  const ChmImage image({{"/large.bin", large}});
  ReadLog log;
  Problems problems;
  const auto reader =
      ChmReader::Open(std::make_unique<WatchedSource>(image.bytes, &log), &problems);
  ASSERT_NE(reader, nullptr);
  log.clear();
  std::string part(70000, ' ');
  const std::span<std::uint8_t> out(reinterpret_cast<std::uint8_t*>(part.data()), part.size());
  ASSERT_EQ(reader->Read(*reader->Find("/large.bin"), 140000, out), std::nullopt);
  EXPECT_TRUE(part == large.substr(140000, 70000));
  ASSERT_EQ(log.size(), 2U);
  EXPECT_EQ(log[0], std::make_pair(image.intervals[2], image.intervals[3]));
  EXPECT_EQ(log[1], std::make_pair(image.intervals[3], image.intervals[4]));
}

TEST(ChmReaderTest, KeepsTheIntervalForTheNextFile) {
  const ChmImage image({{"/a.htm", "aaaa"}, {"/b.htm", "bbbb"}});
  ReadLog log;
  Problems problems;
  const auto reader =
      ChmReader::Open(std::make_unique<WatchedSource>(image.bytes, &log), &problems);
  EXPECT_EQ(ReadText(*reader, "/a.htm"), "aaaa");
  const std::size_t reads = log.size();
  EXPECT_EQ(ReadText(*reader, "/b.htm"), "bbbb");
  EXPECT_EQ(log.size(), reads);
}

TEST(ChmReaderTest, RefusesToReadBeyondAnEntry) {
  const auto reader = OpenImage(ChmImage({ImageFile{"/a.htm", "text"}}));
  std::vector<std::uint8_t> out(3);
  const Entry& entry = *reader->Find("/a.htm");
  EXPECT_EQ(reader->Read(entry, 1, out), std::nullopt);
  EXPECT_EQ(reader->Read(entry, 2, out), ProblemKind::kEntryOutside);
  EXPECT_EQ(reader->Read(entry, 5, {}), ProblemKind::kEntryOutside);
}

TEST(ChmReaderTest, ReadsPastABrokenInterval) {
  ChmImage image({{"/a.bin", SampleText(65536, 1)},
                  {"/b.bin", SampleText(65536, 2)},
                  {"/c.bin", SampleText(65536, 3)}});
  image.bytes[image.intervals[1] + 1] = 0;
  const auto reader = OpenImage(image);
  EXPECT_TRUE(ReadText(*reader, "/a.bin") == SampleText(65536, 1));
  EXPECT_EQ(ReadText(*reader, "/b.bin"), "<unreadable>");
  EXPECT_TRUE(ReadText(*reader, "/c.bin") == SampleText(65536, 3));
}

TEST(ChmReaderTest, TakesAStreamWhoseLastFrameIsNotFilledUp) {
  const std::string text = SampleText(33000);
  ChmImage image({{"/a.htm", text}});
  // The one block says that it ends with the content, and the stream ends there too.
  image.Put16(image.intervals[0], static_cast<std::uint16_t>(3U << 12 | 33000U >> 12));
  image.Put16(image.intervals[0] + 2, static_cast<std::uint16_t>(33000U << 4));
  image.bytes.resize(image.intervals[0] + 16 + 33000);
  image.Put64(0x60 + size_section::kFileSize, image.bytes.size());
  Problems problems;
  const auto reader = ChmReader::Open(std::make_unique<MemorySource>(image.bytes), &problems);
  EXPECT_TRUE(ReadText(*reader, "/a.htm") == text);
}

TEST(KindOfTest, TellsFilesFoldersAndStreams) {
  EXPECT_EQ(KindOf("/a.htm"), EntryKind::kUser);
  EXPECT_EQ(KindOf("/a/"), EntryKind::kFolder);
  EXPECT_EQ(KindOf("/toc.hhc"), EntryKind::kUser);
  EXPECT_EQ(KindOf("/a/#b"), EntryKind::kUser);
  EXPECT_EQ(KindOf("/#SYSTEM"), EntryKind::kInternal);
  EXPECT_EQ(KindOf("/$FIftiMain"), EntryKind::kInternal);
  EXPECT_EQ(KindOf("/$WWKeywordLinks/"), EntryKind::kInternal);
  EXPECT_EQ(KindOf("::DataSpace/NameList"), EntryKind::kInternal);
}

TEST(CompareNamesTest, FoldsToLowerCase) {
  EXPECT_EQ(CompareNames("/ABC", "/abc"), 0);
  EXPECT_LT(CompareNames("/_", "/A"), 0);
  EXPECT_LT(CompareNames("/a", "/aa"), 0);
  EXPECT_GT(CompareNames("/\xC3\x84", "/z"), 0);
}

}  // namespace
}  // namespace scrivo
