#pragma once

// Unpacks a help file into a folder, on all cores.
//
// The compressed content is decoded in runs of reset intervals, each run by one thread, which also
// writes what it decoded; a file that lies across runs is put together in place. So a file is
// written once, and what is held in memory does not grow with the help file: besides the list of
// entries at most some 40 MiB, however many cores there are.

#include <cstddef>
#include <cstdint>

#include "chm/chm_reader.h"
#include "chm/problem.h"
#include "unpack/output_folder.h"
#include "unpack/unpack_plan.h"

namespace scrivo {

// Is told what becomes of the entries, on the thread that called Unpack(), one call at a time:
// first the problems that show before anything is decoded, then one call for every file, in the
// order in which the files are stored. The same help file gives the same calls every time, but for
// OnProgress(). A listener may throw, which ends the unpacking as StopWanted() does.
class UnpackListener {
 public:
  virtual ~UnpackListener() = default;
  // `file` has been written.
  virtual void OnFile(const PlannedFile& file) = 0;
  // An entry is not written, or not under its own name.
  virtual void OnProblem(const Problem& problem) = 0;
  // `done` bytes of `total` have been dealt with.
  virtual void OnProgress(std::uint64_t done, std::uint64_t total) = 0;
  // Whether to leave it at what has been written whole. Asked often, and on any thread.
  virtual bool StopWanted() const { return false; }
};

struct UnpackOptions {
  bool internal = false;  // also the streams of the help system
  unsigned threads = 0;   // at most so many; 0: one for every core
};

struct UnpackResult {
  std::size_t written = 0;
  std::size_t problems = 0;  // calls of OnProblem(), and the files that one of them counts
  bool stopped = false;      // StopWanted() has said so
};

// A damaged interval costs the files that have a part in it, and only those. A disk that takes no
// more ends the work: one problem says why, and another how many files are missing. When not all
// was unpacked, no file is left half and no folder empty that was made.
UnpackResult Unpack(const ChmReader& reader, OutputFolder& folder, const UnpackOptions& options,
                    UnpackListener& listener);

}  // namespace scrivo
