#include "writers/index.h"

#include <algorithm>

#include "platform/paths.h"
#include "system/system_services.h"
#include "writers/compile_job.h"

namespace scrivo {
namespace {

bool IsSeparator(char c) { return c == ';' || c == ','; }

// The keywords of a page; "" also when they cannot be read, which is no error.
std::string KeywordsOf(SiteFile& file) {
  try {
    return file.Property("keywords");
  } catch (...) {
    return "";
  }
}

// The parts between separators, untrimmed; empty ones are kept.
std::vector<std::string> SplitKeywords(const std::string& keywords) {
  std::vector<std::string> parts;
  for (auto start = keywords.begin();;) {
    const auto end = std::find_if(start, keywords.end(), IsSeparator);
    parts.emplace_back(start, end);
    if (end == keywords.end()) return parts;
    start = end + 1;
  }
}

void AppendEntry(const std::string& keyword, const std::string& title, const std::string& location,
                 std::string* text) {
  // The topic's title is a second parameter of the name "Name", as index files have it.
  *text += kEntryStart + (kNameStart + ToAnsi(keyword)) + kValueEnd + kNameStart + ToAnsi(title) +
           kValueEnd + kLocalStart + NameToAnsi(location) + kValueEnd + kEntryEnd;
}

void AppendPage(SiteFile& file, const Locator& locate, const StatementRunner& run,
                std::string* text) {
  const std::string keywords = KeywordsOf(file);
  if (keywords.empty()) return;
  std::shared_ptr<SiteNode> node;
  std::string title;
  run([&] { node = file.NavigationEntry(); });
  run([&] { title = node ? node->Label() : file.Title(); });
  for (const std::string& keyword : SplitKeywords(keywords)) {
    run([&] { AppendEntry(keyword, title, locate(file.Url()), text); });
  }
}

}  // namespace

std::string KeywordList(const SiteFiles& files, const Locator& locate, const StatementRunner& run) {
  std::string text = kListStart;
  const std::size_t empty_list = text.size();
  for (const std::shared_ptr<SiteFile>& file : files) AppendPage(*file, locate, run, &text);
  return text.size() == empty_list ? "" : text + kListEnd;
}

std::string IndexFile(const std::string& list) { return kSitemapStart + list + kSitemapEnd; }

std::size_t CountKeywords(SiteFile& file) {
  const std::string keywords = KeywordsOf(file);
  if (keywords.empty()) return 0;
  return 1 + static_cast<std::size_t>(std::count_if(keywords.begin(), keywords.end(), IsSeparator));
}

}  // namespace scrivo
