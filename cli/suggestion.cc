#include "cli/suggestion.h"

#include <algorithm>

namespace scrivo {
namespace {

// How many letters must be inserted, removed, replaced or swapped with their neighbour to make
// one word of the other.
std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> cost(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) cost[i][0] = i;
  for (std::size_t j = 0; j <= b.size(); ++j) cost[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = cost[i - 1][j - 1] + (a[i - 1] != b[j - 1]);
      cost[i][j] = std::min({replaced, cost[i - 1][j] + 1, cost[i][j - 1] + 1});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
      }
    }
  }
  return cost[a.size()][b.size()];
}

}  // namespace

std::string Suggest(const std::string& word, const std::vector<std::string>& candidates) {
  std::vector<std::string> completions;
  std::string nearest;
  std::size_t nearest_distance = word.size() + 1;
  for (const std::string& candidate : candidates) {
    if (candidate.starts_with(word)) completions.push_back(candidate);
    if (word.size() > 2 * candidate.size()) continue;
    const std::size_t distance = Distance(word, candidate);
    if (distance <= candidate.size() / 3 && distance < nearest_distance) {
      nearest = candidate;
      nearest_distance = distance;
    }
  }
  if (nearest.empty() && completions.size() == 1) return completions[0];
  return nearest;
}

}  // namespace scrivo
