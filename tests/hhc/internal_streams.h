#pragma once

// Reads the internal streams of a compiled help file back, by code that shares nothing with the
// writer: what the tests of the compiler and the comparison program look at.

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "chm/chm_reader.h"

namespace scrivo {

// Codes of records in #SYSTEM.
inline constexpr std::uint16_t kDefaultTopicRecord = 2, kTitleRecord = 3;

struct ReadTopic {
  std::string address;
  std::optional<std::string> title;
  std::uint32_t contents_entry = 0;
  std::uint16_t flags = 0;
};

struct ReadKeyword {
  std::string text;  // UTF-8, as is `target`
  bool see_also = false;
  std::uint16_t level = 0;
  std::uint32_t last_component = 0;
  std::vector<std::uint32_t> topics;
  std::string target;  // of a see-also entry
};

struct ReadContentsEntry {
  int level = 0;
  std::uint32_t flags = 0;
  std::string title;    // of its topic, or its own name
  std::string address;  // of its topic
};

// Word and whether it stands in the title; topic numbers with positions.
using ReadSearchIndex =
    std::map<std::pair<std::string, bool>, std::map<std::uint32_t, std::vector<std::uint32_t>>>;

class InternalStreams {
 public:
  // Null when the file cannot be opened.
  static std::unique_ptr<InternalStreams> Open(const std::string& path);

  // The bytes of an entry ("/#TOPICS"); nothing when there is no such entry.
  std::optional<std::string> Bytes(const std::string& name) const;
  std::vector<std::string> Names() const;

  // Each gives nothing when its stream is malformed; `problem()` then says how.
  std::optional<std::vector<ReadTopic>> Topics();
  std::optional<std::vector<ReadKeyword>> Keywords(const std::string& folder);
  std::optional<std::vector<ReadContentsEntry>> Contents();
  std::optional<ReadSearchIndex> Search();
  // Records of #SYSTEM by code.
  std::optional<std::map<std::uint16_t, std::string>> System();
  // Context numbers with their addresses.
  std::optional<std::map<std::uint32_t, std::string>> ContextIds();
  std::string StringAt(std::uint32_t offset);

  const std::string& problem() const { return problem_; }

 private:
  InternalStreams() = default;
  std::nullopt_t Fail(std::string problem) {
    problem_ = std::move(problem);
    return std::nullopt;
  }
  bool ReadLeaf(const std::string& index, std::uint32_t offset, ReadSearchIndex* words,
                std::uint32_t* next);

  mutable std::unique_ptr<ChmReader> reader_;
  std::string problem_;
};

}  // namespace scrivo
