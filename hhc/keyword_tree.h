#pragma once

// The keywords of an index with their levels, merged and sorted.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace scrivo {

// A key that sorts keywords (UTF-8) as an index shows them when keys are compared byte by byte:
// punctuation, then digits, then letters; marks on letters count less than the letters, case less
// than the marks (lower case first); hyphens and apostrophes count least of all. It follows the
// order in which Windows sorts words, which the viewer expects of the index.
std::string KeywordSortKey(std::string_view keyword);

struct Keyword {
  std::string text;  // UTF-8, the levels joined with ", "
  int level = 0;
  std::size_t last_component = 0;  // where the last level starts, in UTF-16 units
  std::vector<std::uint32_t> topics;
  std::string see_also;     // UTF-8; when not empty it stands instead of the topics
  std::size_t targets = 0;  // pages and references together
};

class KeywordTree {
 public:
  // Adds a keyword below the last one added at the level above (at the top when there is none), or
  // adds to the one that is there. Items of a sitemap come here in their order. A reference too
  // long for any keyword leads nowhere and is left out.
  void Add(int level, std::string_view name, const std::vector<std::uint32_t>& topics,
           std::string_view see_also);

  // Adds a keyword of a page, whose levels are joined with ", ". A level above that was not there
  // gets the topic too.
  void AddJoined(std::string_view keyword, std::uint32_t topic);

  bool Empty() const { return nodes_.empty(); }

  // All keywords in the order of the index. Those whose joined text is longer than an index can
  // hold are left out, with all below them, and counted in `*too_long`.
  std::vector<Keyword> Sorted(std::size_t* too_long) const;

 private:
  static constexpr std::size_t kTop = static_cast<std::size_t>(-1);
  struct Node {
    std::string name;
    std::size_t parent;
    std::vector<std::size_t> children;
    std::vector<std::uint32_t> topics;
    std::string see_also;
    std::size_t targets = 0;
  };

  std::size_t FindOrAdd(std::size_t parent, std::string_view name, bool* added);
  std::vector<std::size_t> SortedChildren(const std::vector<std::size_t>& children,
                                          const std::vector<std::string>& keys) const;

  std::vector<Node> nodes_;
  std::vector<std::size_t> top_;
  std::vector<std::size_t> open_;                         // the last node of each level
  std::unordered_map<std::string, std::size_t> by_name_;  // parent's number, a blank, name
};

}  // namespace scrivo
