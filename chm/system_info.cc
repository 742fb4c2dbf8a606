#include "chm/system_info.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "bytes/little_endian.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

using Bytes = std::span<const std::uint8_t>;

// Record codes of #SYSTEM.
enum SystemCode : std::uint16_t {
  kContentsFile = 0,
  kIndexFile = 1,
  kDefaultTopic = 2,
  kTitle = 3,
  kParameters = 4,  // starts with the LCID
  kDefaultWindow = 5,
  kCompiler = 9,
};
constexpr std::size_t kSystemHeader = 4;
constexpr std::size_t kRecordHeader = 4;

// #WINDOWS: a count, the size of an entry, then the entries, whose texts are places in #STRINGS.
constexpr std::size_t kWindowsHeader = 8;
constexpr std::size_t kWindowName = 0x08;
constexpr std::size_t kWindowTitle = 0x14;
constexpr std::size_t kWindowContents = 0x60;
constexpr std::size_t kWindowIndex = 0x64;

// The raw texts, in the order of their codes.
struct RawSystem {
  std::array<std::string, 10> texts;
  std::optional<std::uint32_t> language;
};

// A text that ends with a NUL, or with the bytes.
std::string TextAt(Bytes bytes, std::size_t at) {
  if (at >= bytes.size()) return {};
  const auto from = bytes.begin() + static_cast<std::ptrdiff_t>(at);
  return {from, std::find(from, bytes.end(), 0)};
}

RawSystem ReadRecords(Bytes bytes) {
  RawSystem raw;
  bytes = bytes.subspan(std::min(kSystemHeader, bytes.size()));
  while (bytes.size() >= kRecordHeader) {
    const std::uint16_t code = LoadLe16(bytes.data());
    const std::size_t stated = LoadLe16(bytes.data() + 2);
    bytes = bytes.subspan(kRecordHeader);
    const Bytes data = bytes.first(std::min(stated, bytes.size()));
    bytes = bytes.subspan(data.size());
    if (code == kParameters && data.size() >= 4) {
      raw.language = LoadLe32(data.data());
    } else if (code < raw.texts.size() && raw.texts[code].empty()) {
      raw.texts[code] = TextAt(data, 0);
    }
  }
  return raw;
}

// Titles are often taken from pages byte by byte, whatever the pages were in.
std::string Decode(std::string_view text, int code_page) {
  return IsUtf8(text) ? std::string(text) : ToUtf8(text, code_page);
}

// The archive name of a file that the project calls `name`; empty when there is no such entry.
std::string ArchiveName(const ChmReader& reader, std::string name) {
  if (name.empty()) return {};
  std::replace(name.begin(), name.end(), '\\', '/');
  if (!name.starts_with('/')) name.insert(name.begin(), '/');
  const Entry* entry = reader.Find(name);
  return entry == nullptr ? std::string() : std::string(entry->name);
}

std::string FindByExtension(const ChmReader& reader, std::string_view extension) {
  for (const Entry& entry : reader.Entries()) {
    const std::string_view name = entry.name;
    if (name.size() > extension.size() && KindOf(name) == EntryKind::kUser &&
        CompareNames(name.substr(name.size() - extension.size()), extension) == 0) {
      return std::string(name);
    }
  }
  return {};
}

std::vector<std::uint8_t> ReadStream(ChmReader& reader, std::string_view name) {
  const Entry* entry = reader.Find(name);
  if (entry == nullptr) return {};
  return reader.ReadWhole(*entry).value_or(std::vector<std::uint8_t>());
}

// Takes from #WINDOWS what the default window says, or the only window there is.
void AddWindow(ChmReader& reader, SystemInfo* info) {
  const std::vector<std::uint8_t> windows = ReadStream(reader, "/#WINDOWS");
  const std::vector<std::uint8_t> strings = ReadStream(reader, "/#STRINGS");
  if (windows.size() < kWindowsHeader) return;
  const std::size_t size = LoadLe32(windows.data() + 4);
  if (size < kWindowIndex + 4) return;
  Bytes rest = Bytes(windows).subspan(kWindowsHeader);
  const bool only = rest.size() / size == 1;
  for (; rest.size() >= size; rest = rest.subspan(size)) {
    const auto text = [&](std::size_t field) {
      return Decode(TextAt(strings, LoadLe32(rest.data() + field)), info->code_page);
    };
    const std::string name = text(kWindowName);
    const bool wanted = info->window.empty() ? only : CompareNames(name, info->window) == 0;
    if (!wanted) continue;
    info->window = name;
    info->window_title = text(kWindowTitle);
    if (info->contents_file.empty()) info->contents_file = text(kWindowContents);
    if (info->index_file.empty()) info->index_file = text(kWindowIndex);
    return;
  }
}

}  // namespace

std::optional<SystemInfo> ReadSystemInfo(ChmReader& reader) {
  const Entry* entry = reader.Find("/#SYSTEM");
  if (entry == nullptr) return std::nullopt;
  const auto bytes = reader.ReadWhole(*entry);
  if (!bytes) return std::nullopt;
  const RawSystem raw = ReadRecords(*bytes);

  SystemInfo info;
  info.language = raw.language;
  if (raw.language) info.code_page = CodePageOfLanguage(*raw.language);
  const auto text = [&](SystemCode code) { return Decode(raw.texts[code], info.code_page); };
  info.title = text(kTitle);
  info.default_topic = text(kDefaultTopic);
  info.compiler = text(kCompiler);
  info.window = text(kDefaultWindow);
  info.contents_file = text(kContentsFile);
  info.index_file = text(kIndexFile);
  AddWindow(reader, &info);
  info.contents_file = ArchiveName(reader, std::move(info.contents_file));
  info.index_file = ArchiveName(reader, std::move(info.index_file));
  if (info.contents_file.empty()) info.contents_file = FindByExtension(reader, ".hhc");
  if (info.index_file.empty()) info.index_file = FindByExtension(reader, ".hhk");
  return info;
}

}  // namespace scrivo
