#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "chm/container_format.h"
#include "tests/unpack/malformed.h"

namespace scrivo {
namespace {

// Defects of the streams that describe the compression, and of the compressed content.
std::vector<Defect> ContentDefects() {
  const auto stream = [](std::string_view name, std::size_t field, std::uint32_t value) {
    return [=](ChmImage& i) { i.Put32(i.At(std::string(name)) + field, value); };
  };
  const auto rename = [](std::string_view name) {
    return [=](ChmImage& i) { i.bytes[Row(i, std::string(name)) + name.size() - 1] = '~'; };
  };
  const auto table = [](std::size_t field, std::uint64_t value) {
    return [=](ChmImage& i) { i.Put64(i.At(std::string(kResetTableName)) + field, value); };
  };
  const auto table32 = [&](std::size_t field, std::uint32_t value) {
    return stream(kResetTableName, field, value);
  };
  const auto start = [&](std::size_t frame, std::uint64_t value) {
    return table(reset_table::kHeaderLength + 8 * frame, value);
  };
  return {
      {"NoControlData",
       rename(kControlDataName),
       {"compression parameters: missing or impossible; window and interval taken as 64 KB"},
       kAll},
      {"ControlDataSignature",
       stream(kControlDataName, 4, 0),
       {"compression parameters: missing or impossible; window and interval taken as 64 KB"},
       kAll},
      {"ControlDataVersionZero",
       stream(kControlDataName, control_data::kVersion, 0),
       {"compression parameters: missing or impossible; window and interval taken as 64 KB"},
       kAll},
      {"ControlDataVersionMaximum",
       stream(kControlDataName, control_data::kVersion, kMax32),
       {"compression parameters: missing or impossible; window and interval taken as 64 KB"},
       kAll},
      {"ResetIntervalZero",
       stream(kControlDataName, control_data::kResetInterval, 0),
       {"compression parameters: missing or impossible; window and interval taken as 64 KB"},
       kAll},
      {"ResetIntervalMaximum",
       stream(kControlDataName, control_data::kResetInterval, kMax32),
       {"compression parameters: missing or impossible; window and interval taken as 64 KB"},
       kAll},
      {"WindowZero",
       stream(kControlDataName, control_data::kWindow, 0),
       {"compression parameters: missing or impossible; window and interval taken as 64 KB"},
       kAll},
      {"WindowMaximum",
       stream(kControlDataName, control_data::kWindow, kMax32),
       {"compression parameters: missing or impossible; window and interval taken as 64 KB"},
       kAll},
      {"WindowOneMore",
       stream(kControlDataName, control_data::kWindow, 3),
       {"compression parameters: missing or impossible; window and interval taken as 64 KB"},
       kAll},
      {"NoSpanInfo", rename(kSpanInfoName), Lines(), kAll},
      {"SpanInfoMaximum",
       stream(kSpanInfoName, 4, kMax32),
       {"decoded content: length given as 240300 and as 18446744069414824620, taken as 240300"},
       kAll},
      {"NoResetTable",
       rename(kResetTableName),
       {"reset table: missing or cut short; intervals found by decoding"},
       kAll},
      {"ResetTableCountZero", table32(reset_table::kCount, 0), Lines(), kAll},
      {"ResetTableCountMaximum", table32(reset_table::kCount, kMax32), Lines(), kAll},
      {"ResetTableEntrySizeZero",
       table32(reset_table::kEntrySize, 0),
       {"reset table: header field is 0, 8 expected and used"},
       kAll},
      {"ResetTableEntriesOffset",
       table32(reset_table::kEntriesOffset, kMax32),
       {"reset table: header field is 4294967295, 40 expected and used"},
       kAll},
      {"ResetTableFrameSizeZero",
       table(reset_table::kFrameSize, 0),
       {"reset table: header field is 0, 32768 expected and used"},
       kAll},
      {"UncompressedLengthZero",
       table(reset_table::kUncompressedLength, 0),
       {"decoded content: length given as 240300 and as 0, taken as 240300"},
       kAll},
      {"UncompressedLengthMaximum",
       table(reset_table::kUncompressedLength, kMax64),
       {"decoded content: length given as 240300 and as 18446744073709551615, taken as 240300"},
       kAll},
      {"BothLengthsMaximum",
       [](ChmImage& i) {
         i.Put64(i.At(std::string(kResetTableName)) + reset_table::kUncompressedLength, kMax64);
         i.Put64(i.At(std::string(kSpanInfoName)), kMax64);
       },
       {"reset table: covers 8 of 562949953421312 frames; files beyond are lost"},
       kAll},
      {"CompressedLengthMaximum", table(reset_table::kCompressedLength, kMax64), Lines(), kAll},
      {"SecondIntervalStartsAtZero",
       start(2, 0),
       {"/a.htm: not unpacked: damaged content", "/b.htm: not unpacked: damaged content",
        "/c/c.htm: not unpacked: damaged content", "/c/d.htm: not unpacked: damaged content",
        "/e.txt: not unpacked: damaged content"},
       Lines()},
      {"SecondIntervalStartsOutside",
       start(2, kMax64),
       {"/a.htm: not unpacked: damaged content", "/b.htm: not unpacked: damaged content",
        "/c/c.htm: not unpacked: damaged content", "/c/d.htm: not unpacked: damaged content",
        "/e.txt: not unpacked: damaged content"},
       Lines()},
      {"SecondIntervalStartsOneLate",
       start(2, 0x10011),
       {"/a.htm: not unpacked: damaged content", "/b.htm: not unpacked: damaged content",
        "/c/c.htm: not unpacked: damaged content", "/c/d.htm: not unpacked: damaged content",
        "/e.txt: not unpacked: damaged content"},
       Lines()},
      {"FrameInsideIntervalOutside", start(1, kMax64), Lines(), kAll},
      {"NoContent",
       rename(kContentName),
       {"compressed content: missing from the directory",
        "/a.htm: not unpacked: the compressed content is unusable",
        "/b.htm: not unpacked: the compressed content is unusable",
        "/c/c.htm: not unpacked: the compressed content is unusable",
        "/c/d.htm: not unpacked: the compressed content is unusable",
        "/e.txt: not unpacked: the compressed content is unusable"},
       Lines()},
      {"CutInSecondInterval",
       [](ChmImage& i) { i.bytes.resize(i.intervals[1] + 0x100); },
       {"the file is cut short: 70261 of 266661 bytes",
        "compressed content: cut short, 65808 of 262208 bytes",
        "/c/c.htm: not unpacked: damaged content", "/c/d.htm: not unpacked: damaged content",
        "/e.txt: not unpacked: damaged content"},
       {"a.htm", "b.htm"}},
      {"CutInFirstInterval",
       [](ChmImage& i) { i.bytes.resize(i.intervals[0] + 0x9000); },
       {"the file is cut short: 41317 of 266661 bytes",
        "compressed content: cut short, 36864 of 262208 bytes",
        "/b.htm: not unpacked: damaged content", "/c/c.htm: not unpacked: damaged content",
        "/c/d.htm: not unpacked: damaged content", "/e.txt: not unpacked: damaged content"},
       {"a.htm"}},
      {"FirstBlockBroken",
       [](ChmImage& i) { i.bytes[i.intervals[0] + 1] = 0; },
       {"/a.htm: not unpacked: damaged content", "/b.htm: not unpacked: damaged content",
        "/c/c.htm: not unpacked: damaged content"},
       {"c/d.htm", "e.txt"}},
      {"SecondBlockBroken",
       [](ChmImage& i) { i.bytes[i.intervals[1] + 1] = 0x70; },
       {"/c/c.htm: not unpacked: damaged content", "/c/d.htm: not unpacked: damaged content",
        "/e.txt: not unpacked: damaged content"},
       {"a.htm", "b.htm"}},
      {"LastBlockBroken",
       [](ChmImage& i) { i.bytes[i.intervals[3] + 1] |= 0x80; },
       {"/e.txt: not unpacked: damaged content"},
       {"a.htm", "b.htm", "c/c.htm", "c/d.htm"}},
  };
}

INSTANTIATE_TEST_SUITE_P(Content, MalformedTest, testing::ValuesIn(ContentDefects()), DefectName);

}  // namespace
}  // namespace scrivo
