#include "cli/message_limit.h"

#include <algorithm>

namespace scrivo {
namespace {

constexpr char kAnything[] = "...";

// The text with three points for each number and for what stands in quotes.
std::string NameOfKind(const std::string& text) {
  std::string name;
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] == '"') {
      name.append("\"").append(kAnything).append("\"");
      at = std::min(text.find('"', at + 1), text.size() - 1) + 1;
    } else if (text[at] >= '0' && text[at] <= '9') {
      name += kAnything;
      at = std::min(text.find_first_not_of("0123456789", at), text.size());
    } else {
      name += text[at++];
    }
  }
  return name;
}

}  // namespace

bool MessageLimit::Shows(const std::string& kind) {
  if (all_) return true;
  std::string name = NameOfKind(kind);
  auto known = std::find_if(kinds_.begin(), kinds_.end(),
                            [&](const Kind& other) { return other.name == name; });
  if (known == kinds_.end()) known = kinds_.insert(kinds_.end(), {std::move(name), 0});
  return ++known->count <= kMostShown;
}

std::size_t MessageLimit::Untold(const std::string& kind) const {
  const auto known =
      std::find_if(kinds_.begin(), kinds_.end(),
                   [name = NameOfKind(kind)](const Kind& other) { return other.name == name; });
  return known == kinds_.end() || known->count <= kMostShown ? 0 : known->count - kMostShown;
}

std::vector<std::string> MessageLimit::Sums() const {
  std::vector<std::string> sums;
  for (const Kind& kind : kinds_) {
    if (kind.count <= kMostShown) continue;
    sums.push_back("and " + std::to_string(kind.count - kMostShown) +
                   " more of the kind: " + kind.name + "\n" + kToSeeAll);
  }
  return sums;
}

}  // namespace scrivo
