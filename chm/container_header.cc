#include "chm/container_header.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "bytes/little_endian.h"
#include "chm/container_format.h"

namespace scrivo {
namespace {

constexpr std::uint64_t kUsualDirectoryOffset = itsf::kLengthVersion3 + size_section::kLength;

bool HasSignature(const ByteSource& source, std::uint64_t offset, std::string_view signature) {
  std::array<std::uint8_t, 4> bytes;
  return source.ReadAt(offset, bytes) &&
         std::equal(bytes.begin(), bytes.end(), signature.begin(), signature.end());
}

void CheckFileSize(const ByteSource& source, const std::uint8_t* header, Problems* problems) {
  std::array<std::uint8_t, size_section::kLength> section;
  if (!source.ReadAt(LoadLe64(header + itsf::kSizeSectionOffset), section)) return;
  const std::uint64_t size = LoadLe64(section.data() + size_section::kFileSize);
  // Only a file that is too short is worth a word: signatures and the like may be appended.
  if (size > source.Size()) AddProblem(problems, {ProblemKind::kFileCut, source.Size(), size});
}

// The directory may have been found although the header points elsewhere.
bool FindDirectory(const ByteSource& source, ContainerHeader* header, Problems* problems) {
  const std::uint64_t stated = header->directory_offset;
  if (HasSignature(source, stated, itsp::kSignature)) return true;
  if (HasSignature(source, kUsualDirectoryOffset, itsp::kSignature)) {
    header->directory_offset = kUsualDirectoryOffset;
    AddProblem(problems, {ProblemKind::kDirectoryMoved, stated, kUsualDirectoryOffset});
    return true;
  }
  AddProblem(problems, {ProblemKind::kNoDirectory, stated, 0});
  return false;
}

}  // namespace

std::optional<ContainerHeader> ReadContainerHeader(const ByteSource& source, Problems* problems) {
  if (!HasSignature(source, 0, itsf::kSignature)) {
    AddProblem(problems, {ProblemKind::kNotHelpFile, 0, 0});
    return std::nullopt;
  }
  std::array<std::uint8_t, itsf::kLengthVersion3> bytes{};
  // A version 2 header is followed by more than the eight bytes that it lacks, so reading the
  // longer one is no loss.
  if (!source.ReadAt(0, bytes)) {
    AddProblem(problems, {ProblemKind::kHeaderCut, source.Size(), bytes.size()});
    return std::nullopt;
  }
  ContainerHeader header;
  header.version = LoadLe32(bytes.data() + itsf::kVersion);
  header.directory_offset = LoadLe64(bytes.data() + itsf::kDirectoryOffset);
  header.directory_length = LoadLe64(bytes.data() + itsf::kDirectoryLength);
  if (header.version != 2 && header.version != 3) {
    AddProblem(problems, {ProblemKind::kUnknownVersion, header.version, 3});
  }
  CheckFileSize(source, bytes.data(), problems);
  if (!FindDirectory(source, &header, problems)) return std::nullopt;

  const std::uint64_t left = source.Size() - header.directory_offset;
  header.directory_end = header.directory_offset + std::min(left, header.directory_length);
  header.content_offset = header.directory_end;
  if (header.version != 2) {
    const std::uint64_t stated = LoadLe64(bytes.data() + itsf::kContentOffset);
    const bool possible = stated >= itsf::kLengthVersion3 && stated <= source.Size();
    if (possible) {
      header.content_offset = stated;
    } else {
      AddProblem(problems, {ProblemKind::kContentOffset, stated, header.directory_end});
    }
  }
  return header;
}

bool StartsAsHelpFile(const std::filesystem::path& path, std::error_code* error) {
  error->clear();
  const auto source = OpenFileSource(path, error);
  return source != nullptr && HasSignature(*source, 0, itsf::kSignature);
}

}  // namespace scrivo
