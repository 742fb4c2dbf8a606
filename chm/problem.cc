#include "chm/problem.h"

#include <cstddef>
#include <utility>

#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr std::size_t kMostProblems = 100;

void AppendHex(unsigned char byte, std::string* out) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  *out += "\\x";
  *out += kDigits[byte >> 4];
  *out += kDigits[byte & 15];
}

// Control characters, and those that turn the direction of writing round.
bool IsTricky(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x200B && c <= 0x200F) ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

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
      return "not a compiled help file: it does not start with ITSF";
    case ProblemKind::kHeaderCut:
      return "the file ends within its header: it has %n bytes of at least %o";
    case ProblemKind::kNoDirectory:
      return "the directory is not at offset %n, where the header has it";
    case ProblemKind::kDirectoryCut:
      return "the file ends within the header of its directory, at offset %n";
    case ProblemKind::kUnknownVersion:
      return "header: version %n is unknown; read as version %o";
    case ProblemKind::kFileCut:
      return "the file is cut short: it has %n bytes of %o";
    case ProblemKind::kDirectoryMoved:
      return "header: the directory is not at offset %n; found at %o";
    case ProblemKind::kContentOffset:
      return "header: the content cannot start at offset %n; taken to start at %o";
    case ProblemKind::kDirectoryVersion:
      return "directory: version %n is unknown; read as version %o";
    case ProblemKind::kDirectoryHeader:
      return "directory: header length %n is wrong; taken as %o";
    case ProblemKind::kChunkSize:
      return "directory: chunk size %n cannot be right; taken as %o";
    case ProblemKind::kChunkCount:
      return "directory: it is said to have %n chunks, and to be as long as %o";
    case ProblemKind::kChunksMissing:
      return "directory: the file ends before chunk %n of %o; the names from there on are lost";
    case ProblemKind::kChunkUnknown:
      return "directory: chunk %n is no list of names, where one should be; its names are lost";
    case ProblemKind::kEntryCount:
      return "directory: chunk %e is said to have %n entries, but has %o";
    case ProblemKind::kEntryBroken:
      return "directory: chunk %n is damaged at entry %o; names are lost";
    case ProblemKind::kNoContent:
      return "the compressed content is not in the directory";
    case ProblemKind::kContentOutside:
      return "the compressed content is said to be at offset %n, outside the file";
    case ProblemKind::kContentCut:
      return "the compressed content is cut short: %n bytes of %o are there";
    case ProblemKind::kControlData:
      return "compression parameters are missing or impossible; taken as 64 KB window and interval";
    case ProblemKind::kResetTable:
      return "the reset table is missing or cut short; intervals are found by decoding";
    case ProblemKind::kResetTableHeader:
      return "reset table: its header has %n where %o is expected; taken as %o";
    case ProblemKind::kUncompressedLength:
      return "the length of the decoded content is given as %n and as %o; taken as %n";
    case ProblemKind::kResetTableShort:
      return "reset table: it covers %n frames of %o; files beyond are lost";
    case ProblemKind::kMoreProblems:
      return "and %n more problems like these";
    case ProblemKind::kSectionUnknown:
      return "%e: not unpacked, it lies in section %n, whose coding is unknown";
    case ProblemKind::kEntryOutside:
      return "%e: not unpacked, its place lies outside the content";
    case ProblemKind::kContentUnusable:
      return "%e: not unpacked, the compressed content cannot be used";
    case ProblemKind::kDamaged:
      return "%e: not unpacked, its content is damaged";
    case ProblemKind::kUnreadable:
      return "%e: not unpacked, reading the help file failed";
    case ProblemKind::kRenamed:
      return "%e: unpacked as %d";
    case ProblemKind::kRefused:
      return "%e: not unpacked, its name %d";
    case ProblemKind::kLinkInTheWay:
      return "%e: not unpacked, a link lies in its place and would lead elsewhere";
    case ProblemKind::kFileInTheWay:
      return "%e: not unpacked, a file lies where its folder should be";
    case ProblemKind::kFolderInTheWay:
      return "%e: not unpacked, what lies in its place is no plain file";
    case ProblemKind::kWriteFailed:
      return "%e: not unpacked, writing failed: %d";
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

std::string PrintableName(std::string_view name) {
  std::string printable;
  while (!name.empty()) {
    const std::string_view before = name;
    const char32_t character = NextUtf8(&name);
    const std::string_view taken = before.substr(0, before.size() - name.size());
    if (IsTricky(character) || !IsUtf8(taken)) {
      for (const char c : taken) AppendHex(static_cast<unsigned char>(c), &printable);
    } else {
      printable += taken;
    }
  }
  return printable;
}

std::string Describe(const Problem& problem) { return Fill(Pattern(problem.kind), problem); }

}  // namespace scrivo
