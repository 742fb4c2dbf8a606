#include "webs/page_facts.h"

#include <algorithm>
#include <optional>
#include <set>

#include "html/page_bars.h"
#include "system/error.h"
#include "text/code_page.h"
#include "text/html_entities.h"
#include "webs/host_notes.h"

namespace scrivo {
namespace {

// The host's notes take a few kilobytes; what is larger was not written by it.
constexpr std::size_t kLongestNotes = 256 * 1024;

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\x7F'; }

// Text as a line of its own: each run of blanks, line ends and no-break spaces is one blank, and
// none stands at either end.
std::string OneLine(std::string_view utf8) {
  std::string line;
  for (std::size_t at = 0; at < utf8.size(); ++at) {
    const bool no_break = utf8.substr(at).starts_with("\xC2\xA0");
    if (no_break) ++at;
    if (no_break || utf8[at] == ' ' || IsControl(utf8[at])) {
      if (!line.empty() && line.back() != ' ') line.push_back(' ');
    } else {
      line.push_back(utf8[at]);
    }
  }
  if (line.ends_with(' ')) line.pop_back();
  return line;
}

// A property's text: its blanks are its own, a line end with what stands around it is one blank.
std::string WithoutLineEnds(std::string_view utf8) {
  std::string text;
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t blanks = std::min(utf8.find_first_not_of(" \t\r\n\f", at), utf8.size());
    const std::string_view run = utf8.substr(at, blanks - at);
    const bool is_plain = run.find_first_not_of(' ') == std::string_view::npos;
    text += is_plain ? run : std::string_view(" ");
    if (blanks < utf8.size()) text.push_back(IsControl(utf8[blanks]) ? ' ' : utf8[blanks]);
    at = blanks + 1;
  }
  return text;
}

// An index entry cannot hold a comma or a semicolon, which part the entries: a blank stands for
// them.
std::string AsEntry(const std::string& text) {
  std::string entry = text;
  std::replace(entry.begin(), entry.end(), ',', ' ');
  std::replace(entry.begin(), entry.end(), ';', ' ');
  return OneLine(entry);
}

// The host's notes about a page, read when they are first needed.
class Notes {
 public:
  Notes(Files& files, const std::string& path) : files_(files), path_(path) {}

  const VtiNotes& Get() {
    if (!notes_) notes_ = Read();
    return *notes_;
  }

 private:
  VtiNotes Read() {
    if (path_.empty() || !files_.FileExists(path_)) return {};
    try {
      return ParseVtiNotes(ReadWhole(*files_.OpenForReading(path_), kLongestNotes));
    } catch (const Error& error) {
      if (error.number == kUserInterrupt) throw;
      return {};  // the notes only fill in for the page
    }
  }

  Files& files_;
  const std::string& path_;
  std::optional<VtiNotes> notes_;
};

// Joins index entries, each once.
class EntryList {
 public:
  // Entries as their author wrote them: they keep their blanks and their empty places.
  void AddKeywords(const std::string& keywords) {
    if (keywords.empty()) return;
    Append(keywords);
    for (std::size_t at = 0; at <= keywords.size();) {
      const std::size_t end = std::min(keywords.find_first_of(",;", at), keywords.size());
      known_.insert(OneLine(keywords.substr(at, end - at)));
      at = end + 1;
    }
  }

  void AddText(const std::string& text) {
    const std::string entry = AsEntry(text);
    if (!entry.empty() && known_.insert(entry).second) Append(entry);
  }

  const std::string& Text() const { return text_; }

 private:
  void Append(const std::string& entries) {
    if (!text_.empty()) text_.push_back(';');
    text_ += entries;
  }

  std::string text_;
  std::set<std::string> known_;
};

}  // namespace

PageReader::PageReader(Files& files, const DiskWebOptions& options, WebText* web_text,
                       WebReport& report)
    : files_(files),
      index_(options.index),
      web_text_(*web_text),
      report_(report),
      without_bars_(options.without_bars) {
  const auto has = [&](IndexSource source) {
    return std::find(index_.begin(), index_.end(), source) != index_.end();
  };
  if (has(IndexSource::kHeadings)) headings_ = Headings::kYes;
  wants_keywords_ = has(IndexSource::kKeywords);
}

PageFacts PageReader::Read(const std::string& path, const std::string& notes_path) {
  Notes notes(files_, notes_path);
  const PageHead head = FindPageHead(ReadPage(path), headings_, [&] {
    const int noted = CodePageFromName(notes.Get().charset).value_or(web_text_.CodePage());
    return noted == kUtf8CodePage ? web_text_.CodePage() : noted;  // it would have told so itself
  });

  std::string title = OneLine(head.title);
  if (title.empty()) {
    title = OneLine(DecodeEntities(GuessedUtf8(notes.Get().title, web_text_.CodePage())));
  }
  PageFacts facts;
  std::string keywords;
  for (const MetaTag& meta : head.metas) {
    std::string content = WithoutLineEnds(meta.content);
    if (meta.name != "keywords") {
      facts.metas.emplace_back(WithoutLineEnds(meta.name), content);
    } else if (!content.empty()) {
      keywords += keywords.empty() ? content : ";" + content;
    }
  }
  if (keywords.empty() && wants_keywords_) {
    keywords = WithoutLineEnds(GuessedUtf8(notes.Get().keywords, web_text_.CodePage()));
  }
  std::vector<std::string> headings;
  for (const std::string& heading : head.headings) headings.push_back(OneLine(heading));
  facts.keywords = web_text_.HandOut(IndexEntries(keywords, title, headings), path);
  facts.title = web_text_.HandOut(title, path);
  return facts;
}

// The whole page: what its bytes are in is told by all of them.
std::string PageReader::ReadPage(const std::string& path) {
  try {
    std::string page = ReadWhole(*files_.OpenForReading(path));
    if (without_bars_) {
      if (auto bare = WithoutBars(page)) page = std::move(*bare);
    }
    return page;
  } catch (const Error& error) {
    ReportFailure(path, "the page cannot be read", error, report_);
    return {};
  }
}

std::string PageReader::IndexEntries(const std::string& keywords, const std::string& title,
                                     const std::vector<std::string>& headings) const {
  EntryList entries;
  for (const IndexSource source : index_) {
    switch (source) {
      case IndexSource::kKeywords:
        entries.AddKeywords(keywords);
        break;
      case IndexSource::kTitles:
        entries.AddText(title);
        break;
      case IndexSource::kHeadings:
        for (const std::string& heading : headings) entries.AddText(heading);
        break;
    }
  }
  return entries.Text();
}

}  // namespace scrivo
