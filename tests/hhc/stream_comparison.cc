#include "tests/hhc/stream_comparison.h"

#include <algorithm>
#include <map>

#include "bytes/little_endian.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

std::uint32_t Number(const std::string& bytes, std::size_t offset, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size && offset + i < bytes.size(); ++i) {
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[offset + i])) << 8 * i;
  }
  return value;
}

void Blank(std::string* bytes, std::size_t offset, std::size_t size) {
  for (std::size_t i = offset; i < offset + size && i < bytes->size(); ++i) (*bytes)[i] = '\0';
}

// #SYSTEM without the time (10), the compiler's name (9), the time in record 4 and the stamp of the
// #IDXHDR in record 13.
std::string WithoutTimes(const std::string& system) {
  std::string kept = system.substr(0, 4);
  for (std::size_t at = 4; at + 4 <= system.size();) {
    const std::uint32_t code = Number(system, at, 2), length = Number(system, at + 2, 2);
    std::string record = system.substr(at, 4 + length);
    at += 4 + length;
    if (code == 9 || code == 10) continue;
    if (code == 4) Blank(&record, 4 + 0x14, 8);
    if (code == 13) Blank(&record, 4 + 4, 4);
    kept += record;
  }
  return kept;
}

// BTree blocks without what lies behind their last entry, index blocks without the two words that
// nobody reads.
std::string WithoutFreeBytes(std::string tree) {
  constexpr std::size_t kHeader = 76, kBlock = 0x800;
  for (std::size_t at = kHeader; at + kBlock <= tree.size(); at += kBlock) {
    const std::size_t free = std::min<std::size_t>(Number(tree, at, 2), kBlock);
    Blank(&tree, at + kBlock - free, free);
  }
  return tree;
}

// The bytes that count, and what was left out to get them.
std::string Essence(const std::string& name, std::string bytes, std::string* left_out) {
  if (name == "/#system") {
    *left_out = "times and the compiler's name";
    return WithoutTimes(bytes);
  }
  if (name == "/#idxhdr") {
    *left_out = "the stamp";
    Blank(&bytes, 4, 4);
  } else if (name == "/#urlstr") {
    *left_out = "the unused first byte";
    Blank(&bytes, 0, 1);
  } else if (name.ends_with("/btree")) {
    *left_out = "free bytes of blocks";
    return WithoutFreeBytes(std::move(bytes));
  } else if (name == "/$fiftimain") {
    *left_out = "the character position of the last repeated word";
    Blank(&bytes, 0x3A, 4);
  }
  return bytes;
}

EntryComparison Compare(const std::string& name, const std::string& first,
                        const std::string& second) {
  using Verdict = EntryComparison::Verdict;
  EntryComparison result{name, Verdict::kSame, first.size(), second.size(), ""};
  if (first == second) return result;
  std::string left_out;
  const std::string key = AsciiLowered(name);
  const std::string a = Essence(key, first, &left_out), b = Essence(key, second, &left_out);
  if (a == b) {
    result.verdict = Verdict::kSameSaveForKnown;
    result.remark = left_out;
    return result;
  }
  result.verdict = Verdict::kDifferent;
  const std::size_t shorter = std::min(a.size(), b.size());
  std::size_t differing = std::max(a.size(), b.size()) - shorter;
  std::size_t at = shorter;
  for (std::size_t i = shorter; i-- > 0;) {
    if (a[i] == b[i]) continue;
    ++differing;
    at = i;
  }
  result.remark = std::to_string(differing) + " bytes differ, the first at " + std::to_string(at);
  return result;
}

std::map<std::string, std::string> ByLowerName(const InternalStreams& file) {
  std::map<std::string, std::string> names;
  for (const std::string& name : file.Names()) {
    if (!name.starts_with("::") && !name.ends_with("/")) names[AsciiLowered(name)] = name;
  }
  return names;
}

}  // namespace

std::vector<EntryComparison> CompareHelpFiles(const InternalStreams& first,
                                              const InternalStreams& second) {
  using Verdict = EntryComparison::Verdict;
  const auto first_names = ByLowerName(first), second_names = ByLowerName(second);
  std::vector<EntryComparison> all;
  for (const auto& [key, name] : first_names) {
    const std::string bytes = first.Bytes(name).value_or("");
    if (!second_names.contains(key)) {
      all.push_back({name, Verdict::kOnlyInFirst, bytes.size(), 0, ""});
    } else {
      all.push_back(Compare(name, bytes, second.Bytes(name).value_or("")));
    }
  }
  for (const auto& [key, name] : second_names) {
    if (first_names.contains(key)) continue;
    all.push_back({name, Verdict::kOnlyInSecond, 0, second.Bytes(name).value_or("").size(), ""});
  }
  std::sort(all.begin(), all.end(), [](const EntryComparison& a, const EntryComparison& b) {
    return AsciiLowered(a.name) < AsciiLowered(b.name);
  });
  return all;
}

}  // namespace scrivo
