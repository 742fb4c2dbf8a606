#include "exporter/export_text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "exporter/help_book.h"
#include "exporter/markdown.h"
#include "exporter/page_rewriter.h"
#include "exporter/script_text.h"
#include "exporter/site_lists.h"
#include "exporter/site_names.h"
#include "html/title.h"
#include "html/tokenizer.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

bool IsPicture(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos) return false;
  for (const std::string_view extension :
       {"gif", "png", "jpg", "jpeg", "bmp", "svg", "webp", "ico"}) {
    if (EqualsIgnoringCase(name.substr(dot + 1), extension)) return true;
  }
  return false;
}

// "folder/page.htm" as the name of its text.
std::string TextName(std::string_view place) {
  const std::size_t dot = place.rfind('.');
  const std::size_t slash = place.rfind('/');
  const bool has_extension =
      dot != std::string_view::npos && (slash == std::string_view::npos || dot > slash);
  return std::string(place.substr(0, has_extension ? dot : place.size())) + ".md";
}

// An address outside the help file, without what would end it in Markdown.
std::string OutsideAddress(std::string_view address) {
  std::string written;
  for (const char c : Trimmed(address)) {
    if (c == ' ' || c == '(' || c == ')' || c == '<' || c == '>' || c == '\n' || c == '\r') {
      constexpr char kDigits[] = "0123456789ABCDEF";
      written += '%';
      written += kDigits[static_cast<unsigned char>(c) >> 4];
      written += kDigits[c & 15];
    } else {
      written += c;
    }
  }
  return written;
}

class TextWriter {
 public:
  TextWriter(ChmReader& reader, const std::string& file_name)
      : reader_(reader), book_(OpenHelpBook(reader)), names_(file_name), file_name_(file_name) {
    result_.problems = book_.problems;
    for (const HelpBook::File& file : book_.files) {
      const std::string name = ToUtf8(file.entry->name, kUtf8CodePage);
      const std::string place = names_.Add(name, file.is_page);
      if (place.empty()) {
        result_.problems.push_back(name + ": left out: the name leads out of the folder");
        continue;
      }
      by_place_.emplace(place, files_.size());
      files_.push_back({file.entry, name, place, file.is_page});
    }
    ReadContents();
  }

  TextResult Whole(const std::function<void(const std::string&)>& write);
  TextResult Files(SiteOutput& folder);

 private:
  struct File {
    const Entry* entry;
    std::string name, place;
    bool is_page;
  };
  struct Topic {
    int level;
    std::string title;
    std::size_t file;  // kNoFile for a heading without a page
    bool is_first;     // the first one with that page
    // Where a heading without a page leads: an address outside the help file, or empty.
    std::string outside = "";
  };
  static constexpr std::size_t kNoFile = static_cast<std::size_t>(-1);

  void ReadContents();
  std::string TitleOf(std::size_t file);
  std::string Html(std::size_t file);
  static std::string OutsideLink(const Topic& topic) {
    return "[" + MarkdownText(topic.title) + "](" + OutsideAddress(topic.outside) + ")";
  }
  std::string Address(const File& from, std::string_view address, bool in_one_file) const;
  // The page of a topic; `shift` as in MarkdownRules.
  std::string Markdown(const Topic& topic, int shift, bool in_one_file);

  ChmReader& reader_;
  HelpBook book_;
  SiteNames names_;
  std::string file_name_;
  std::vector<File> files_;
  std::unordered_map<std::string, std::size_t> by_place_;
  std::vector<Topic> topics_;
  TextResult result_;
};

void TextWriter::ReadContents() {
  std::unordered_set<std::size_t> seen;
  for (const SitemapItem& item : book_.contents.items) {
    Topic topic{item.level, item.name, kNoFile, false};
    for (const SitemapTarget& target : item.targets) {
      const LinkTarget link = ResolveLink(names_, target.local, book_.contents_name);
      const auto found = by_place_.find(link.place);
      if (topic.file != kNoFile || link.kind != LinkTarget::Kind::kPage ||
          found == by_place_.end() || !files_[found->second].is_page) {
        continue;
      }
      topic.file = found->second;
      topic.is_first = seen.insert(topic.file).second;
    }
    for (const SitemapTarget& target : item.targets) {
      if (topic.file != kNoFile || !topic.outside.empty()) break;
      const std::string address = SiteAddress(target, names_, book_.contents_name);
      if (IsWebAddress(address)) topic.outside = address;
    }
    const bool is_nameless = topic.title.empty() && topic.file == kNoFile;
    if (is_nameless && !item.targets.empty()) topic.title = item.targets[0].title;
    topics_.push_back(std::move(topic));
  }
  for (std::size_t file = 0; file < files_.size(); ++file) {
    if (files_[file].is_page && !seen.contains(file)) topics_.push_back({0, "", file, true});
  }
}

std::string TextWriter::Html(std::size_t file) {
  return PageInUtf8(BytesOf(reader_, *files_[file].entry, &result_.problems), book_.code_page);
}

std::string TextWriter::Address(const File& from, std::string_view address,
                                bool in_one_file) const {
  const LinkTarget link = ResolveLink(names_, address, from.name);
  std::string found;
  switch (link.kind) {
    case LinkTarget::Kind::kPage: {
      const auto file = by_place_.find(link.place);
      const bool is_page = file != by_place_.end() && files_[file->second].is_page;
      if (in_one_file) {
        if (is_page) found.push_back('#');
        AppendAddress(link.place, &found);
        return found;
      }
      return RelativeAddress(TextName(from.place), is_page ? TextName(link.place) : link.place);
    }
    case LinkTarget::Kind::kOutside:
      return OutsideAddress(address);
    default:
      return "";
  }
}

std::string TextWriter::Markdown(const Topic& topic, int shift, bool in_one_file) {
  const File& from = files_[topic.file];
  MarkdownRules rules;
  rules.heading_shift = shift;
  rules.known_title = topic.title;
  rules.link = [&](std::string_view address) { return Address(from, address, in_one_file); };
  rules.picture = rules.link;
  ++result_.pages;
  return PageAsMarkdown(Html(topic.file), rules);
}

std::string TextWriter::TitleOf(std::size_t file) {
  const std::string html = Html(file);
  HtmlTokenizer tokens(html);
  TitleFinder title(kUtf8CodePage);
  HtmlToken token;
  while (title.Title().empty() && tokens.Next(&token)) title.See(token);
  const std::string_view text = Trimmed(title.Title());
  return text.empty() ? files_[file].place : std::string(text);
}

TextResult TextWriter::Whole(const std::function<void(const std::string&)>& write) {
  bool is_first = true;
  for (Topic& topic : topics_) {
    if (topic.title.empty() && topic.file != kNoFile) topic.title = TitleOf(topic.file);
    std::string text(is_first ? 0 : 1, '\n');
    is_first = false;
    if (topic.is_first) {
      text += "<a id=\"";
      AppendAddress(files_[topic.file].place, &text);
      text += "\"></a>\n\n";
    }
    const int level = std::min(topic.level + 1, 6);
    text.append(static_cast<std::size_t>(level), '#');
    text += ' ';
    text += MarkdownText(topic.title);
    text += '\n';
    if (topic.is_first) {
      const std::string page = Markdown(topic, level, true);
      if (!page.empty()) text += '\n';
      text += page;
    } else if (topic.file != kNoFile) {
      text += "\nSee [";
      text += MarkdownText(topic.title);
      text += "](#";
      AppendAddress(files_[topic.file].place, &text);
      text += ").\n";
    } else if (!topic.outside.empty()) {
      text += "\nSee " + OutsideLink(topic) + ".\n";
    }
    write(text);
  }
  return std::move(result_);
}

TextResult TextWriter::Files(SiteOutput& folder) {
  std::string contents = "# ";
  contents += MarkdownText(book_.title.empty() ? file_name_ : book_.title) + "\n";
  contents += topics_.empty() ? "" : "\n";
  for (Topic& topic : topics_) {
    if (topic.title.empty() && topic.file != kNoFile) topic.title = TitleOf(topic.file);
    contents.append(static_cast<std::size_t>(topic.level) * 2, ' ');
    contents += "- ";
    if (topic.file == kNoFile) {
      contents += topic.outside.empty() ? MarkdownText(topic.title) : OutsideLink(topic);
      contents += '\n';
      continue;
    }
    const std::string name = TextName(files_[topic.file].place);
    contents += '[';
    contents += MarkdownText(topic.title);
    contents += "](";
    AppendAddress(name, &contents);
    contents += ")\n";
    if (!topic.is_first) continue;
    const std::string page = Markdown(topic, 0, false);
    std::string text = "# ";
    text += MarkdownText(topic.title);
    text += '\n';
    if (!page.empty()) text += '\n';
    text += page;
    folder.Create(name, text);
  }
  for (const File& file : files_) {
    if (!IsPicture(file.place)) continue;
    const std::size_t problems = result_.problems.size();
    const std::string bytes = BytesOf(reader_, *file.entry, &result_.problems);
    if (result_.problems.size() == problems) folder.Create(file.place, bytes);
  }
  folder.Create("index.md", contents);
  folder.Finish();
  return std::move(result_);
}

}  // namespace

TextResult WriteText(ChmReader& reader, const std::string& file_name,
                     const std::function<void(const std::string&)>& write) {
  return TextWriter(reader, file_name).Whole(write);
}

TextResult WriteTextFiles(ChmReader& reader, const std::string& file_name, SiteOutput& folder) {
  return TextWriter(reader, file_name).Files(folder);
}

}  // namespace scrivo
