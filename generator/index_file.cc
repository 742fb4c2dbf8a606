// The index file (.hhk): frmMain::BuildIndexFile and its worker UseKeywords.

#include <algorithm>

#include "errors/error_handler.h"
#include "errors/frame.h"
#include "generator/frm_main.h"
#include "generator/project_names.h"
#include "generator/sitemap_text.h"
#include "platform/text_file.h"
#include "system/services.h"

namespace scrivo {
namespace {

// The keywords of a page; "" also when they cannot be read, which is no error.
std::string KeywordsOf(SiteFile& file) {
  std::string keywords;
  IgnoringErrors([&] { keywords = file.Property("keywords"); });
  return keywords;
}

// The parts between separators, untrimmed; empty ones are kept.
std::vector<std::string> SplitKeywords(std::string keywords) {
  std::replace(keywords.begin(), keywords.end(), ';', ',');
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = keywords.find(',', start);
    parts.push_back(keywords.substr(start, end - start));
    if (end == std::string::npos) return parts;
    start = end + 1;
  }
}

void AppendEntry(const std::string& keyword, const std::string& title, const std::string& location,
                 std::string* text) {
  // The topic's title is a second parameter of the name "Name", as index files have it.
  *text += kEntryStart + (kNameStart + keyword) + kValueEnd + kNameStart + title + kValueEnd +
           kLocalStart + location + kValueEnd + kEntryEnd;
}

// Appends the entries of one page: statements of UseKeywords.
void AppendPage(Steps& step, frmMain& form, SiteFile& file, std::string* text) {
  const std::string keywords = KeywordsOf(file);
  if (keywords.empty()) return;
  std::shared_ptr<SiteNode> node;
  std::string title;
  step([&] { node = file.NavigationEntry(); });
  step([&] { title = node ? node->Label() : file.Title(); });
  for (const std::string& keyword : SplitKeywords(keywords)) {
    step([&] { AppendEntry(keyword, title, form.LocationOf(file.Url()), text); });
  }
}

}  // namespace

std::string frmMain::UseKeywords() {
  std::string result;
  Procedure("Kestrel.frmMain.UseKeywords", [&](Steps& step) {
    std::string text = kListStart;
    const std::size_t empty_list = text.size();
    SiteFiles files;
    step([&] { files = AllFiles(); });
    for (const std::shared_ptr<SiteFile>& file : files) AppendPage(step, *this, *file, &text);
    if (text.size() == empty_list) return;
    step([&] { text += kListEnd; });
    result = std::move(text);
  });
  return result;
}

bool frmMain::BuildIndexFile() {
  bool done = false;
  Procedure("Kestrel.frmMain.BuildIndexFile", [&](Steps& step) {
    std::string body;
    step([&] { body = UseKeywords(); });
    if (!body.empty()) {
      step([&] { index_path_ = NewProjectPath(".hhk"); });
      step([&] { WriteTextFile(index_path_, kSitemapStart + body + kSitemapEnd); });
    } else {
      step([&] {
        TheServices().desktop->ShowMessage("No keywords were found! No index was created!",
                                           kExclamation | kOkOnly, kComponentTitle);
      });
      use_index_ = false;
    }
    done = true;
  });
  return done;
}

}  // namespace scrivo
