#pragma once

#include <string>

namespace scrivo {

// Keeps an existing output file from being lost in a run that makes no new one: it lies aside,
// under a temporary name in its folder, until the new one is accepted, and is put back otherwise.
class OutputGuard {
 public:
  // Sets the file at `path` (absolute) aside, if there is one. Throws Error, with a text for the
  // user, when `path` is a folder, or its folder does not exist or cannot be written to.
  explicit OutputGuard(std::string path);
  // Puts things back unless Accept was called: whatever is at the path is removed, and the earlier
  // file, if there was one, returns.
  ~OutputGuard();
  OutputGuard(const OutputGuard&) = delete;
  OutputGuard& operator=(const OutputGuard&) = delete;

  const std::string& path() const { return path_; }
  // True when there was a file before.
  bool HoldsEarlierFile() const { return !aside_.empty(); }
  // True when a whole help file is at the path: its header is one and names the file's own size.
  bool HasHelpFile() const;
  // The new file stays, the earlier one goes.
  void Accept();

 private:
  std::string path_;
  std::string aside_;  // where the earlier file is, "" when there is none
  bool accepted_ = false;
};

// Throws Error, with a text for the user that begins with `folder` and ends with the sentence
// `what_to_do`, when no file can be made in `folder`.
void ThrowUnlessWritable(const std::string& folder, const std::string& what_to_do);

}  // namespace scrivo
