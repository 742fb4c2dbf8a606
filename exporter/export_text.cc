#include "exporter/export_text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "exporter/book_topics.h"
#include "exporter/help_book.h"
#include "exporter/linked_anchors.h"
#include "exporter/markdown.h"
#include "exporter/page_rewriter.h"
#include "exporter/script_text.h"
#include "exporter/site_lists.h"
#include "exporter/site_names.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr char kContentsName[] = "index.md";

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

// An address without what would end it in Markdown.
std::string MarkdownAddress(std::string_view address) {
  std::string written;
  for (const char c : Trimmed(address)) {
    if (std::string_view(" ()<>\\\n\r").find(c) != std::string_view::npos) {
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

// A place, or the name of an anchor, as an address.
std::string AddressOf(std::string_view name) {
  std::string address;
  AppendAddress(name, &address);
  return MarkdownAddress(address);
}

class TextWriter {
 public:
  TextWriter(ChmReader& reader, const std::string& file_name)
      : reader_(reader),
        book_(OpenHelpBook(reader)),
        names_(file_name),
        places_(file_name),
        file_name_(file_name) {
    result_.problems = book_.problems;
    for (const HelpBook::File& file : book_.files) {
      const std::string name = ToUtf8(file.entry->name, kUtf8CodePage);
      const std::string place = names_.Add(name, file.is_page);
      if (place.empty()) {
        result_.problems.push_back(name + ": left out: the name leads out of the folder");
        continue;
      }
      by_place_.emplace(place, files_.size());
      places_.AddPlace(place);
      files_.push_back({file.entry, name, place, file.is_page});
    }
    NameTexts();
    ReadContents();
    ReadPages();
  }

  TextResult Whole(const std::function<void(const std::string&)>& write);
  TextResult Files(SiteOutput& folder);

 private:
  static constexpr std::size_t kNoFile = static_cast<std::size_t>(-1);
  struct File {
    const Entry* entry;
    std::string name, place;
    bool is_page;
    std::string text = "";  // its name among the texts
    std::string title = "";
    bool is_linked = false;  // by a page
  };
  struct Topic {
    int level;
    std::string title;
    std::size_t file = kNoFile;  // none for a heading without a page
    bool is_first = false;       // the first one with that page
    std::string rest = "";       // "#anchor" within the page
    // Where a heading without a page leads: an address outside the help file, or empty.
    std::string outside = "";
  };

  void NameTexts();
  void ReadContents();
  void ReadPages();
  RewrittenPage Rewritten(const File& file, std::string_view html) const;
  void NoteLinks(const File& from, std::string_view html);
  static std::string Link(std::string_view title, const std::string& address) {
    return "[" + MarkdownText(title) + "](" + address + ")";
  }
  std::size_t PageAt(const std::string& place) const;
  // The anchor of a page, or of a place within it, in the one file.
  std::string AnchorOf(const File& page, const std::string& name) const;
  // Where a link leads from the text of `from`, when the text of `to` is another file.
  std::string AddressWithin(const File* from, const File& to, std::string_view rest) const;
  std::string Address(const File& from, std::string_view address, bool in_one_file) const;
  // The page of a topic; `shift` as in MarkdownRules.
  std::string Markdown(const Topic& topic, int shift, bool in_one_file);

  ChmReader& reader_;
  HelpBook book_;
  SiteNames names_, places_;  // of the help file's names, and of the site's
  std::string file_name_;
  std::vector<File> files_;
  std::unordered_map<std::string, std::size_t> by_place_;
  std::vector<Topic> topics_;
  BookTopics book_topics_;
  LinkedAnchors anchors_;
  TextResult result_;
};

// Pages whose names differ in the extension only have texts of their own, and none is in the way of
// the contents and of the list of the folder's files.
void TextWriter::NameTexts() {
  SiteNames texts("");
  for (const char* own : {kContentsName, kSiteListName}) texts.Add(own, false);
  for (File& file : files_) {
    if (file.is_page) file.text = texts.Add(TextName(file.place), false);
  }
  for (File& file : files_) {
    if (!file.is_page) file.text = texts.Add(file.place, false);
  }
}

void TextWriter::ReadContents() {
  std::unordered_set<std::size_t> seen;
  for (const SitemapItem& item : book_.contents.items) {
    Topic topic{item.level, item.name};
    for (const SitemapTarget& target : item.targets) {
      const LinkTarget link = ResolveLink(names_, target.local, book_.contents_name);
      if (topic.file != kNoFile || link.kind != LinkTarget::Kind::kPage) continue;
      topic.file = PageAt(link.place);
      if (topic.file == kNoFile) continue;
      topic.is_first = seen.insert(topic.file).second;
      topic.rest = link.rest;
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

std::size_t TextWriter::PageAt(const std::string& place) const {
  const auto found = by_place_.find(place);
  return found != by_place_.end() && files_[found->second].is_page ? found->second : kNoFile;
}

RewrittenPage TextWriter::Rewritten(const File& file, std::string_view html) const {
  return RewritePage(html, file.name, file.place, names_, book_topics_.Topics(), {});
}

// Learns what is known only when all pages have been read: their titles, what their objects lead
// to, and the places in them that links lead to.
void TextWriter::ReadPages() {
  std::vector<std::size_t> waiting;
  const auto html_of = [&](const File& file) {
    return PageInUtf8(BytesOf(reader_, *file.entry, &result_.problems), book_.code_page);
  };
  for (std::size_t i = 0; i < files_.size(); ++i) {
    File& file = files_[i];
    if (!file.is_page) continue;
    const std::string html = html_of(file);
    const RewrittenPage page = Rewritten(file, html);
    file.title = page.content.title.empty() ? file.place : page.content.title;
    book_topics_.AddPage(page, file.title, file.place);
    NoteLinks(file, page.html);
    if (AsksForTopics(html)) waiting.push_back(i);
  }
  book_topics_.AddIndex(book_, names_);
  for (const std::size_t i : waiting) {
    NoteLinks(files_[i], Rewritten(files_[i], html_of(files_[i])).html);
  }
  for (const Topic& topic : topics_) {
    if (topic.file != kNoFile) anchors_.AddLink(files_[topic.file].place, topic.rest);
  }
  anchors_.Finish();
}

void TextWriter::NoteLinks(const File& from, std::string_view html) {
  anchors_.ReadPage(html, from.place, places_, [&](const std::string& place) {
    const auto found = by_place_.find(place);
    if (found != by_place_.end()) files_[found->second].is_linked = true;
  });
}

std::string TextWriter::AnchorOf(const File& page, const std::string& name) const {
  return AddressOf(page.place) + (name.empty() ? "" : ":" + AddressOf(name));
}

std::string TextWriter::AddressWithin(const File* from, const File& to,
                                      std::string_view rest) const {
  const std::string name = anchors_.Find(to.place, rest);
  std::string address;
  if (from != &to) {
    address = MarkdownAddress(RelativeAddress(from == nullptr ? "" : from->text, to.text));
  }
  return address + (name.empty() ? "" : "#" + AddressOf(name));
}

// `address` is one of the rewritten page.
std::string TextWriter::Address(const File& from, std::string_view address,
                                bool in_one_file) const {
  const LinkTarget link = ResolveLink(places_, address, "/" + from.place);
  if (link.kind == LinkTarget::Kind::kOutside) return MarkdownAddress(address);
  if (link.kind == LinkTarget::Kind::kSamePage) {
    const std::string name = anchors_.Find(from.place, address);
    if (name.empty()) return "";
    return "#" + (in_one_file ? AnchorOf(from, name) : AddressOf(name));
  }
  if (link.kind != LinkTarget::Kind::kPage) return "";
  const std::size_t page = PageAt(link.place);
  if (page == kNoFile) {
    const File& file = files_[by_place_.at(link.place)];
    return in_one_file ? AddressOf(file.place)
                       : MarkdownAddress(RelativeAddress(from.text, file.text));
  }
  const File& to = files_[page];
  if (in_one_file) return "#" + AnchorOf(to, anchors_.Find(to.place, link.rest));
  return AddressWithin(&from, to, link.rest);
}

std::string TextWriter::Markdown(const Topic& topic, int shift, bool in_one_file) {
  const File& from = files_[topic.file];
  std::unordered_set<std::string> named;
  MarkdownRules rules;
  rules.heading_shift = shift;
  rules.known_title = topic.title;
  rules.link = [&](std::string_view address) { return Address(from, address, in_one_file); };
  rules.picture = rules.link;
  rules.anchor = [&](std::string_view name) {
    if (!anchors_.Has(from.place, name) || !named.emplace(name).second) return std::string();
    return in_one_file ? AnchorOf(from, std::string(name)) : AddressOf(name);
  };
  ++result_.pages;
  std::vector<std::string> told_already;
  const std::string html =
      PageInUtf8(BytesOf(reader_, *from.entry, &told_already), book_.code_page);
  return PageAsMarkdown(Rewritten(from, html).html, rules);
}

TextResult TextWriter::Whole(const std::function<void(const std::string&)>& write) {
  bool is_first = true;
  for (Topic& topic : topics_) {
    if (topic.title.empty() && topic.file != kNoFile) topic.title = files_[topic.file].title;
    std::string text(is_first ? 0 : 1, '\n');
    is_first = false;
    if (topic.is_first) text += "<a id=\"" + AnchorOf(files_[topic.file], "") + "\"></a>\n\n";
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
      const File& page = files_[topic.file];
      const std::string anchor = AnchorOf(page, anchors_.Find(page.place, topic.rest));
      text += "\nSee " + Link(topic.title, "#" + anchor) + ".\n";
    } else if (!topic.outside.empty()) {
      text += "\nSee " + Link(topic.title, MarkdownAddress(topic.outside)) + ".\n";
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
    if (topic.title.empty() && topic.file != kNoFile) topic.title = files_[topic.file].title;
    contents.append(static_cast<std::size_t>(topic.level) * 2, ' ');
    contents += "- ";
    if (topic.file == kNoFile) {
      contents += topic.outside.empty() ? MarkdownText(topic.title)
                                        : Link(topic.title, MarkdownAddress(topic.outside));
      contents += '\n';
      continue;
    }
    const File& file = files_[topic.file];
    contents += Link(topic.title, AddressWithin(nullptr, file, topic.rest)) + "\n";
    if (!topic.is_first) continue;
    const std::string page = Markdown(topic, 0, false);
    std::string text = "# ";
    text += MarkdownText(topic.title);
    text += '\n';
    if (!page.empty()) text += '\n';
    text += page;
    folder.Create(file.text, text);
  }
  for (const File& file : files_) {
    if (file.is_page || (!file.is_linked && !IsPicture(file.place))) continue;
    const std::size_t problems = result_.problems.size();
    const std::string bytes = BytesOf(reader_, *file.entry, &result_.problems);
    if (result_.problems.size() == problems) folder.Create(file.text, bytes);
  }
  folder.Create(kContentsName, contents);
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
