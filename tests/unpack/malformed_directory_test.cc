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
       {"directory: version 0 is unknown; read as version 1"},
       kAll},
      {"DirectoryHeaderLengthZero",
       header(itsp::kHeaderLength, 0),
       {"directory: header length 0 is wrong; taken as 84"},
       kAll},
      {"DirectoryHeaderLengthOneMore",
       header(itsp::kHeaderLength, 0x55),
       {"directory: header length 85 is wrong; taken as 84"},
       kAll},
      {"ChunkSizeZero",
       header(itsp::kChunkSize, 0),
       {"directory: chunk size 0 cannot be right; taken as 4096"},
       kAll},
      {"ChunkSizeMaximum",
       header(itsp::kChunkSize, kMax32),
       {"directory: chunk size 4294967295 cannot be right; taken as 4096"},
       kAll},
      {"ChunkSizeHalf",
       header(itsp::kChunkSize, 0x800),
       {"directory: chunk size 2048 cannot be right; taken as 4096"},
       kAll},
      {"ChunkSizeOneMore",
       header(itsp::kChunkSize, 0x1001),
       {"directory: chunk size 4097 cannot be right; taken as 4096"},
       kAll},
      {"DensityMaximum", header(itsp::kDensity, kMax32), Lines(), kAll},
      {"DepthZero", header(itsp::kDepth, 0), Lines(), kAll},
      {"DepthMaximum", header(itsp::kDepth, kMax32), Lines(), kAll},
      {"RootChunkIsItself", header(itsp::kRootChunk, 0), Lines(), kAll},
      {"FirstListingOutside", header(itsp::kFirstListing, 7), Lines(), kAll},
      {"LastListingOutside", header(itsp::kLastListing, kMax32), Lines(), kAll},
      {"ChunkCountZero",
       header(itsp::kChunkCount, 0),
       {"directory: it is said to have 0 chunks, and to be as long as 1"},
       kAll},
      {"ChunkCountMaximum",
       header(itsp::kChunkCount, kMax32),
       {"directory: it is said to have 4294967295 chunks, and to be as long as 1"},
       kAll},
      {"ChunkCountOneMore",
       header(itsp::kChunkCount, 2),
       {"directory: it is said to have 2 chunks, and to be as long as 1"},
       kAll},
      {"ChunkSignature",
       chunk(0, 0),
       {"directory: chunk 0 is no list of names, where one should be; its names are lost"},
       Lines()},
      {"ChunkIsIndex",
       chunk(0, 0x49474D50),
       {"directory: chunk 0 is no list of names, where one should be; its names are lost"},
       Lines()},
      {"PreviousLinkToItself", chunk(pmgl::kPrevious, 0), Lines(), kAll},
      {"NextLinkToItself", chunk(pmgl::kNext, 0), Lines(), kAll},
      {"NextLinkOutside", chunk(pmgl::kNext, 99), Lines(), kAll},
      {"FreeLengthZero", chunk(pmgl::kFreeLength, 0), Lines(), kAll},
      {"FreeLengthMaximum", chunk(pmgl::kFreeLength, kMax32), Lines(), kAll},
      {"EntryCountZero",
       [](ChmImage& i) { i.Put16(i.first_chunk + 0xFFE, 0); },
       {"directory: chunk 0 is said to have 0 entries, but has 11"},
       kAll},
      {"EntryCountMaximum",
       [](ChmImage& i) { i.Put16(i.first_chunk + 0xFFE, 0xFFFF); },
       {"directory: chunk 0 is said to have 65535 entries, but has 11"},
       kAll},
      {"EntryCountOneLess",
       [](ChmImage& i) { i.bytes[i.first_chunk + 0xFFE] -= 1; },
       {"directory: chunk 0 is said to have 10 entries, but has 11"},
       kAll},
      {"EntryCountOneMore",
       [](ChmImage& i) { i.bytes[i.first_chunk + 0xFFE] += 1; },
       {"directory: chunk 0 is said to have 12 entries, but has 11"},
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
       {"/b.htm: not unpacked, it lies in section 2, whose coding is unknown"},
       {"a.htm", "c/c.htm", "c/d.htm", "e.txt"}},
      {"EntryTooLong",
       [](ChmImage& i) { i.bytes[Row(i, "/e.txt") + 10] |= 0x40; },
       {"/e.txt: not unpacked, its place lies outside the content"},
       {"a.htm", "b.htm", "c/c.htm", "c/d.htm"}},
      {"EntryInSectionZeroOutside",
       [](ChmImage& i) {
         i.bytes[Row(i, "/b.htm") + 6] = 0;
         i.bytes[Row(i, "/b.htm") + 8] = 0xFF;
       },
       {"/b.htm: not unpacked, its place lies outside the content"},
       {"a.htm", "c/c.htm", "c/d.htm", "e.txt"}},
  };
}

INSTANTIATE_TEST_SUITE_P(Directory, MalformedTest, testing::ValuesIn(DirectoryDefects()),
                         DefectName);

}  // namespace
}  // namespace scrivo
