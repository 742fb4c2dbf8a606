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
       {"compression parameters are missing or impossible; taken as 64 KB window and interval"},
       kAll},
      {"ControlDataSignature",
       stream(kControlDataName, 4, 0),
       {"compression parameters are missing or impossible; taken as 64 KB window and interval"},
       kAll},
      {"ControlDataVersionZero",
       stream(kControlDataName, control_data::kVersion, 0),
       {"compression parameters are missing or impossible; taken as 64 KB window and interval"},
       kAll},
      {"ControlDataVersionMaximum",
       stream(kControlDataName, control_data::kVersion, kMax32),
       {"compression parameters are missing or impossible; taken as 64 KB window and interval"},
       kAll},
      {"ResetIntervalZero",
       stream(kControlDataName, control_data::kResetInterval, 0),
       {"compression parameters are missing or impossible; taken as 64 KB window and interval"},
       kAll},
      {"ResetIntervalMaximum",
       stream(kControlDataName, control_data::kResetInterval, kMax32),
       {"compression parameters are missing or impossible; taken as 64 KB window and interval"},
       kAll},
      {"WindowZero",
       stream(kControlDataName, control_data::kWindow, 0),
       {"compression parameters are missing or impossible; taken as 64 KB window and interval"},
       kAll},
      {"WindowMaximum",
       stream(kControlDataName, control_data::kWindow, kMax32),
       {"compression parameters are missing or impossible; taken as 64 KB window and interval"},
       kAll},
      {"WindowOneMore",
       stream(kControlDataName, control_data::kWindow, 3),
       {"compression parameters are missing or impossible; taken as 64 KB window and interval"},
       kAll},
      {"NoSpanInfo", rename(kSpanInfoName), Lines(), kAll},
      {"SpanInfoMaximum",
       stream(kSpanInfoName, 4, kMax32),
       {"the length of the decoded content is given as 240300 and as 18446744069414824620; taken "
        "as 240300"},
       kAll},
      {"NoResetTable",
       rename(kResetTableName),
       {"the reset table is missing or cut short; intervals are found by decoding"},
       kAll},
      {"ResetTableCountZero", table32(reset_table::kCount, 0), Lines(), kAll},
      {"ResetTableCountMaximum", table32(reset_table::kCount, kMax32), Lines(), kAll},
      {"ResetTableEntrySizeZero",
       table32(reset_table::kEntrySize, 0),
       {"reset table: its header has 0 where 8 is expected; taken as 8"},
       kAll},
      {"ResetTableEntriesOffset",
       table32(reset_table::kEntriesOffset, kMax32),
       {"reset table: its header has 4294967295 where 40 is expected; taken as 40"},
       kAll},
      {"ResetTableFrameSizeZero",
       table(reset_table::kFrameSize, 0),
       {"reset table: its header has 0 where 32768 is expected; taken as 32768"},
       kAll},
      {"UncompressedLengthZero",
       table(reset_table::kUncompressedLength, 0),
       {"the length of the decoded content is given as 240300 and as 0; taken as 240300"},
       kAll},
      {"UncompressedLengthMaximum",
       table(reset_table::kUncompressedLength, kMax64),
       {"the length of the decoded content is given as 240300 and as 18446744073709551615; taken "
        "as 240300"},
       kAll},
      {"BothLengthsMaximum",
       [](ChmImage& i) {
         i.Put64(i.At(std::string(kResetTableName)) + reset_table::kUncompressedLength, kMax64);
         i.Put64(i.At(std::string(kSpanInfoName)), kMax64);
       },
       {"reset table: it covers 8 frames of 562949953421312; files beyond are lost"},
       kAll},
      {"CompressedLengthMaximum", table(reset_table::kCompressedLength, kMax64), Lines(), kAll},
      {"SecondIntervalStartsAtZero",
       start(2, 0),
       {"/a.htm: not unpacked, its content is damaged",
        "/b.htm: not unpacked, its content is damaged",
        "/c/c.htm: not unpacked, its content is damaged",
        "/c/d.htm: not unpacked, its content is damaged",
        "/e.txt: not unpacked, its content is damaged"},
       Lines()},
      {"SecondIntervalStartsOutside",
       start(2, kMax64),
       {"/a.htm: not unpacked, its content is damaged",
        "/b.htm: not unpacked, its content is damaged",
        "/c/c.htm: not unpacked, its content is damaged",
        "/c/d.htm: not unpacked, its content is damaged",
        "/e.txt: not unpacked, its content is damaged"},
       Lines()},
      {"SecondIntervalStartsOneLate",
       start(2, 0x10011),
       {"/a.htm: not unpacked, its content is damaged",
        "/b.htm: not unpacked, its content is damaged",
        "/c/c.htm: not unpacked, its content is damaged",
        "/c/d.htm: not unpacked, its content is damaged",
        "/e.txt: not unpacked, its content is damaged"},
       Lines()},
      {"FrameInsideIntervalOutside", start(1, kMax64), Lines(), kAll},
      {"NoContent",
       rename(kContentName),
       {"the compressed content is not in the directory",
        "/a.htm: not unpacked, the compressed content cannot be used",
        "/b.htm: not unpacked, the compressed content cannot be used",
        "/c/c.htm: not unpacked, the compressed content cannot be used",
        "/c/d.htm: not unpacked, the compressed content cannot be used",
        "/e.txt: not unpacked, the compressed content cannot be used"},
       Lines()},
      {"CutInSecondInterval",
       [](ChmImage& i) { i.bytes.resize(i.intervals[1] + 0x100); },
       {"the file is cut short: it has 70261 bytes of 266661",
        "the compressed content is cut short: 65808 bytes of 262208 are there",
        "/c/c.htm: not unpacked, its content is damaged",
        "/c/d.htm: not unpacked, its content is damaged",
        "/e.txt: not unpacked, its content is damaged"},
       {"a.htm", "b.htm"}},
      {"CutInFirstInterval",
       [](ChmImage& i) { i.bytes.resize(i.intervals[0] + 0x9000); },
       {"the file is cut short: it has 41317 bytes of 266661",
        "the compressed content is cut short: 36864 bytes of 262208 are there",
        "/b.htm: not unpacked, its content is damaged",
        "/c/c.htm: not unpacked, its content is damaged",
        "/c/d.htm: not unpacked, its content is damaged",
        "/e.txt: not unpacked, its content is damaged"},
       {"a.htm"}},
      {"FirstBlockBroken",
       [](ChmImage& i) { i.bytes[i.intervals[0] + 1] = 0; },
       {"/a.htm: not unpacked, its content is damaged",
        "/b.htm: not unpacked, its content is damaged",
        "/c/c.htm: not unpacked, its content is damaged"},
       {"c/d.htm", "e.txt"}},
      {"SecondBlockBroken",
       [](ChmImage& i) { i.bytes[i.intervals[1] + 1] = 0x70; },
       {"/c/c.htm: not unpacked, its content is damaged",
        "/c/d.htm: not unpacked, its content is damaged",
        "/e.txt: not unpacked, its content is damaged"},
       {"a.htm", "b.htm"}},
      {"LastBlockBroken",
       [](ChmImage& i) { i.bytes[i.intervals[3] + 1] |= 0x80; },
       {"/e.txt: not unpacked, its content is damaged"},
       {"a.htm", "b.htm", "c/c.htm", "c/d.htm"}},
  };
}

INSTANTIATE_TEST_SUITE_P(Content, MalformedTest, testing::ValuesIn(ContentDefects()), DefectName);

}  // namespace
}  // namespace scrivo
