#include "cli/control_characters.h"

#include <algorithm>

namespace scrivo {
namespace {

bool IsControlCharacter(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

}  // namespace

bool HasControlCharacters(const std::string& text) {
  return std::any_of(text.begin(), text.end(), IsControlCharacter);
}

std::string WithoutControlCharacters(std::string text) {
  std::replace_if(text.begin(), text.end(), IsControlCharacter, ' ');
  return text;
}

}  // namespace scrivo
