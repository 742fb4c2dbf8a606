#include "chm/problem.h"

#include <cstddef>
#include <utility>

namespace scrivo::chm {
namespace {

constexpr std::size_t kMostProblems = 100;

}  // namespace

void AddProblem(Problems* problems, Problem problem) {
  if (problems->size() < kMostProblems) {
    problems->push_back(std::move(problem));
  } else if (problems->back().kind == ProblemKind::kMoreProblems) {
    ++problems->back().number;
  } else {
    problems->push_back({ProblemKind::kMoreProblems, 1, 0});
  }
}

}  // namespace scrivo::chm
