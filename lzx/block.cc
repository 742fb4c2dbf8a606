#include "lzx/block.h"

#include "lzx/huffman_code.h"
#include "lzx/pretree.h"

namespace scrivo {
namespace {

constexpr std::uint32_t kAlignedMask = (1u << kLzxAlignedBits) - 1;

constexpr int kMaxAlignedLength = (1 << kLzxAlignedLengthBits) - 1;
constexpr std::uint32_t kAlignedTreeBits = kLzxAlignedSymbols * kLzxAlignedLengthBits;

template <std::size_t kSize>
std::uint32_t SymbolBits(const std::array<std::uint32_t, kSize>& frequencies,
                         const std::array<std::uint8_t, kSize>& lengths) {
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < kSize; ++i) bits += frequencies[i] * lengths[i];
  return bits;
}

std::uint32_t FooterBits(const LzxFrequencies& frequencies) {
  std::uint32_t bits = 0;
  for (int slot = kLzxRecentOffsets; slot < kLzxUsualSlots; ++slot) {
    for (int header = 0; header < kLzxLengthHeaders; ++header) {
      bits += frequencies.main[kLzxLiterals + slot * kLzxLengthHeaders + header] *
              static_cast<std::uint32_t>(LzxFooterBits(slot));
    }
  }
  return bits;
}

// The three groups in which the lengths of the main and the length tree are sent.
template <typename Visit>
void VisitGroups(const LzxTreeLengths& previous, const LzxTreeLengths& lengths, Visit visit) {
  const std::span old_main(previous.main);
  const std::span main(lengths.main);
  visit(PretreeCode(old_main.first(kLzxLiterals), main.first(kLzxLiterals)));
  visit(PretreeCode(old_main.subspan(kLzxLiterals), main.subspan(kLzxLiterals)));
  visit(PretreeCode(previous.length, lengths.length));
}

}  // namespace

void LzxFrequencies::Count(std::span<const LzxToken> tokens, std::uint32_t weight) {
  for (const LzxToken token : tokens) {
    main[token.MainSymbol()] += weight;
    if (!token.IsMatch()) continue;
    if (token.HasLengthSymbol()) length[token.LengthSymbol()] += weight;
    if (LzxFooterBits(token.Slot()) >= kLzxAlignedBits) {
      aligned[token.Footer() & kAlignedMask] += weight;
    }
  }
}

LzxBlock::LzxBlock(std::span<const LzxToken> tokens, const LzxTreeLengths& previous)
    : tokens_(tokens) {
  LzxFrequencies frequencies;
  frequencies.Count(tokens);
  HuffmanLengths(frequencies.main, kLzxMaxCodeLength, lengths_.main);
  HuffmanLengths(frequencies.length, kLzxMaxCodeLength, lengths_.length);
  HuffmanLengths(frequencies.aligned, kMaxAlignedLength, aligned_lengths_);
  CanonicalCodes(lengths_.main, main_codes_);
  CanonicalCodes(lengths_.length, length_codes_);
  CanonicalCodes(aligned_lengths_, aligned_codes_);

  std::uint32_t aligned_count = 0;
  for (const std::uint32_t frequency : frequencies.aligned) aligned_count += frequency;
  const std::uint32_t plain = aligned_count * kLzxAlignedBits;
  const std::uint32_t coded = SymbolBits(frequencies.aligned, aligned_lengths_) + kAlignedTreeBits;
  type_ = coded < plain ? LzxBlockType::kAligned : LzxBlockType::kVerbatim;

  header_bits_ = kLzxBlockTypeBits + kLzxBlockSizeBits;
  VisitGroups(previous, lengths_,
              [this](const PretreeCode& group) { header_bits_ += group.Bits(); });
  token_bits_ = SymbolBits(frequencies.main, lengths_.main) +
                SymbolBits(frequencies.length, lengths_.length) + FooterBits(frequencies);
  if (type_ == LzxBlockType::kAligned) token_bits_ = token_bits_ - plain + coded;
}

void LzxBlock::WriteHeader(const LzxTreeLengths& previous, BitWriter& out) const {
  out.Put(static_cast<std::uint32_t>(type_), kLzxBlockTypeBits);
  std::uint32_t size = 0;
  for (const LzxToken token : tokens_) size += token.Size();
  out.Put(size, kLzxBlockSizeBits);
  if (type_ == LzxBlockType::kAligned) {
    for (const std::uint8_t length : aligned_lengths_) out.Put(length, kLzxAlignedLengthBits);
  }
  VisitGroups(previous, lengths_, [&out](const PretreeCode& group) { group.Write(out); });
}

void LzxBlock::WriteTokens(std::span<const LzxToken> tokens, BitWriter& out) const {
  if (type_ == LzxBlockType::kAligned) {
    WriteTokensAs<true>(tokens, out);
  } else {
    WriteTokensAs<false>(tokens, out);
  }
}

template <bool kIsAligned>
void LzxBlock::WriteTokensAs(std::span<const LzxToken> tokens, BitWriter& out) const {
  for (const LzxToken token : tokens) {
    const std::uint32_t symbol = token.MainSymbol();
    out.Put(main_codes_[symbol], lengths_.main[symbol]);
    if (!token.IsMatch()) continue;
    if (token.HasLengthSymbol()) {
      out.Put(length_codes_[token.LengthSymbol()], lengths_.length[token.LengthSymbol()]);
    }
    const int extra = LzxFooterBits(token.Slot());
    if (kIsAligned && extra >= kLzxAlignedBits) {
      const std::uint32_t low = token.Footer() & kAlignedMask;
      out.Put(token.Footer() >> kLzxAlignedBits, extra - kLzxAlignedBits);
      out.Put(aligned_codes_[low], aligned_lengths_[low]);
    } else {
      out.Put(token.Footer(), extra);
    }
  }
}

}  // namespace scrivo
