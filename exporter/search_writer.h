#pragma once

// The full-text search of an exported site: the words of all pages and their texts, cut into small
// files of which a query reads only a few. reader/search.js reads them.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "exporter/page_content.h"

namespace scrivo {

class SearchWriter {
 public:
  // Takes a data file: its name ("words/12") and the value, a JavaScript expression.
  using Store = std::function<void(const std::string& name, const std::string& value)>;

  explicit SearchWriter(Store store) : store_(std::move(store)) {}

  // Adds a page. `address` leads to it from the folder of the pages; `title` is what lists of
  // results show, which need not be the page's own title.
  void AddPage(std::string_view address, std::string_view title, const PageContent& page);

  // Stores what is left. Call it once, after the last page.
  void Finish();

 private:
  // One word, and where it stands: for each page a number of the page's distance from the one
  // before, times 6, plus twice the place (0 text, 1 heading, 2 title), plus 1 when it stands there
  // several times; then how often less 2; then the distances of its positions. As AppendNumber
  // writes them.
  struct Word {
    std::string text;
    std::string postings;
    std::uint32_t last_page = 0;
  };
  // The best place of a beginning in a page.
  struct Best {
    std::uint8_t where = 0;
    bool is_there = false, in_text = false;
    std::uint32_t at = 0;
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
  };

  std::uint32_t NumberOf(std::string_view word);
  void Note(std::string_view word, int where);
  void AddPostings();
  void AddPiece(std::uint32_t first_word, std::string_view title, std::string_view address,
                std::string_view text);
  void StoreTexts();
  void AddShared(std::size_t from, std::size_t to, std::size_t length);
  std::string Merge(std::size_t from, std::size_t to);
  void AddEntry(std::string_view word, std::string_view postings);
  void StoreWords();

  Store store_;
  std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> numbers_;
  std::vector<Word> words_;

  std::uint32_t pages_ = 0;  // the number of the page that is being added
  std::uint32_t position_ = 0;
  std::vector<std::uint64_t> noted_;  // word, position and place of each word of the page
  std::vector<std::uint32_t> title_lengths_;

  std::string texts_;  // of the file of texts that is being filled
  std::size_t text_file_ = 0;
  std::string text_starts_;
  std::uint32_t last_start_page_ = 0;

  std::vector<std::uint32_t> order_;  // the words sorted
  std::vector<Best> best_;
  std::string shard_words_, shard_postings_, first_words_;
  std::size_t word_file_ = 0;
};

}  // namespace scrivo
