#include "chm/problem.h"

#include <cstddef>
#include <utility>

#include "text/visible_text.h"

namespace scrivo {
namespace {

constexpr std::size_t kMostProblems = 100;

// Fills `pattern`: %n is number, %o is other, %e the name, %d the detail.
std::string Fill(std::string_view pattern, const Problem& problem) {
  std::string text;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] != '%') {
      text += pattern[i];
      continue;
    }
    switch (pattern[++i]) {
      case 'n':
        text += std::to_string(problem.number);
        break;
      case 'o':
        text += std::to_string(problem.other);
        break;
      case 'e':
        text += PrintableName(problem.name);
        break;
      default:
        text += PrintableName(problem.detail);
    }
  }
  return text;
}

std::string_view Pattern(ProblemKind kind) {
  switch (kind) {
    case ProblemKind::kNotHelpFile:
      return "not a compiled help file: no ITSF signature";
    case ProblemKind::kHeaderCut:
      return "header cut short: %n bytes, at least %o expected";
    case ProblemKind::kNoDirectory:
      return "no directory at offset %n, where the header places it";
    case ProblemKind::kDirectoryCut:
      return "directory header cut short at offset %n";
    case ProblemKind::kUnknownVersion:
      return "header: unknown version %n, read as version %o";
    case ProblemKind::kFileCut:
      return "the file is cut short: %n of %o bytes";
    case ProblemKind::kDirectoryMoved:
      return "header: no directory at offset %n, found at %o";
    case ProblemKind::kContentOffset:
      return "header: impossible content offset %n, taken as %o";
    case ProblemKind::kDirectoryVersion:
      return "directory: unknown version %n, read as version %o";
    case ProblemKind::kDirectoryHeader:
      return "directory: wrong header length %n, taken as %o";
    case ProblemKind::kChunkSize:
      return "directory: impossible chunk size %n, taken as %o";
    case ProblemKind::kChunkCount:
      return "directory: chunk count %n, but length for %o";
    case ProblemKind::kChunksMissing:
      return "directory: the file ends before chunk %n of %o; names from there on are lost";
    case ProblemKind::kChunkUnknown:
      return "directory: chunk %n is not a listing; its names are lost";
    case ProblemKind::kEntryCount:
      return "directory: chunk %e has entry count %n, but %o entries";
    case ProblemKind::kEntryBroken:
      return "directory: chunk %n is damaged at entry %o; names are lost";
    case ProblemKind::kNoContent:
      return "compressed content: missing from the directory";
    case ProblemKind::kContentOutside:
      return "compressed content: offset %n is outside the file";
    case ProblemKind::kContentCut:
      return "compressed content: cut short, %n of %o bytes";
    case ProblemKind::kControlData:
      return "compression parameters: missing or impossible; window and interval taken as 64 KB";
    case ProblemKind::kResetTable:
      return "reset table: missing or cut short; intervals found by decoding";
    case ProblemKind::kResetTableHeader:
      return "reset table: header field is %n, %o expected and used";
    case ProblemKind::kUncompressedLength:
      return "decoded content: length given as %n and as %o, taken as %n";
    case ProblemKind::kResetTableShort:
      return "reset table: covers %n of %o frames; files beyond are lost";
    case ProblemKind::kMoreProblems:
      return "and %n more problems of this kind";
    case ProblemKind::kSectionUnknown:
      return "%e: not unpacked: unknown encoding of section %n";
    case ProblemKind::kEntryOutside:
      return "%e: not unpacked: located outside the content";
    case ProblemKind::kContentUnusable:
      return "%e: not unpacked: the compressed content is unusable";
    case ProblemKind::kDamaged:
      return "%e: not unpacked: damaged content";
    case ProblemKind::kUnreadable:
      return "%e: not unpacked: the help file cannot be read";
    case ProblemKind::kRenamed:
      return "%e: unpacked as %d";
    case ProblemKind::kRefused:
      return "%e: not unpacked: the name %d";
    case ProblemKind::kLinkInTheWay:
      return "%e: not unpacked: a link in its place leads elsewhere";
    case ProblemKind::kFileInTheWay:
      return "%e: not unpacked: a file is in the place of its folder";
    case ProblemKind::kFolderInTheWay:
      return "%e: not unpacked: what is in its place is not a regular file";
    case ProblemKind::kWriteFailed:
      return "%e: not unpacked: writing failed: %d";
    case ProblemKind::kMoreNotWritten:
      return "nothing more can be written: %n further files are not unpacked";
  }
  return {};
}

}  // namespace

void AddProblem(Problems* problems, Problem problem) {
  if (problems->size() < kMostProblems) {
    problems->push_back(std::move(problem));
  } else if (problems->back().kind == ProblemKind::kMoreProblems) {
    ++problems->back().number;
  } else {
    problems->push_back({ProblemKind::kMoreProblems, 1});
  }
}

std::string Describe(const Problem& problem) { return Fill(Pattern(problem.kind), problem); }

}  // namespace scrivo
