#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace scrivo {

// Keeps many messages of one kind from burying the others: of each kind the first are shown and
// the rest only counted.
class MessageLimit {
 public:
  static constexpr std::size_t kMostShown = 20;

  // `all`: whether all are shown.
  explicit MessageLimit(bool all) : all_(all) {}

  // Counts a message; whether it is to be shown. Messages of one `kind` differ only in numbers and
  // in what stands in double quotes.
  bool Shows(const std::string& kind);
  // How many messages of the kind were counted and not shown.
  std::size_t Untold(const std::string& kind) const;
  // What a user does to see them.
  static constexpr char kToSeeAll[] = "To see them all, add --all-messages.";
  // A text for each kind of which more were counted than shown.
  std::vector<std::string> Sums() const;

 private:
  struct Kind {
    std::string name;
    std::size_t count;
  };

  const bool all_;
  std::vector<Kind> kinds_;  // in the order in which they came
};

}  // namespace scrivo
