#include "platform/command_line.h"

#include <algorithm>
#include <cstring>

namespace scrivo {
namespace {

constexpr const char* kSpecial = " \t\r\n\"\\";
constexpr const char* kSpecialInQuotes = "\"\\";
constexpr const char* kBlanks = " \t";

bool IsOneOf(char character, const char* set) {
  return character != '\0' && std::strchr(set, character) != nullptr;
}

// Takes the word at `*at`, which is not a blank.
std::string TakeWord(const std::string& line, std::size_t* at) {
  std::string word;
  bool in_quotes = false;
  for (; *at < line.size(); ++*at) {
    char character = line[*at];
    if (!in_quotes && IsOneOf(character, kBlanks)) break;
    if (character == '"') {
      in_quotes = !in_quotes;
      continue;
    }
    const bool escapes = character == '\\' && *at + 1 < line.size() &&
                         IsOneOf(line[*at + 1], in_quotes ? kSpecialInQuotes : kSpecial);
    if (escapes) character = line[++*at];
    word += character;
  }
  return word;
}

}  // namespace

std::vector<std::string> SplitCommandLine(const std::string& command_line) {
  std::vector<std::string> words;
  std::size_t at = 0;
  for (;;) {
    at = std::min(command_line.find_first_not_of(kBlanks, at), command_line.size());
    if (at == command_line.size()) return words;
    if (words.empty() && command_line[at] == '"') {
      const std::size_t end = std::min(command_line.find('"', at + 1), command_line.size());
      words.push_back(command_line.substr(at + 1, end - at - 1));
      at = std::min(end + 1, command_line.size());
    } else {
      words.push_back(TakeWord(command_line, &at));
    }
  }
}

std::string EscapeWord(const std::string& word) {
  std::string escaped;
  for (const char character : word) {
    if (IsOneOf(character, kSpecial)) escaped += '\\';
    escaped += character;
  }
  return escaped;
}

}  // namespace scrivo
