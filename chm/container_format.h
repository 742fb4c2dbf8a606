#pragma once

// Where things lie in a compiled help file, for reader and writer alike. Format source: the public
// descriptions of the ITSF container, checked against the bytes of real files.
//
// A file is: the ITSF header, header section 0 (file size), header section 1 (the directory: an
// ITSP header and chunks of equal size, PMGL with entries and PMGI with an index over them), and
// content section 0. Content section 1 is an LZX stream, stored as one entry of section 0; further
// entries of section 0 tell how it was compressed. Integers are little-endian; an ENCINT is a
// number in groups of seven bits, most significant first, bit 7 set on every byte but the last.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivo {

using Guid = std::array<std::uint8_t, 16>;  // as stored in a file

// ITSF header.
namespace itsf {
inline constexpr std::string_view kSignature = "ITSF";
inline constexpr std::size_t kVersion = 0x04;
inline constexpr std::size_t kHeaderLength = 0x08;
inline constexpr std::size_t kOne = 0x0C;
inline constexpr std::size_t kTimestamp = 0x10;  // low half of the FILETIME of the compile
inline constexpr std::size_t kLanguage = 0x14;   // LCID of the machine that compiled
inline constexpr std::size_t kGuid1 = 0x18;
inline constexpr std::size_t kGuid2 = 0x28;
inline constexpr std::size_t kSizeSectionOffset = 0x38;  // header section 0
inline constexpr std::size_t kSizeSectionLength = 0x40;
inline constexpr std::size_t kDirectoryOffset = 0x48;  // header section 1
inline constexpr std::size_t kDirectoryLength = 0x50;
inline constexpr std::size_t kContentOffset = 0x58;  // content section 0; not in version 2
inline constexpr std::size_t kLengthVersion2 = 0x58;
inline constexpr std::size_t kLengthVersion3 = 0x60;
inline constexpr Guid kGuidValue1 = {0x10, 0xfd, 0x01, 0x7c, 0xaa, 0x7b, 0xd0, 0x11,
                                     0x9e, 0x0c, 0x00, 0xa0, 0xc9, 0x22, 0xe6, 0xec};
inline constexpr Guid kGuidValue2 = {0x11, 0xfd, 0x01, 0x7c, 0xaa, 0x7b, 0xd0, 0x11,
                                     0x9e, 0x0c, 0x00, 0xa0, 0xc9, 0x22, 0xe6, 0xec};
}  // namespace itsf

// Header section 0.
namespace size_section {
inline constexpr std::size_t kMagic = 0x00;
inline constexpr std::uint32_t kMagicValue = 0x1FE;
inline constexpr std::size_t kFileSize = 0x08;
inline constexpr std::size_t kLength = 0x18;
}  // namespace size_section

// ITSP header, at the start of the directory.
namespace itsp {
inline constexpr std::string_view kSignature = "ITSP";
inline constexpr std::size_t kVersion = 0x04;  // 1
inline constexpr std::size_t kHeaderLength = 0x08;
inline constexpr std::size_t kTen = 0x0C;
inline constexpr std::size_t kChunkSize = 0x10;
inline constexpr std::size_t kDensity = 0x14;  // n: a quick reference every 1 + 2^n entries
inline constexpr std::size_t kDepth = 0x18;    // 1: no index, 2: one level of index, ...
inline constexpr std::size_t kRootChunk = 0x1C;
inline constexpr std::size_t kFirstListing = 0x20;
inline constexpr std::size_t kLastListing = 0x24;
inline constexpr std::size_t kMinusOne = 0x28;
inline constexpr std::size_t kChunkCount = 0x2C;
inline constexpr std::size_t kLanguage = 0x30;
inline constexpr std::size_t kGuid = 0x34;
inline constexpr std::size_t kLengthAgain = 0x44;
inline constexpr std::size_t kMinusOnes = 0x48;  // three of them
inline constexpr std::size_t kLength = 0x54;
inline constexpr std::uint32_t kVersionValue = 1;
inline constexpr std::uint32_t kTenValue = 0x0A;
inline constexpr std::uint32_t kUsualChunkSize = 0x1000;
inline constexpr std::uint32_t kUsualDensity = 2;
inline constexpr std::uint32_t kLanguageValue = 0x409;
inline constexpr Guid kGuidValue = {0x6a, 0x92, 0x02, 0x5d, 0x2e, 0x21, 0xd0, 0x11,
                                    0x9d, 0xf9, 0x00, 0xa0, 0xc9, 0x22, 0xe6, 0xec};
}  // namespace itsp

// A chunk number that stands for "none".
inline constexpr std::uint32_t kNoChunk = 0xFFFFFFFF;

// Listing chunk: entries of name, section, offset, length.
namespace pmgl {
inline constexpr std::string_view kSignature = "PMGL";
inline constexpr std::size_t kFreeLength = 0x04;
inline constexpr std::size_t kPrevious = 0x0C;
inline constexpr std::size_t kNext = 0x10;
inline constexpr std::size_t kEntries = 0x14;
}  // namespace pmgl

// Index chunk: entries of name, number of the chunk that starts with it.
namespace pmgi {
inline constexpr std::string_view kSignature = "PMGI";
inline constexpr std::size_t kFreeLength = 0x04;
inline constexpr std::size_t kEntries = 0x08;
}  // namespace pmgi

// At the end of every chunk: the number of entries in the last two bytes, before it the quick
// references, growing down.
inline constexpr std::size_t kEntryCountSize = 2;
inline constexpr std::size_t kQuickReferenceSize = 2;

// Content sections.
inline constexpr std::uint64_t kSectionUncompressed = 0;
inline constexpr std::uint64_t kSectionCompressed = 1;

// Entries that describe the storage, all in section 0.
inline constexpr std::string_view kNameListName = "::DataSpace/NameList";
inline constexpr std::string_view kControlDataName = "::DataSpace/Storage/MSCompressed/ControlData";
inline constexpr std::string_view kSpanInfoName = "::DataSpace/Storage/MSCompressed/SpanInfo";
inline constexpr std::string_view kTransformListName =
    "::DataSpace/Storage/MSCompressed/Transform/List";
inline constexpr std::string_view kInstanceDataName =
    "::DataSpace/Storage/MSCompressed/Transform/{7FC28940-9D31-11D0-9B27-00A0C91E9C7C}/"
    "InstanceData/";
inline constexpr std::string_view kResetTableName =
    "::DataSpace/Storage/MSCompressed/Transform/{7FC28940-9D31-11D0-9B27-00A0C91E9C7C}/"
    "InstanceData/ResetTable";
inline constexpr std::string_view kContentName = "::DataSpace/Storage/MSCompressed/Content";

// The content of Transform/List is this text in UTF-16LE, which the original compiler cuts short.
inline constexpr std::string_view kTransformListText = "{7FC28940-9D31-11D0";

// ControlData.
namespace control_data {
inline constexpr std::size_t kWords = 0x00;  // DWORDs that follow
inline constexpr std::size_t kSignatureOffset = 0x04;
inline constexpr std::string_view kSignature = "LZXC";
inline constexpr std::size_t kVersion = 0x08;  // 1: sizes in bytes, 2: in units of 0x8000
inline constexpr std::size_t kResetInterval = 0x0C;
inline constexpr std::size_t kWindow = 0x10;
inline constexpr std::size_t kCacheSize = 0x14;
inline constexpr std::size_t kLength = 0x1C;
inline constexpr std::uint32_t kUnit = 0x8000;
}  // namespace control_data

// ResetTable.
namespace reset_table {
inline constexpr std::size_t kVersion = 0x00;  // 2
inline constexpr std::size_t kCount = 0x04;
inline constexpr std::size_t kEntrySize = 0x08;
inline constexpr std::size_t kEntriesOffset = 0x0C;
inline constexpr std::size_t kUncompressedLength = 0x10;
inline constexpr std::size_t kCompressedLength = 0x18;
inline constexpr std::size_t kFrameSize = 0x20;
inline constexpr std::size_t kHeaderLength = 0x28;
inline constexpr std::uint32_t kVersionValue = 2;
inline constexpr std::uint32_t kEntrySizeValue = 8;
}  // namespace reset_table

}  // namespace scrivo
