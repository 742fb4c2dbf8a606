#include "hhc/system_stream.h"

#include <algorithm>

#include "bytes/byte_writer.h"

namespace scrivo {
namespace {

constexpr std::uint32_t kVersion = 3;
constexpr std::size_t kIndexHeaderSize = 0x1000;

enum class RecordCode : std::uint16_t {
  kContentsFile = 0,
  kIndexFile = 1,
  kDefaultTopic = 2,
  kTitle = 3,
  kSettings = 4,
  kDefaultWindow = 5,
  kOutputStem = 6,
  kIndexHash = 7,
  kCompiler = 9,
  kTime = 10,
  kContentsHash = 11,
  kInformationTypes = 12,
  kIndexHeader = 13,
  kCustomTabs = 14,
  kInformationTypeChecksum = 15,
  kDefaultFont = 16,
};

// A record's length has 16 bits.
constexpr std::size_t kLongestText = 0xFFFE;

class RecordWriter {
 public:
  RecordWriter() { out_.Put32(kVersion); }

  void Bytes(RecordCode code, const std::vector<std::uint8_t>& data) {
    out_.Put16(static_cast<std::uint16_t>(code));
    out_.Put16(static_cast<std::uint16_t>(data.size()));
    out_.PutBytes(data);
  }

  void Number(RecordCode code, std::uint32_t value) {
    out_.Put16(static_cast<std::uint16_t>(code));
    out_.Put16(4);
    out_.Put32(value);
  }

  // A text that is not there gives no record.
  void Text(RecordCode code, std::string_view text) {
    if (text.empty()) return;
    text = text.substr(0, kLongestText);
    out_.Put16(static_cast<std::uint16_t>(code));
    out_.Put16(static_cast<std::uint16_t>(text.size() + 1));
    out_.PutText(text);
    out_.Put8(0);
  }

  std::vector<std::uint8_t> Take() { return out_.Take(); }

 private:
  ByteWriter out_;
};

std::vector<std::uint8_t> Settings(const SystemFacts& facts) {
  ByteWriter out;
  out.Put32(facts.language);
  out.Put32(0);  // the flag for double-byte text, 0 even in Japanese files
  out.Put32(facts.full_text_search ? 1 : 0);
  out.Put32(facts.has_keywords ? 1 : 0);
  out.Put32(facts.has_associations ? 1 : 0);
  out.Put64(facts.time == 0 ? 0 : FileTime(facts.time));
  out.Put32(0);
  out.Put32(0);
  return out.Take();
}

std::vector<std::uint8_t> CustomTabs(const std::vector<CustomTab>& tabs) {
  ByteWriter out;
  out.Put32(static_cast<std::uint32_t>(tabs.size()));
  for (const CustomTab& tab : tabs) {
    out.PutText(tab.title);
    out.Put8(0);
    out.PutText(tab.program);
    out.Put8(0);
  }
  return out.Take();
}

}  // namespace

std::uint64_t FileTime(std::int64_t seconds_since_1970) {
  constexpr std::int64_t kSecondsFrom1601 = 11'644'473'600;
  return static_cast<std::uint64_t>(seconds_since_1970 + kSecondsFrom1601) * 10'000'000;
}

std::vector<std::uint8_t> WriteSystem(const SystemFacts& facts,
                                      const std::vector<std::uint8_t>& index_header) {
  RecordWriter out;
  out.Number(RecordCode::kTime, static_cast<std::uint32_t>(facts.time));
  out.Text(RecordCode::kCompiler, facts.compiler);
  out.Bytes(RecordCode::kSettings, Settings(facts));
  out.Text(RecordCode::kDefaultTopic, facts.default_topic);
  out.Text(RecordCode::kTitle, facts.title);
  out.Text(RecordCode::kDefaultFont, facts.default_font);
  out.Text(RecordCode::kOutputStem, facts.output_stem);
  if (facts.default_window.empty()) {
    out.Text(RecordCode::kContentsFile, facts.contents_file);
    out.Text(RecordCode::kIndexFile, facts.index_file);
  } else {
    out.Text(RecordCode::kDefaultWindow, facts.default_window);
  }
  if (facts.index_hash) out.Number(RecordCode::kIndexHash, *facts.index_hash);
  if (facts.contents_hash) out.Number(RecordCode::kContentsHash, *facts.contents_hash);
  out.Number(RecordCode::kInformationTypes, 0);
  out.Bytes(RecordCode::kIndexHeader, index_header);
  if (!facts.custom_tabs.empty()) out.Bytes(RecordCode::kCustomTabs, CustomTabs(facts.custom_tabs));
  out.Number(RecordCode::kInformationTypeChecksum, 0);
  return out.Take();
}

std::vector<std::uint8_t> WriteIndexHeader(std::size_t topics, const SitemapProperties& properties,
                                           const std::vector<std::string>& merge_files,
                                           StringsTable* strings) {
  const auto text = [&](const std::string& value) {
    return value.empty() ? 0xFFFFFFFF : strings->Add(value);
  };
  const auto number = [](const std::string& value) {
    return value.empty() ? 0xFFFFFFFF : ProjectNumber(value);
  };
  ByteWriter out;
  out.PutText("T#SM");
  out.Put32(0);  // a stamp, different in each file of the original compiler
  out.Put32(1);
  out.Put32(static_cast<std::uint32_t>(topics));
  out.Put32(0);
  out.Put32(text(properties.image_list));
  out.Put32(0);
  out.Put32(properties.folder_images ? 1 : 0);
  out.Put32(number(properties.background));
  out.Put32(number(properties.foreground));
  out.Put32(text(properties.font));
  out.Put32(number(properties.window_styles));
  out.Put32(number(properties.ex_window_styles));
  out.Put32(0xFFFFFFFF);
  out.Put32(text(properties.frame_name));
  out.Put32(text(properties.window_name));
  out.Put32(0);  // information types
  out.Put32(1);
  constexpr std::size_t kMergeOffset = 0x50;
  const std::size_t merged = std::min(merge_files.size(), (kIndexHeaderSize - kMergeOffset) / 4);
  out.Put32(static_cast<std::uint32_t>(merged));
  out.Put32(0);
  for (std::size_t i = 0; i < merged; ++i) out.Put32(strings->Add(merge_files[i]));
  out.PadTo(kIndexHeaderSize);
  return out.Take();
}

std::vector<std::uint8_t> WriteContextIds(
    const std::vector<std::pair<std::uint32_t, std::uint32_t>>& ids) {
  ByteWriter out;
  out.Put32(static_cast<std::uint32_t>(ids.size() * 8));
  for (const auto& [id, target] : ids) {
    out.Put32(id);
    out.Put32(target);
  }
  return out.Take();
}

}  // namespace scrivo
