#include <gtest/gtest.h>

#include "chm/container_format.h"
#include "tests/unpack/malformed.h"

namespace scrivo {
namespace {

// Defects of the directory.
std::vector<Defect> DirectoryDefects() {
  const auto header = [](std::size_t field, std::uint32_t value) {
    return [=](ChmImage& i) { i.Put32(i.directory + field, value); };
  };
  const auto chunk = [](std::size_t field, std::uint32_t value) {
    return [=](ChmImage& i) { i.Put32(i.first_chunk + field, value); };
  };
  return {
      {"DirectoryVersionZero",
       header(itsp::kVersion, 0),
       {"directory: unknown version 0, read as version 1"},
       kAll},
      {"DirectoryHeaderLengthZero",
       header(itsp::kHeaderLength, 0),
       {"directory: wrong header length 0, taken as 84"},
       kAll},
      {"DirectoryHeaderLengthOneMore",
       header(itsp::kHeaderLength, 0x55),
       {"directory: wrong header length 85, taken as 84"},
       kAll},
      {"ChunkSizeZero",
       header(itsp::kChunkSize, 0),
       {"directory: impossible chunk size 0, taken as 4096"},
       kAll},
      {"ChunkSizeMaximum",
       header(itsp::kChunkSize, kMax32),
       {"directory: impossible chunk size 4294967295, taken as 4096"},
       kAll},
      {"ChunkSizeHalf",
       header(itsp::kChunkSize, 0x800),
       {"directory: impossible chunk size 2048, taken as 4096"},
       kAll},
      {"ChunkSizeOneMore",
       header(itsp::kChunkSize, 0x1001),
       {"directory: impossible chunk size 4097, taken as 4096"},
       kAll},
      {"DensityMaximum", header(itsp::kDensity, kMax32), Lines(), kAll},
      {"DepthZero", header(itsp::kDepth, 0), Lines(), kAll},
      {"DepthMaximum", header(itsp::kDepth, kMax32), Lines(), kAll},
      {"RootChunkIsItself", header(itsp::kRootChunk, 0), Lines(), kAll},
      {"FirstListingOutside", header(itsp::kFirstListing, 7), Lines(), kAll},
      {"LastListingOutside", header(itsp::kLastListing, kMax32), Lines(), kAll},
      {"ChunkCountZero",
       header(itsp::kChunkCount, 0),
       {"directory: chunk count 0, but length for 1"},
       kAll},
      {"ChunkCountMaximum",
       header(itsp::kChunkCount, kMax32),
       {"directory: chunk count 4294967295, but length for 1"},
       kAll},
      {"ChunkCountOneMore",
       header(itsp::kChunkCount, 2),
       {"directory: chunk count 2, but length for 1"},
       kAll},
      {"ChunkSignature",
       chunk(0, 0),
       {"directory: chunk 0 is not a listing; its names are lost"},
       Lines()},
      {"ChunkIsIndex",
       chunk(0, 0x49474D50),
       {"directory: chunk 0 is not a listing; its names are lost"},
       Lines()},
      {"PreviousLinkToItself", chunk(pmgl::kPrevious, 0), Lines(), kAll},
      {"NextLinkToItself", chunk(pmgl::kNext, 0), Lines(), kAll},
      {"NextLinkOutside", chunk(pmgl::kNext, 99), Lines(), kAll},
      {"FreeLengthZero", chunk(pmgl::kFreeLength, 0), Lines(), kAll},
      {"FreeLengthMaximum", chunk(pmgl::kFreeLength, kMax32), Lines(), kAll},
      {"EntryCountZero",
       [](ChmImage& i) { i.Put16(i.first_chunk + 0xFFE, 0); },
       {"directory: chunk 0 has entry count 0, but 11 entries"},
       kAll},
      {"EntryCountMaximum",
       [](ChmImage& i) { i.Put16(i.first_chunk + 0xFFE, 0xFFFF); },
       {"directory: chunk 0 has entry count 65535, but 11 entries"},
       kAll},
      {"EntryCountOneLess",
       [](ChmImage& i) { i.bytes[i.first_chunk + 0xFFE] -= 1; },
       {"directory: chunk 0 has entry count 10, but 11 entries"},
       kAll},
      {"EntryCountOneMore",
       [](ChmImage& i) { i.bytes[i.first_chunk + 0xFFE] += 1; },
       {"directory: chunk 0 has entry count 12, but 11 entries"},
       kAll},
      {"NameLengthZero",
       [](ChmImage& i) { i.bytes[Row(i, "/b.htm") - 1] = 0; },
       {"directory: chunk 0 is damaged at entry 3; names are lost"},
       {"a.htm", "c/d.htm", "e.txt"}},
      {"NameLengthMaximum",
       [](ChmImage& i) { i.bytes[Row(i, "/b.htm") - 1] = 0xFF; },
       {"directory: chunk 0 is damaged at entry 3; names are lost"},
       {"a.htm", "c/d.htm", "e.txt"}},
      {"SectionTwo",
       [](ChmImage& i) { i.bytes[Row(i, "/b.htm") + 6] = 2; },
       {"/b.htm: not unpacked: unknown encoding of section 2"},
       {"a.htm", "c/c.htm", "c/d.htm", "e.txt"}},
      {"EntryTooLong",
       [](ChmImage& i) { i.bytes[Row(i, "/e.txt") + 10] |= 0x40; },
       {"/e.txt: not unpacked: located outside the content"},
       {"a.htm", "b.htm", "c/c.htm", "c/d.htm"}},
      {"EntryInSectionZeroOutside",
       [](ChmImage& i) {
         i.bytes[Row(i, "/b.htm") + 6] = 0;
         i.bytes[Row(i, "/b.htm") + 8] = 0xFF;
       },
       {"/b.htm: not unpacked: located outside the content"},
       {"a.htm", "c/c.htm", "c/d.htm", "e.txt"}},
  };
}

INSTANTIATE_TEST_SUITE_P(Directory, MalformedTest, testing::ValuesIn(DirectoryDefects()),
                         DefectName);

}  // namespace
}  // namespace scrivo
