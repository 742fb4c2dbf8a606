#pragma once

// Keeps what Unpack() tells, as text.

#include <cstdint>
#include <string>
#include <vector>

#include "chm/problem.h"
#include "unpack/unpack.h"

namespace scrivo {

class RecordingListener : public UnpackListener {
 public:
  std::vector<std::string> files;
  std::vector<std::string> problems;
  std::uint64_t done = 0;
  std::uint64_t total = 0;

  void OnFile(const PlannedFile& file) override { files.push_back(file.path); }
  void OnProblem(const Problem& problem) override { problems.push_back(Describe(problem)); }
  void OnProgress(std::uint64_t now, std::uint64_t all) override {
    done = now;
    total = all;
  }
};

}  // namespace scrivo
