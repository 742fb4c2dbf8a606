#include "ui/access_keys.h"

#include <set>

namespace scrivo {
namespace {

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::vector<std::string> WithAccessKeys(const std::vector<std::string>& captions) {
  std::vector<std::string> marked;
  std::set<char> taken;
  for (const std::string& caption : captions) {
    std::string text;
    bool has_key = false;
    for (const char c : caption) {
      if (!has_key && IsLetter(c) && taken.insert(Lower(c)).second) {
        has_key = true;
        text += '&';
      }
      text += c;
      if (c == '&') text += '&';
    }
    marked.push_back(text);
  }
  return marked;
}

}  // namespace scrivo
