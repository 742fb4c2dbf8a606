#include "platform/ansi_names.h"

#include <optional>
#include <utility>

#include "system/ansi_text.h"
#include "system/services.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";

// The name in the code page; nothing when that lacks a character of it.
std::optional<std::string> InCodePage(const std::string& name) {
  std::size_t lost = 0;
  std::string ansi = FromUtf8(name, TheServices().system->AnsiCodePage(), &lost);
  return lost == 0 ? std::optional<std::string>(std::move(ansi)) : std::nullopt;
}

}  // namespace

std::string NameToAnsi(const std::string& name, PathStyle style) {
  return style == PathStyle::kPosix ? name : InCodePage(name).value_or(name);
}

std::string ToRegistry(const std::string& text, PathStyle style) {
  return style == PathStyle::kPosix ? text : InCodePage(text).value_or(kUtf8Mark + text);
}

std::string FromRegistry(const std::string& bytes, PathStyle style) {
  if (style == PathStyle::kPosix) return bytes;
  return bytes.starts_with(kUtf8Mark) ? bytes.substr(sizeof kUtf8Mark - 1) : FromAnsi(bytes);
}

std::string NameText(const std::string& name) { return IsUtf8(name) ? name : FromAnsi(name); }

}  // namespace scrivo
