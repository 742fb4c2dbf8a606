#pragma once

#include <string>

namespace scrivo {

// Whether a text holds a control character, such as a line break. In a project file, where each
// line is an option, it would end the line and begin another option.
bool HasControlCharacters(const std::string& text);

// `text` with a blank in place of each control character.
std::string WithoutControlCharacters(std::string text);

}  // namespace scrivo
