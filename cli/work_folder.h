#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "bytes/held_file.h"

namespace scrivo {

// A folder beside an output, "<output>.scrivo-work", that is there for one run of another compiler
// and goes with it. What a run left that was ended, the next one to the same output removes: told
// by a lock, so that no living run is met.
class WorkFolder {
 public:
  // `output` is the help file's full path. Throws Error, with a text for the user, when no folder
  // can be made.
  explicit WorkFolder(const std::string& output);
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  // The full path of a file in the folder.
  std::string PathOf(const std::string& name) const;

 private:
  std::filesystem::path path_;
  std::unique_ptr<HeldFile> held_;
};

}  // namespace scrivo
