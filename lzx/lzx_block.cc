#include "lzx/lzx_block.h"

#include "lzx/code_length_group.h"
#include "lzx/huffman_lengths.h"

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
              static_cast<std::uint32_t>(LzxExtraBits(slot));
    }
  }
  return bits;
}

// The three groups in which the lengths of the main and the length tree are sent.
template <typename Visit>
void VisitGroups(const LzxTreeLengths& previous, const LzxTreeLengths& lengths, Visit visit) {
  const std::span old_main(previous.main);
  const std::span main(lengths.main);
  visit(CodeLengthGroup(old_main.first(kLzxLiterals), main.first(kLzxLiterals)));
  visit(CodeLengthGroup(old_main.subspan(kLzxLiterals), main.subspan(kLzxLiterals)));
  visit(CodeLengthGroup(previous.length, lengths.length));
}

}  // namespace

void LzxFrequencies::Count(std::span<const LzxToken> tokens) {
  for (const LzxToken token : tokens) {
    ++main[token.main_symbol()];
    if (!token.is_match()) continue;
    if (token.has_length_symbol()) ++length[token.length_symbol()];
    if (LzxExtraBits(token.slot()) >= kLzxAlignedBits) ++aligned[token.footer() & kAlignedMask];
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
              [this](const CodeLengthGroup& group) { header_bits_ += group.bits(); });
  token_bits_ = SymbolBits(frequencies.main, lengths_.main) +
                SymbolBits(frequencies.length, lengths_.length) + FooterBits(frequencies);
  if (type_ == LzxBlockType::kAligned) token_bits_ = token_bits_ - plain + coded;
}

void LzxBlock::WriteHeader(const LzxTreeLengths& previous, BitWriter& out) const {
  out.Put(static_cast<std::uint32_t>(type_), kLzxBlockTypeBits);
  std::uint32_t size = 0;
  for (const LzxToken token : tokens_) size += token.size();
  out.Put(size, kLzxBlockSizeBits);
  if (type_ == LzxBlockType::kAligned) {
    for (const std::uint8_t length : aligned_lengths_) out.Put(length, kLzxAlignedLengthBits);
  }
  VisitGroups(previous, lengths_, [&out](const CodeLengthGroup& group) { group.Write(out); });
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
    const std::uint32_t symbol = token.main_symbol();
    out.Put(main_codes_[symbol], lengths_.main[symbol]);
    if (!token.is_match()) continue;
    if (token.has_length_symbol()) {
      out.Put(length_codes_[token.length_symbol()], lengths_.length[token.length_symbol()]);
    }
    const int extra = LzxExtraBits(token.slot());
    if (kIsAligned && extra >= kLzxAlignedBits) {
      const std::uint32_t low = token.footer() & kAlignedMask;
      out.Put(token.footer() >> kLzxAlignedBits, extra - kLzxAlignedBits);
      out.Put(aligned_codes_[low], aligned_lengths_[low]);
    } else {
      out.Put(token.footer(), extra);
    }
  }
}

}  // namespace scrivo
