#include "exporter/alphabet.h"

#include <algorithm>
#include <iterator>

#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr std::uint16_t kSeveral = 0xFFFF;

struct Range {
  char16_t first, last;
};

constexpr Range kLetters[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0x00C0, 0x00D6}, {0x00D8, 0x00F6},
    {0x00F8, 0x02AF}, {0x0300, 0x0373}, {0x0376, 0x0377}, {0x037B, 0x037D}, {0x037F, 0x037F},
    {0x0386, 0x0386}, {0x0388, 0x03FF}, {0x0400, 0x0481}, {0x0483, 0x0487}, {0x048A, 0x0556},
    {0x0561, 0x0587}, {0x0591, 0x05BD}, {0x05BF, 0x05BF}, {0x05C1, 0x05C2}, {0x05C4, 0x05C5},
    {0x05C7, 0x05EA}, {0x0620, 0x065F}, {0x066E, 0x06D3}, {0x06D5, 0x06DC}, {0x06DF, 0x06E8},
    {0x06EA, 0x06EF}, {0x06FA, 0x06FC}, {0x0710, 0x074A}, {0x0900, 0x0963}, {0x0971, 0x09E3},
    {0x09F0, 0x0A65}, {0x0A70, 0x0AE3}, {0x0AF9, 0x0B65}, {0x0B71, 0x0BE5}, {0x0C00, 0x0C65},
    {0x0C80, 0x0CE5}, {0x0CF1, 0x0D65}, {0x0D7A, 0x0DDF}, {0x0F00, 0x0F00}, {0x0F40, 0x0F84},
    {0x10A0, 0x10FA}, {0x10FC, 0x10FF}, {0x1200, 0x135F}, {0x13A0, 0x13FF}, {0x1E00, 0x1FBC},
    {0x1FC2, 0x1FCC}, {0x1FD0, 0x1FDB}, {0x1FE0, 0x1FEC}, {0x1FF2, 0x1FFC}, {0x2C00, 0x2DFF},
    {0xA640, 0xA69F}, {0xA722, 0xA788}, {0xA78B, 0xA7FF}, {0xAB30, 0xAB67}, {0xFB00, 0xFB06},
    {0xFF21, 0xFF3A}, {0xFF41, 0xFF5A},
};

constexpr Range kDigits[] = {
    {'0', '9'}, {0x0660, 0x0669}, {0x06F0, 0x06F9}, {0x0966, 0x096F}, {0xFF10, 0xFF19}};

constexpr Range kIdeographs[] = {
    {0x0E01, 0x0E3A}, {0x0E40, 0x0E4E}, {0x0E81, 0x0ECD}, {0x1000, 0x1049}, {0x1050, 0x109D},
    {0x1100, 0x11FF}, {0x1780, 0x17D3}, {0x3005, 0x3007}, {0x3041, 0x3096}, {0x3099, 0x309A},
    {0x309D, 0x309F}, {0x30A1, 0x30FA}, {0x30FC, 0x30FF}, {0x3105, 0x312F}, {0x3131, 0x318E},
    {0x31F0, 0x31FF}, {0x3400, 0x4DBF}, {0x4E00, 0xA48C}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
    {0xFF66, 0xFF9F},
};

// Runs of letters with one letter at the bottom of all of them.
struct BaseRun {
  char16_t last;  // the run begins behind the one before it
  const char* base;
};

constexpr BaseRun kLatinExtendedA[] = {
    {0x105, "a"}, {0x10D, "c"},  {0x111, "d"}, {0x11B, "e"}, {0x123, "g"}, {0x127, "h"},
    {0x131, "i"}, {0x133, "ij"}, {0x135, "j"}, {0x138, "k"}, {0x142, "l"}, {0x14B, "n"},
    {0x151, "o"}, {0x153, "oe"}, {0x159, "r"}, {0x161, "s"}, {0x167, "t"}, {0x173, "u"},
    {0x175, "w"}, {0x178, "y"},  {0x17E, "z"}, {0x17F, "s"},
};

constexpr BaseRun kLatinAdditional[] = {
    {0x1E01, "a"},  {0x1E07, "b"}, {0x1E09, "c"}, {0x1E13, "d"}, {0x1E1D, "e"}, {0x1E1F, "f"},
    {0x1E21, "g"},  {0x1E2B, "h"}, {0x1E2F, "i"}, {0x1E35, "k"}, {0x1E3D, "l"}, {0x1E43, "m"},
    {0x1E4B, "n"},  {0x1E53, "o"}, {0x1E57, "p"}, {0x1E5F, "r"}, {0x1E69, "s"}, {0x1E71, "t"},
    {0x1E7B, "u"},  {0x1E7F, "v"}, {0x1E89, "w"}, {0x1E8D, "x"}, {0x1E8F, "y"}, {0x1E95, "z"},
    {0x1E96, "h"},  {0x1E97, "t"}, {0x1E98, "w"}, {0x1E99, "y"}, {0x1E9A, "a"}, {0x1E9D, "s"},
    {0x1E9E, "ss"}, {0x1E9F, "d"}, {0x1EB7, "a"}, {0x1EC7, "e"}, {0x1ECB, "i"}, {0x1EE3, "o"},
    {0x1EF1, "u"},  {0x1EF9, "y"},
};

// The letters U+00C0 to U+00FF; a blank where there is none, "2" where there are two.
constexpr char kLatin1[] =
    "aaaaaa2ceeeeiiii"
    "dnooooo ouuuuy22"
    "aaaaaa2ceeeeiiii"
    "dnooooo ouuuuy2y";

// Single letters with what they fold to, in turns.
constexpr char16_t kSingles[] =
    u"\u0192f\u01A0o\u01A1o\u01AFu\u01B0u\u01CDa\u01CEa\u01CFi\u01D0i\u01D1o\u01D2o\u01D3u\u01D4u"
    u"\u01D5u\u01D6u\u01D7u\u01D8u\u01D9u\u01DAu\u01DBu\u01DCu\u01E6g\u01E7g\u01E8k\u01E9k\u01EAo"
    u"\u01EBo\u0218s\u0219s\u021At\u021Bt\u0386\u03B1\u0388\u03B5\u0389\u03B7\u038A\u03B9\u038C"
    u"\u03BF"
    u"\u038E\u03C5\u038F\u03C9\u0390\u03B9\u03AA\u03B9\u03AB\u03C5\u03AC\u03B1\u03AD\u03B5\u03AE"
    u"\u03B7"
    u"\u03AF\u03B9\u03B0\u03C5\u03C2\u03C3\u03CA\u03B9\u03CB\u03C5\u03CC\u03BF\u03CD\u03C5\u03CE"
    u"\u03C9"
    u"\u0401\u0435\u0451\u0435\u04C0\u04CF";

// Marks that are put on letters.
constexpr Range kMarks[] = {{0x0300, 0x036F}, {0x0483, 0x0487}, {0x0591, 0x05BD}, {0x05BF, 0x05BF},
                            {0x05C1, 0x05C2}, {0x05C4, 0x05C5}, {0x05C7, 0x05C7}, {0x0640, 0x0640},
                            {0x064B, 0x065F}, {0x06D6, 0x06DC}, {0x06DF, 0x06E8}, {0x06EA, 0x06ED}};

// Capital letters whose small ones stand `step` further on.
struct CaseRun {
  char16_t first, last, step;
};
constexpr CaseRun kCases[] = {{'A', 'Z', 0x20},
                              {0x0391, 0x03A9, 0x20},
                              {0x0400, 0x040F, 0x50},
                              {0x0410, 0x042F, 0x20},
                              {0x0531, 0x0556, 0x30}};

// Capitals and small letters by turns.
constexpr Range kPairs[] = {{0x0370, 0x0373}, {0x0460, 0x0481}, {0x048A, 0x04BF},
                            {0x04D0, 0x052F}, {0xA640, 0xA66D}, {0xA680, 0xA69B}};

constexpr std::u16string_view kLigatures[] = {u"\u00C6ae",  u"\u00DEth",  u"\u00DFss", u"\u00E6ae",
                                              u"\u00FEth",  u"\uFB00ff",  u"\uFB01fi", u"\uFB02fl",
                                              u"\uFB03ffi", u"\uFB04ffl", u"\uFB05st", u"\uFB06st"};

// A run of digits or letters that stand elsewhere for those of ASCII.
struct CopyRun {
  char16_t first, last, ascii;
};
constexpr CopyRun kCopies[] = {{0x0660, 0x0669, '0'}, {0x06F0, 0x06F9, '0'}, {0x0966, 0x096F, '0'},
                               {0xFF10, 0xFF19, '0'}, {0xFF21, 0xFF3A, 'a'}, {0xFF41, 0xFF5A, 'a'}};

}  // namespace

const Alphabet& Alphabet::The() {
  static const Alphabet alphabet;
  return alphabet;
}

Alphabet::Alphabet() : kinds_(0x10000), folded_(0x10000) {
  const auto mark = [&](const auto& ranges, CharacterKind kind) {
    for (const Range& range : ranges) {
      std::fill(kinds_.begin() + range.first, kinds_.begin() + range.last + 1, kind);
    }
  };
  mark(kLetters, CharacterKind::kLetter);
  mark(kDigits, CharacterKind::kDigit);
  mark(kIdeographs, CharacterKind::kIdeograph);

  for (std::size_t c = 0; c < folded_.size(); ++c) folded_[c] = static_cast<std::uint16_t>(c);
  const auto fold = [&](std::size_t from, std::string to) {
    if (to.size() == 1) {
      folded_[from] = static_cast<unsigned char>(to[0]);
      return;
    }
    folded_[from] = kSeveral;
    several_.emplace_back(static_cast<char32_t>(from), std::move(to));
  };
  const auto fold_runs = [&](std::size_t from, const auto& runs) {
    for (const BaseRun& run : runs) {
      for (; from <= run.last; ++from) fold(from, run.base);
    }
  };
  for (const CaseRun& run : kCases) {
    for (std::size_t c = run.first; c <= run.last; ++c) {
      folded_[c] = static_cast<std::uint16_t>(c + run.step);
    }
  }
  for (const Range& range : kPairs) {
    for (std::size_t c = range.first; c < range.last; c += 2) {
      folded_[c] = static_cast<std::uint16_t>(c + 1);
    }
  }
  for (std::size_t i = 0; i < std::size(kLatin1) - 1; ++i) {
    if (kLatin1[i] >= 'a') fold(0xC0 + i, std::string(1, kLatin1[i]));
  }
  fold_runs(0x100, kLatinExtendedA);
  fold_runs(0x1E00, kLatinAdditional);
  for (std::size_t i = 0; i + 1 < std::size(kSingles) - 1; i += 2) {
    folded_[kSingles[i]] = kSingles[i + 1];
  }
  for (const std::u16string_view ligature : kLigatures) {
    fold(ligature[0], std::string(ligature.begin() + 1, ligature.end()));
  }
  for (const CopyRun& run : kCopies) {
    for (std::size_t c = run.first; c <= run.last; ++c) {
      folded_[c] = static_cast<std::uint16_t>(run.ascii + (c - run.first));
    }
  }
  for (const Range& range : kMarks) {
    std::fill(folded_.begin() + range.first, folded_.begin() + range.last + 1, 0);
  }
  std::sort(several_.begin(), several_.end());
}

void Alphabet::AppendFolded(char32_t character, std::string* out) const {
  if (character >= folded_.size()) {
    AppendUtf8(character, out);
    return;
  }
  const std::uint16_t folded = folded_[character];
  if (folded == kSeveral) {
    const auto found =
        std::lower_bound(several_.begin(), several_.end(), character,
                         [](const auto& fold, char32_t wanted) { return fold.first < wanted; });
    out->append(found->second);
  } else if (folded != 0) {
    AppendUtf8(folded, out);
  }
}

std::string Alphabet::Script() const {
  std::string ranges, folds;
  for (std::size_t c = 0x80; c < kinds_.size(); ++c) {
    if (kinds_[c] == CharacterKind::kSeparator) continue;
    const std::size_t first = c;
    while (c + 1 < kinds_.size() && kinds_[c + 1] == kinds_[first]) ++c;
    ranges += std::to_string(first) + "," + std::to_string(c) + "," +
              std::to_string(static_cast<int>(kinds_[first])) + ",";
  }
  ranges += std::to_string(kFirstRareIdeograph) + "," + std::to_string(kLastRareIdeograph) + "," +
            std::to_string(static_cast<int>(CharacterKind::kIdeograph));
  for (std::size_t c = 0x80; c < folded_.size(); ++c) {
    if (folded_[c] == c || kinds_[c] == CharacterKind::kSeparator) continue;
    if (!folds.empty()) folds += ' ';
    AppendUtf8(static_cast<char32_t>(c), &folds);
    AppendFolded(static_cast<char32_t>(c), &folds);
  }
  return "{\"ranges\":[" + ranges + "],\"folds\":\"" + folds + "\"}";
}

}  // namespace scrivo
