#include "hhc/strings_table.h"

namespace scrivo {

StringsTable::StringsTable() { out_.Put8(0); }

std::uint32_t StringsTable::Add(std::string_view text) {
  text = text.substr(0, std::min(text.find('\0'), kStreamPage - 1));
  if (text.empty()) return 0;
  const std::size_t left = kStreamPage - out_.Size() % kStreamPage;
  if (text.size() + 1 > left) out_.PadTo(out_.Size() + left);
  const std::uint32_t offset = static_cast<std::uint32_t>(out_.Size());
  out_.PutText(text);
  out_.Put8(0);
  return offset;
}

std::uint32_t StringsTable::Share(std::string_view text) {
  const auto [found, added] = shared_.try_emplace(std::string(text), 0);
  if (added) found->second = Add(text);
  return found->second;
}

}  // namespace scrivo
