#include "writers/derived_images.h"

#include <algorithm>

#include "platform/paths.h"
#include "text/fold_case.h"

namespace scrivo {
namespace {

// What a name is sorted by: without regard to case, and in capitals where other characters stand
// between capital and small letters.
std::string OrderKey(const std::string& name) {
  std::string key = FoldCase(name);
  std::transform(key.begin(), key.end(), key.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return key;
}

}  // namespace

std::vector<std::string> DerivedImageNames(Files& files, const std::string& folder) {
  std::vector<std::pair<std::string, std::string>> sorted;
  for (const FolderEntry& entry : files.List(folder)) {
    if (!entry.is_folder) sorted.emplace_back(OrderKey(entry.name), entry.name);
  }
  std::sort(sorted.begin(), sorted.end());
  std::vector<std::string> names;
  for (auto& [key, name] : sorted) names.push_back(std::move(name));
  return names;
}

std::string DerivedImagesPage(const std::vector<std::string>& names) {
  std::string text = "<HTML><HEAD><TITLE></TITLE></HEAD><BODY>\r\n";
  for (const std::string& name : names)
    text += "<img src=\"_derived/" + NameToAnsi(name) + "\">\r\n";
  return text + "</BODY></HTML>";
}

}  // namespace scrivo
