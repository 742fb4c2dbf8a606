#include "unpack/safe_path.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr std::size_t kMaxDepth = 100;
// Every common file system holds parts of 255 bytes or UTF-16 units; the difference leaves room for
// the "~number" of a second one and for the ending of growing files.
constexpr std::size_t kMaxPart = 240;
// What counts as an extension, worth keeping when a part is cut.
constexpr std::size_t kMaxExtension = 16;
constexpr char kReplacement = '_';

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

std::string UpperAscii(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - ('a' - 'A'));
  }
  return upper;
}

// Windows takes these for devices in every folder and with any extension.
bool IsDeviceName(std::string_view part) {
  std::string_view stem = part.substr(0, part.find('.'));
  while (stem.ends_with(' ')) stem.remove_suffix(1);
  const std::string upper = UpperAscii(stem);
  static constexpr std::array<std::string_view, 6> kNames = {"CON", "PRN",    "AUX",
                                                             "NUL", "CONIN$", "CONOUT$"};
  if (std::find(kNames.begin(), kNames.end(), upper) != kNames.end()) return true;
  if (!upper.starts_with("COM") && !upper.starts_with("LPT")) return false;
  const std::string_view number = std::string_view(upper).substr(3);
  // The superscript digits count as digits there.
  return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "\u00B9" ||
         number == "\u00B2" || number == "\u00B3";
}

bool IsForbidden(char c, NameRules rules) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 0x20 || byte == 0x7F || c == ':') return true;
  return rules == NameRules::kWindows && std::string_view("<>\"|?*").find(c) != std::string::npos;
}

// Windows names are UTF-16, so malformed UTF-8 has no place in them.
std::string ReplaceMalformed(std::string_view part) {
  std::string well_formed;
  while (!part.empty()) {
    const std::string_view before = part;
    const char32_t character = NextUtf8(&part);
    const std::string_view taken = before.substr(0, before.size() - part.size());
    if (character == 0xFFFD && !IsUtf8(taken)) {
      well_formed += kReplacement;
    } else {
      well_formed += taken;
    }
  }
  return well_formed;
}

std::size_t NameUnits(std::string_view part, NameRules rules) {
  return rules == NameRules::kPosix ? part.size() : ToUtf16(part).size();
}

// The length of `part` without its extension.
std::size_t StemLength(std::string_view part) {
  const std::size_t dot = part.rfind('.');
  const bool has_extension =
      dot != std::string_view::npos && dot != 0 && part.size() - dot <= kMaxExtension;
  return has_extension ? dot : part.size();
}

std::string CutPart(const std::string& part, NameRules rules) {
  const std::string extension = part.substr(StemLength(part));
  std::string stem = part.substr(0, part.size() - extension.size());
  // Far too long ones are cut roughly first, so that the exact loop below stays short.
  if (stem.size() > 4 * kMaxPart) stem.resize(4 * kMaxPart);
  while (NameUnits(stem, rules) + extension.size() > kMaxPart) {
    // A whole character goes: the bytes that continue it, and the one before them.
    std::size_t last = stem.size() - 1;
    while (last > 0 && (static_cast<unsigned char>(stem[last]) & 0xC0) == 0x80) --last;
    stem.resize(last);
  }
  return stem + extension;
}

std::string MakeSafePart(std::string_view part, NameRules rules) {
  std::string safe = rules == NameRules::kWindows ? ReplaceMalformed(part) : std::string(part);
  for (char& c : safe) {
    if (IsForbidden(c, rules)) c = kReplacement;
  }
  if (NameUnits(safe, rules) > kMaxPart) safe = CutPart(safe, rules);
  for (std::size_t i = safe.size(); i > 0 && (safe[i - 1] == '.' || safe[i - 1] == ' '); --i) {
    safe[i - 1] = kReplacement;
  }
  if (IsDeviceName(safe)) safe.insert(safe.begin(), kReplacement);
  if (AsciiLowered(safe).ends_with(kGrowingEnding)) safe += kReplacement;
  return safe;
}

}  // namespace

SafePath MakeSafePath(std::string_view name, NameRules rules) {
  std::string_view rest = name;
  if (rest.starts_with("::")) {
    rest.remove_prefix(2);
  } else if (rest.starts_with('/')) {
    rest.remove_prefix(1);
  }
  if (rest.empty()) return {{}, "has no name"};
  if (IsSeparator(rest.front())) return {{}, "is an absolute path"};
  if (rest.size() > 1 && IsAsciiLetter(rest[0]) && rest[1] == ':') return {{}, "names a drive"};

  std::string path;
  std::size_t depth = 0;
  while (!rest.empty()) {
    const auto end = std::find_if(rest.begin(), rest.end(), IsSeparator);
    const std::string_view part(rest.data(), static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(std::min(rest.size(), part.size() + 1));
    if (part.empty() || part == ".") continue;
    if (part == "..") return {{}, "leads out of the folder"};
    if (++depth > kMaxDepth) return {{}, "is too many folders deep"};
    if (!path.empty()) path += '/';
    path += MakeSafePart(part, rules);
  }
  if (path.empty()) return {{}, "has no name"};
  return {path, {}};
}

std::string NumberedPath(std::string_view path, unsigned number) {
  const std::size_t slash = path.rfind('/');
  const std::size_t last = slash == std::string_view::npos ? 0 : slash + 1;
  const std::size_t stem_end = last + StemLength(path.substr(last));
  std::string numbered(path.substr(0, stem_end));
  numbered += '~';
  numbered += std::to_string(number);
  return numbered += path.substr(stem_end);
}

}  // namespace scrivo
