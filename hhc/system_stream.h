#pragma once

// #SYSTEM: what a viewer reads first. Format: DWORD 3, then records of WORD code, WORD length,
// data. #IDXHDR: 4096 bytes of facts about the whole file, repeated in record 13. #IVB: the context
// numbers and the addresses they stand for.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hhc/strings_table.h"
#include "project/project.h"
#include "project/sitemap.h"

namespace scrivo {

// All texts are in the project's code page.
struct SystemFacts {
  std::string compiler;                   // name and version
  std::string contents_file, index_file;  // only when no default window tells them
  std::string default_topic, title, default_font, default_window;
  std::string output_stem;  // lower case, without folder and extension
  std::uint32_t language = 0x409;
  std::int64_t time = 0;  // seconds since 1970
  bool full_text_search = false, has_keywords = false, has_associations = false;
  std::optional<std::uint32_t> index_hash, contents_hash;  // AddressHash, for the binary forms
  std::vector<CustomTab> custom_tabs;
};

std::vector<std::uint8_t> WriteSystem(const SystemFacts& facts,
                                      const std::vector<std::uint8_t>& index_header);

// `properties` and `merge_files` in the project's code page.
std::vector<std::uint8_t> WriteIndexHeader(std::size_t topics, const SitemapProperties& properties,
                                           const std::vector<std::string>& merge_files,
                                           StringsTable* strings);

// Context numbers with the #STRINGS offsets of their targets.
std::vector<std::uint8_t> WriteContextIds(
    const std::vector<std::pair<std::uint32_t, std::uint32_t>>& ids);

// A point in time as Windows counts it: units of 100 ns since 1601.
std::uint64_t FileTime(std::int64_t seconds_since_1970);

}  // namespace scrivo
