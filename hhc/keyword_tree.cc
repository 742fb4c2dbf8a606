#include "hhc/keyword_tree.h"

#include <algorithm>
#include <iterator>

#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

struct LetterRule {
  char32_t letter, first, second;  // second: 0 when it sorts as one letter
  bool upper;
};

constexpr LetterRule kLetters[] = {
#include "hhc/letter_table.inc"
};

// ASCII punctuation in ascending order; what is not here and no letter or digit comes before.
constexpr std::string_view kPunctuation = " _,;:!?/.`^~\"()[]{}@$*\\&#%+<=>|";

constexpr char32_t kPunctuationBase = 0x100, kDigitBase = 0x200, kLetterBase = 0x300,
                   kOtherBase = 0x1000;

struct Weight {
  char32_t primary = 0;  // 0: none
  char mark = 1, upper = 1;
};

class KeyWriter {
 public:
  void Add(char32_t c);
  std::string Take() && {
    // A zero ends each level, so that a shorter text sorts before a longer one.
    return primary_ + '\0' + marks_ + '\0' + cases_ + '\0' + ignored_;
  }

 private:
  void Put(const Weight& weight) {
    // Three bytes, none of them zero: 7 bits each.
    for (const int shift : {14, 7, 0}) {
      primary_.push_back(static_cast<char>(0x80 | ((weight.primary >> shift) & 0x7F)));
    }
    marks_.push_back(weight.mark);
    cases_.push_back(weight.upper);
    ++count_;
  }

  std::string primary_, marks_, cases_, ignored_;
  std::size_t count_ = 0;
};

char32_t LetterWeight(char32_t letter) {
  return letter < 0x80 ? kLetterBase + letter : kOtherBase + letter;
}

void KeyWriter::Add(char32_t c) {
  if (c == '-' || c == '\'') {
    ignored_.push_back(static_cast<char>(1 + std::min<std::size_t>(count_, 0x7D)));
    ignored_.push_back(static_cast<char>(c));
    return;
  }
  if (c < 0x80) {
    const char ascii = static_cast<char>(c);
    if (IsAsciiLetter(ascii)) {
      const char lower = AsciiLower(ascii);
      Put({kLetterBase + static_cast<char32_t>(lower), 1,
           static_cast<char>(lower == ascii ? 1 : 2)});
    } else if (c >= '0' && c <= '9') {
      Put({kDigitBase + c, 1, 1});
    } else if (const std::size_t at = kPunctuation.find(ascii); at != std::string_view::npos) {
      Put({kPunctuationBase + static_cast<char32_t>(at), 1, 1});
    }
    return;
  }
  const auto* rule = std::lower_bound(
      std::begin(kLetters), std::end(kLetters), c,
      [](const LetterRule& entry, char32_t wanted) { return entry.letter < wanted; });
  if (rule == std::end(kLetters) || rule->letter != c) {
    Put({c < 0xC0 ? kPunctuationBase + 0x40 + (c - 0x80) : kOtherBase + c, 1, 1});
    return;
  }
  const char upper = rule->upper ? 2 : 1;
  // Two marks on one letter keep the order of their characters.
  Put({LetterWeight(rule->first), static_cast<char>(2 + (c & 0x7F) % 0x7D), upper});
  if (rule->second != 0) Put({LetterWeight(rule->second), 2, upper});
}

constexpr std::string_view kJoint = ", ";

// A keyword must fit in a block of the index beside its fixed fields.
constexpr std::size_t kLongestKeyword = 488;  // UTF-16 units

}  // namespace

std::string KeywordSortKey(std::string_view keyword) {
  KeyWriter key;
  while (!keyword.empty()) key.Add(NextUtf8(&keyword));
  return std::move(key).Take();
}

void KeywordTree::Add(int level, std::string_view name, const std::vector<std::uint32_t>& topics,
                      std::string_view see_also) {
  const std::size_t depth = std::min(static_cast<std::size_t>(std::max(0, level)), open_.size());
  open_.resize(depth);
  const std::size_t parent = depth == 0 ? kTop : open_.back();
  bool added = false;
  const std::size_t number = FindOrAdd(parent, name, &added);
  open_.push_back(number);
  Node& node = nodes_[number];
  node.topics.insert(node.topics.end(), topics.begin(), topics.end());
  node.targets += topics.size();
  if (!see_also.empty() && ToUtf16(see_also).size() <= kLongestKeyword) {
    if (node.see_also.empty()) node.see_also = see_also;
    ++node.targets;
  }
}

void KeywordTree::AddJoined(std::string_view keyword, std::uint32_t topic) {
  std::size_t parent = kTop;
  while (true) {
    const std::size_t end = keyword.find(kJoint);
    const bool last = end == std::string_view::npos;
    bool added = false;
    parent = FindOrAdd(parent, keyword.substr(0, end), &added);
    std::vector<std::uint32_t>& topics = nodes_[parent].topics;
    if ((added || last) && std::find(topics.begin(), topics.end(), topic) == topics.end()) {
      topics.push_back(topic);
      ++nodes_[parent].targets;
    }
    if (last) return;
    keyword.remove_prefix(end + kJoint.size());
  }
}

std::size_t KeywordTree::FindOrAdd(std::size_t parent, std::string_view name, bool* added) {
  std::string key = std::to_string(parent);
  key += ' ';
  key += name;
  const auto [found, is_new] = by_name_.try_emplace(std::move(key), nodes_.size());
  *added = is_new;
  if (is_new) {
    std::vector<std::size_t>& siblings = parent == kTop ? top_ : nodes_[parent].children;
    siblings.push_back(nodes_.size());
    nodes_.push_back({std::string(name), parent, {}, {}, {}, 0});
  }
  return found->second;
}

std::vector<std::size_t> KeywordTree::SortedChildren(const std::vector<std::size_t>& children,
                                                     const std::vector<std::string>& keys) const {
  std::vector<std::size_t> sorted = children;
  std::stable_sort(sorted.begin(), sorted.end(),
                   [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
  return sorted;
}

std::vector<Keyword> KeywordTree::Sorted(std::size_t* too_long) const {
  std::vector<std::string> keys(nodes_.size());
  for (std::size_t i = 0; i < nodes_.size(); ++i) keys[i] = KeywordSortKey(nodes_[i].name);

  struct Open {
    std::size_t node;
    int level;
    std::string prefix;  // the joined text of the levels above, with the joint
    std::size_t prefix_units;
  };
  std::vector<Keyword> sorted;
  std::vector<Open> stack;
  const auto push = [&](const std::vector<std::size_t>& children, int level,
                        const std::string& prefix, std::size_t units) {
    const std::vector<std::size_t> order = SortedChildren(children, keys);
    for (auto i = order.rbegin(); i != order.rend(); ++i) {
      stack.push_back({*i, level, prefix, units});
    }
  };
  push(top_, 0, "", 0);
  while (!stack.empty()) {
    const Open open = std::move(stack.back());
    stack.pop_back();
    const Node& node = nodes_[open.node];
    Keyword keyword;
    keyword.text = open.prefix + node.name;
    const std::size_t units = open.prefix_units + ToUtf16(node.name).size();
    if (units > kLongestKeyword) {
      ++*too_long;
      continue;
    }
    keyword.level = open.level;
    keyword.last_component = open.prefix_units;
    keyword.topics = node.topics;
    keyword.see_also = node.see_also;
    keyword.targets = node.targets;
    push(node.children, open.level + 1, keyword.text + std::string(kJoint), units + kJoint.size());
    sorted.push_back(std::move(keyword));
  }
  return sorted;
}

}  // namespace scrivo
