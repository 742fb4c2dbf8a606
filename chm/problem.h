#pragma once

// What can be wrong with a help file or with unpacking it: facts, and the one place that words
// them.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivo {

enum class ProblemKind {
  // The file as a whole cannot be used.
  kNotHelpFile,   // no ITSF signature
  kHeaderCut,     // the file ends within its header
  kNoDirectory,   // no ITSP header at offset `number`
  kDirectoryCut,  // the file ends within the header of its directory

  // Something is wrong, and the reader goes on. `number` is what the file says, `other` what it
  // should be or what is taken instead.
  kUnknownVersion,    // taken as version 3
  kFileCut,           // the file has only `number` bytes of `other`
  kDirectoryMoved,    // the directory is at `other`, not at `number`
  kContentOffset,     // content section 0 cannot be at `number`; taken to be at `other`
  kDirectoryVersion,  // version of the directory
  kDirectoryHeader,   // length of its header
  kChunkSize,         // impossible chunk size
  kChunkCount,        // chunks by the header, chunks by the directory's length
  kChunksMissing,     // the file ends before chunk `number` of `other`
  kChunkUnknown,      // chunk `number` is neither a listing nor an index
  kEntryCount,        // chunk `name` says it has `number` entries and has `other`
  kEntryBroken,       // chunk `number`, entry `other`: it and those after it are lost, at the most
                      // up to the next quick reference
  kNoContent,         // the compressed content is not listed
  kContentOutside,    // it lies outside the file, from offset `number` on
  kContentCut,        // the file holds only `number` of its `other` bytes
  kControlData,       // missing or impossible; the usual parameters are taken
  kResetTable,        // missing or too short for its header
  kResetTableHeader,  // a field is `number` and not `other`, which is taken
  kUncompressedLength,  // ResetTable and SpanInfo differ: `number` is taken, not `other`
  kResetTableShort,     // it has entries for `number` frames of `other`
  kMoreProblems,        // `number` further problems of the kinds above

  // An entry, in `name`, cannot be had.
  kSectionUnknown,   // in content section `number`
  kEntryOutside,     // its place lies outside its content section
  kContentUnusable,  // compressed, and the compressed content cannot be used
  kDamaged,          // a block of the compressed content that holds part of it is damaged
  kUnreadable,       // reading the help file failed

  // An entry, in `name`, is written as `detail`.
  kRenamed,
  // An entry, in `name`, is not written.
  kRefused,         // its name is not a place in the folder: `detail` is the end of the sentence
  kLinkInTheWay,    // the folder holds a link where the file or a folder of its should be
  kFileInTheWay,    // a file lies where a folder is needed
  kFolderInTheWay,  // a folder, or something else that is not a regular file, lies in the file's
                    // place
  kWriteFailed,     // the system says `detail`
  kMoreNotWritten,  // nor are `number` further entries, for the same reason
};

struct Problem {
  ProblemKind kind;
  std::uint64_t number = 0;
  std::uint64_t other = 0;
  std::string name{};    // of the entry concerned, UTF-8 as found in the directory
  std::string detail{};  // UTF-8
};

using Problems = std::vector<Problem>;

// Adds a problem. From some hundred on they are only counted, in a last one of kind kMoreProblems,
// so that a large file in which all is wrong does not fill memory with complaints.
void AddProblem(Problems* problems, Problem problem);

// One English line without an end, for people: what is wrong, and what was done about it. Names
// are as PrintableName() gives them.
std::string Describe(const Problem& problem);

}  // namespace scrivo
