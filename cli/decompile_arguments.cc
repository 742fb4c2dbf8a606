#include "cli/decompile_arguments.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <span>

namespace scrivo {
namespace {

using Words = std::span<const std::string>;

bool EqualsIgnoringCase(const std::string& text, const std::string& lower) {
  return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == b;
  });
}

bool TakeSwitch(const std::string& word, DecompileArguments* arguments) {
  if (word == "-v") {
    arguments->verbose = true;
  } else if (word == "--internal") {
    arguments->internal = true;
  } else {
    return false;
  }
  return true;
}

Words TakeSwitches(Words words, DecompileArguments* arguments) {
  while (!words.empty() && TakeSwitch(words.front(), arguments)) words = words.subspan(1);
  return words;
}

// A path out of its words, without quotes that came through around it.
std::string Join(Words words) {
  std::string joined;
  for (const std::string& word : words) {
    if (!joined.empty()) joined += ' ';
    joined += word;
  }
  if (joined.size() >= 2 && joined.front() == '"' && joined.back() == '"') {
    joined = joined.substr(1, joined.size() - 2);
  }
  return joined;
}

}  // namespace

std::optional<DecompileArguments> ParseDecompileArguments(
    const std::vector<std::string>& arguments,
    const std::function<bool(const std::string&)>& is_file,
    const std::function<bool(const std::string&)>& is_folder) {
  DecompileArguments result;
  Words words = TakeSwitches(arguments, &result);
  if (words.empty() || !EqualsIgnoringCase(words.front(), "-decompile")) return std::nullopt;
  words = TakeSwitches(words.subspan(1), &result);
  while (!words.empty() && TakeSwitch(words.back(), &result)) words = words.first(words.size() - 1);

  std::vector<std::size_t> splits;  // where FILE may start
  for (std::size_t split = 1; split < words.size(); ++split) {
    if (words.size() == 2 || is_file(Join(words.subspan(split)))) splits.push_back(split);
  }
  if (splits.size() > 1) {
    std::erase_if(splits, [&](std::size_t split) { return !is_folder(Join(words.first(split))); });
  }
  if (splits.size() != 1) return std::nullopt;
  result.folder = Join(words.first(splits[0]));
  result.file = Join(words.subspan(splits[0]));
  if (result.folder.empty() || result.file.empty()) return std::nullopt;
  return result;
}

}  // namespace scrivo
