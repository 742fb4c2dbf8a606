#include "writers/derived_images.h"

#include <algorithm>

#include "platform/ansi_names.h"

namespace scrivo {
namespace {

std::string UpperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return text;
}

}  // namespace

std::vector<std::string> DerivedImageNames(Files& files, const std::string& folder) {
  std::vector<std::pair<std::string, std::string>> sorted;
  for (const FolderEntry& entry : files.List(folder)) {
    if (!entry.is_folder) sorted.emplace_back(UpperCase(entry.name), entry.name);
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
