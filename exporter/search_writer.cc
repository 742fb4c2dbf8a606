#include "exporter/search_writer.h"

#include <algorithm>
#include <numeric>

#include "exporter/alphabet.h"
#include "exporter/script_text.h"
#include "exporter/text_breaker.h"

namespace scrivo {
namespace {

// What a file holds about; a query mostly reads one file a word and one a result.
constexpr std::size_t kShardSize = 24 * 1024;
constexpr std::size_t kTextSize = 6 * 1024;

// A beginning whose words take more than this has an entry of its own: so even one letter costs no
// more than a file or two.
constexpr std::size_t kSharedSize = 64 * 1024;

constexpr int kInText = 0, kInHeading = 1, kInTitle = 2;

}  // namespace

std::uint32_t SearchWriter::NumberOf(std::string_view word) {
  const auto found = numbers_.find(word);
  if (found != numbers_.end()) return found->second;
  const std::uint32_t number = static_cast<std::uint32_t>(words_.size());
  words_.push_back({std::string(word), "", 0});
  numbers_.emplace(word, number);
  return number;
}

void SearchWriter::Note(std::string_view word, int where) {
  // Sorted, this brings each word's places together, in ascending order.
  noted_.push_back(std::uint64_t{NumberOf(word)} << 32 | std::uint64_t{position_} << 2 |
                   static_cast<unsigned>(where));
  ++position_;
}

void SearchWriter::AddPage(std::string_view address, std::string_view title,
                           const PageContent& page) {
  position_ = 0;
  noted_.clear();
  BreakText(page.title, [&](std::string_view word, std::size_t) { Note(word, kInTitle); });
  title_lengths_.push_back(position_);

  const std::string_view text = page.text;
  std::size_t piece = 0;
  std::uint32_t piece_word = position_;
  auto heading = page.headings.begin();
  BreakText(text, [&](std::string_view word, std::size_t start) {
    if (start - piece >= kTextSize) {
      AddPiece(piece_word, title, address, text.substr(piece, start - piece));
      piece = start;
      piece_word = position_;
    }
    while (heading != page.headings.end() && heading->end <= start) ++heading;
    const bool in_heading = heading != page.headings.end() && heading->begin <= start;
    Note(word, in_heading ? kInHeading : kInText);
  });
  AddPiece(piece_word, title, address, text.substr(piece));
  AddPostings();
  ++pages_;
}

void SearchWriter::AddPostings() {
  std::sort(noted_.begin(), noted_.end());
  for (std::size_t i = 0; i < noted_.size();) {
    std::size_t end = i;
    int where = kInText;
    for (; end < noted_.size() && noted_[end] >> 32 == noted_[i] >> 32; ++end) {
      where = std::max(where, static_cast<int>(noted_[end] & 3));
    }
    Word& word = words_[noted_[i] >> 32];
    const std::uint64_t several = end - i > 1 ? 1 : 0;
    AppendNumber((pages_ - word.last_page) * std::uint64_t{6} +
                     static_cast<std::uint64_t>(where) * 2 + several,
                 &word.postings);
    if (several) AppendNumber(end - i - 2, &word.postings);
    word.last_page = pages_;
    std::uint64_t before = 0;
    for (; i < end; ++i) {
      const std::uint64_t position = (noted_[i] & 0xFFFFFFFF) >> 2;
      AppendNumber(position - before, &word.postings);
      before = position;
    }
  }
}

void SearchWriter::AddPiece(std::uint32_t first_word, std::string_view title,
                            std::string_view address, std::string_view text) {
  if (!texts_.empty() && texts_.size() + text.size() > kTextSize) StoreTexts();
  if (texts_.empty()) {
    AppendNumber(pages_ - last_start_page_, &text_starts_);
    AppendNumber(first_word, &text_starts_);
    last_start_page_ = pages_;
  }
  texts_ += texts_.empty() ? "[[" : ",\n[";
  texts_ += std::to_string(pages_) + "," + std::to_string(first_word) + ",";
  AppendScriptString(title, &texts_);
  texts_ += ',';
  AppendScriptString(address, &texts_);
  texts_ += ',';
  AppendScriptString(text, &texts_);
  texts_ += ']';
}

void SearchWriter::StoreTexts() {
  store_("text/" + std::to_string(text_file_++), texts_ + "]");
  texts_.clear();
}

void SearchWriter::Finish() {
  if (!texts_.empty()) StoreTexts();
  order_.resize(words_.size());
  std::iota(order_.begin(), order_.end(), 0u);
  std::sort(order_.begin(), order_.end(),
            [&](std::uint32_t a, std::uint32_t b) { return words_[a].text < words_[b].text; });
  best_.resize(pages_);
  AddShared(0, order_.size(), 0);
  StoreWords();

  std::string titles;
  for (const std::uint32_t length : title_lengths_) AppendNumber(length, &titles);
  std::string value = "{\"pages\":" + std::to_string(pages_) + ",\"words\":\"" + first_words_ +
                      "\",\"texts\":\"" + text_starts_ + "\",\"titles\":\"" + titles +
                      "\",\"alphabet\":" + Alphabet::The().Script() + "}";
  store_("search", value);
}

// Adds the words `from` to `to`, which have the first `length` bytes in common; where they take
// much, their beginning first.
void SearchWriter::AddShared(std::size_t from, std::size_t to, std::size_t length) {
  std::size_t size = 0;
  for (std::size_t i = from; i < to; ++i) size += words_[order_[i]].postings.size();
  const auto add = [&](std::size_t i) {
    AddEntry(words_[order_[i]].text, words_[order_[i]].postings);
  };
  if (size <= kSharedSize) {
    for (std::size_t i = from; i < to; ++i) add(i);
    return;
  }
  if (length > 0) {
    const std::string beginning = words_[order_[from]].text.substr(0, length);
    const std::string shared = Merge(from, to);
    // The word that is no longer than the beginning sorts before it.
    if (words_[order_[from]].text.size() == length) add(from++);
    AddEntry(beginning + "*", shared);
  }
  while (from < to) {
    std::string_view rest = std::string_view(words_[order_[from]].text).substr(length);
    const std::size_t before = rest.size();
    NextUtf8(&rest);
    const std::size_t longer = length + before - rest.size();
    const std::string_view beginning =
        std::string_view(words_[order_[from]].text).substr(0, longer);
    std::size_t end = from + 1;
    while (end < to && std::string_view(words_[order_[end]].text).starts_with(beginning)) ++end;
    AddShared(from, end, longer);
    from = end;
  }
}

// The pages of all these words: for each the distance from the one before, times 3, plus the best
// place, then the position to show.
std::string SearchWriter::Merge(std::size_t from, std::size_t to) {
  std::fill(best_.begin(), best_.end(), Best{});
  for (std::size_t i = from; i < to; ++i) {
    std::string_view postings = words_[order_[i]].postings;
    std::uint64_t page = 0;
    while (!postings.empty()) {
      const std::uint64_t number = TakeNumber(&postings);
      page += number / 6;
      Best& best = best_[page];
      best.where = std::max(best.where, static_cast<std::uint8_t>(number % 6 / 2));
      const std::uint64_t count = number % 2 == 0 ? 1 : TakeNumber(&postings) + 2;
      std::uint32_t position = 0;
      for (std::uint64_t k = 0; k < count; ++k) {
        position += static_cast<std::uint32_t>(TakeNumber(&postings));
        const bool in_text = position >= title_lengths_[page];
        const bool is_better =
            in_text != best.in_text ? in_text : !best.is_there || position < best.at;
        if (is_better) best.at = position;
        best.in_text |= in_text;
        best.is_there = true;
      }
    }
  }
  std::string merged;
  std::size_t before = 0;
  for (std::size_t page = 0; page < best_.size(); ++page) {
    if (!best_[page].is_there) continue;
    AppendNumber((page - before) * 3 + best_[page].where, &merged);
    AppendNumber(best_[page].at, &merged);
    before = page;
  }
  return merged;
}

void SearchWriter::AddEntry(std::string_view word, std::string_view postings) {
  if (!shard_words_.empty() && shard_postings_.size() + postings.size() > kShardSize) StoreWords();
  if (shard_words_.empty()) {
    if (!first_words_.empty()) first_words_ += ' ';
    first_words_.append(word);
  } else {
    shard_words_ += ' ';
    shard_postings_ += '!';
  }
  shard_words_.append(word);
  shard_postings_.append(postings);
}

void SearchWriter::StoreWords() {
  if (shard_words_.empty()) return;
  store_("words/" + std::to_string(word_file_++),
         "[\"" + shard_words_ + "\",\"" + shard_postings_ + "\"]");
  shard_words_.clear();
  shard_postings_.clear();
}

}  // namespace scrivo
