#include "cli/chmcmd_messages.h"

namespace scrivo {
namespace {

constexpr std::string_view kBanner = "chmcmd, a CHM compiler.";
constexpr std::string_view kCrash = "An unhandled exception occurred";

// The message of the line that names an exception, such as "EFOpenError: Unable to open file";
// empty when the line is none.
std::string_view ExceptionText(std::string_view line) {
  if (line.size() < 2 || line[0] != 'E' || line[1] < 'A' || line[1] > 'Z') return {};
  const std::size_t colon = line.find(": ");
  if (colon == std::string_view::npos || line.substr(0, colon).find(' ') != line.npos) return {};
  return line.substr(colon + 2);
}

}  // namespace

std::string AsCompilerMessage(std::string_view line) {
  if (line.starts_with(kBanner) || line.starts_with(kCrash) || line.starts_with("  $")) return "";
  if (line.starts_with("Error: Anchor ")) return "HHC3002: Warning: " + std::string(line.substr(7));
  if (line.starts_with("Warning: ")) return "HHC3001: " + std::string(line);
  if (line.starts_with("Error: ")) return "HHC5001: " + std::string(line);
  if (const std::string_view text = ExceptionText(line); !text.empty()) {
    return "HHC7000: Error: chmcmd failed: " + std::string(text);
  }
  return std::string(line);
}

}  // namespace scrivo
