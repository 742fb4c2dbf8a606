#include "exporter/web_structure.h"

#include <algorithm>
#include <array>
#include <vector>

#include "exporter/script_text.h"
#include "text/ascii_text.h"
#include "text/languages.h"

namespace scrivo {
namespace {

constexpr std::size_t kFirstId = 1000;
constexpr char kEncoding[] = "vti_encoding:SR|utf8-nl\r\n";
// The host's, in the order in which it looks for a home page.
constexpr std::array<std::string_view, 8> kWelcomeNames = {
    "index.htm",   "index.html",   "default.htm", "default.html",
    "welcome.htm", "welcome.html", "home.htm",    "home.html"};

struct Node {
  std::string page, label;
  bool leaves_web = false;
  std::vector<std::size_t> children;
};

bool IsWelcomePage(const std::string& path) {
  return std::any_of(kWelcomeNames.begin(), kWelcomeNames.end(),
                     [&](std::string_view name) { return EqualsIgnoringCase(path, name); });
}

// Text as a field of a line: no field ends it.
std::string Field(const std::string& text) {
  std::string field;
  for (const char c : text) {
    if (c == ',' || c == '\\') field.push_back('\\');
    field.push_back(static_cast<unsigned char>(c) < 0x20 || c == '\x7F' ? ' ' : c);
  }
  return field;
}

// Text as the value of a property.
std::string Value(const std::string& text) {
  std::string value;
  for (const char c : text) {
    if (c == '\\') value.push_back('\\');
    value.push_back(static_cast<unsigned char>(c) < 0x20 || c == '\x7F' ? ' ' : c);
  }
  return value;
}

class StructureMaker {
 public:
  StructureMaker(const HelpBook& book, const BookTargets& targets)
      : book_(book), targets_(targets) {}

  WebStructure Make() {
    std::vector<std::size_t> chain = {0};  // the nodes above the next entry
    for (const SitemapItem& item : book_.contents.items) {
      chain.resize(std::min(chain.size(), static_cast<std::size_t>(item.level) + 1));
      nodes_[chain.back()].children.push_back(nodes_.size());
      chain.push_back(nodes_.size());
      nodes_.push_back(NodeOf(item));
    }
    made_.entries = nodes_.size() - 1;
    Write();
    return std::move(made_);
  }

 private:
  Node NodeOf(const SitemapItem& item) {
    Node node;
    node.label = item.name;
    for (const SitemapTarget& target : item.targets) {
      if (node.label.empty()) node.label = target.title;
    }
    if (!item.merge.empty()) ++made_.merged;
    const BookTarget target = targets_.Of(item, book_.contents_name);
    switch (target.kind) {
      case BookTarget::Kind::kFile:
        node.page = target.path;
        if (target.has_anchor) ++made_.anchors;
        made_.labels.emplace(node.page, node.label);
        break;
      case BookTarget::Kind::kOutside:
        node.page = target.path;
        node.leaves_web = true;
        ++made_.outside;
        break;
      case BookTarget::Kind::kNone:
        if (!item.targets.empty()) ++made_.missing;
    }
    return node;
  }

  // Level by level, as the host does; a node's id tells its place.
  void Write() {
    made_.text = "3.0.0.507\r\n" + std::to_string(kFirstId + nodes_.size() - 1);
    std::vector<std::pair<std::size_t, std::size_t>> pending = {{0, 0}};  // node and its id
    std::size_t next_id = kFirstId;
    for (std::size_t i = 0; i < pending.size(); ++i) {
      const auto [parent, parent_id] = pending[i];
      for (const std::size_t child : nodes_[parent].children) {
        WriteNode(nodes_[child], next_id, parent_id);
        pending.emplace_back(child, next_id++);
      }
    }
  }

  void WriteNode(const Node& node, std::size_t id, std::size_t parent) {
    const bool is_home = parent == 0 && made_.home.empty() && IsWelcomePage(node.page);
    if (is_home) made_.home = node.label;
    made_.text += "\r\n" + std::to_string(id) + "," + Field(node.page) + "," +
                  (node.leaves_web ? "1" : "0") + "," + Field(node.label) + "," +
                  std::to_string(parent) + ",0," + (is_home ? "1" : "0");
    if (is_home) made_.text += "\r\nvti_globalpage:BW|true";
  }

  const HelpBook& book_;
  const BookTargets& targets_;
  std::vector<Node> nodes_{1};  // the first is the root
  WebStructure made_;
};

std::string CharsetName(int code_page) {
  switch (code_page) {
    case 932:
      return "shift_jis";
    case 936:
      return "gb2312";
    case 949:
      return "ks_c_5601-1987";
    case 950:
      return "big5";
    default:
      return "windows-" + std::to_string(code_page);
  }
}

}  // namespace

WebStructure MakeWebStructure(const HelpBook& book, const BookTargets& targets) {
  return StructureMaker(book, targets).Make();
}

std::string WebServiceText(const HelpBook& book) {
  std::string text = kEncoding;
  text += "vti_defaultcharset:SR|" + CharsetName(book.code_page) + "\r\n";
  if (const std::string_view tag = TagOfLanguage(book.language); !tag.empty()) {
    text += "vti_defaultlanguage:SR|" + std::string(tag) + "\r\n";
  }
  if (!book.title.empty()) text += "vti_title:SR|" + Value(book.title) + "\r\n";
  text += "vti_welcomenames:VX|";
  for (const std::string_view name : kWelcomeNames) {
    if (name != kWelcomeNames.front()) text += ' ';
    text += name;
  }
  return text + "\r\n";
}

std::string PageNotesText(const std::string& title) {
  std::string html;
  AppendHtmlText(title, &html);
  return kEncoding + ("vti_title:SR|" + Value(html)) + "\r\n";
}

}  // namespace scrivo
