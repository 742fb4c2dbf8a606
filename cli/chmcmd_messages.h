#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// Puts one line that chmcmd printed (without its line end) into the form in which the vendor's
// compiler prints: "HHCnnnn: Warning: text" or "HHCnnnn: Error: text" for what is a message, the
// line as it is for anything else, "" for a line that says nothing to the user.
//
// chmcmd calls a link to an anchor that no page defines an error, though it harms nothing but the
// link; it becomes a warning.
std::string AsCompilerMessage(std::string_view line);

}  // namespace scrivo
