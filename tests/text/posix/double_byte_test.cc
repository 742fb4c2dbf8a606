// Holds the tables of the double-byte code pages against the conversions of the C library.

#include "text/double_byte.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <string>

#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr int kCodePages[] = {932, 936, 949, 950};

class CLibrary {
 public:
  CLibrary(const std::string& to, const std::string& from)
      : handle_(iconv_open(to.c_str(), from.c_str())) {}
  ~CLibrary() {
    if (IsOpen()) iconv_close(handle_);
  }
  bool IsOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  // The whole of `text` converted, "" when a part of it cannot be.
  std::string Convert(std::string text) {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    char buffer[16];
    char *source = text.data(), *target = buffer;
    std::size_t left = text.size(), room = sizeof buffer;
    if (iconv(handle_, &source, &left, &target, &room) != 0) return "";
    return std::string(buffer, sizeof buffer - room);
  }

 private:
  iconv_t handle_;
};

std::string Name(int code_page) { return "CP" + std::to_string(code_page); }

TEST(DoubleByteTables, ReadEveryPairOfBytesAsTheCLibraryDoes) {
  for (const int code_page : kCodePages) {
    CLibrary library("UTF-8", Name(code_page));
    if (!library.IsOpen()) GTEST_SKIP() << "this system cannot convert " << Name(code_page);
    int characters = 0;
    for (int first = 0x80; first <= 0xFF; ++first) {
      const std::string alone(1, static_cast<char>(first));
      const std::string single = library.Convert(alone);
      EXPECT_EQ(DoubleByteToUtf8(alone, code_page, Undefined::kReplaced),
                single.empty() ? "\uFFFD" : single)
          << code_page << " " << first;
      if (!single.empty()) continue;
      for (int second = 0x21; second <= 0xFF; ++second) {
        const std::string pair = alone + static_cast<char>(second);
        const std::string character = library.Convert(pair);
        const std::string converted = DoubleByteToUtf8(pair, code_page, Undefined::kReplaced);
        if (!character.empty()) {
          ++characters;
          ASSERT_EQ(converted, character) << code_page << " " << first << " " << second;
        } else {
          ASSERT_TRUE(converted.starts_with("\uFFFD"))
              << code_page << " " << first << " " << second;
        }
      }
    }
    EXPECT_GT(characters, 9000) << code_page;
  }
}

TEST(DoubleByteTables, WriteEveryCharacterAsTheCLibraryDoes) {
  for (const int code_page : kCodePages) {
    CLibrary library(Name(code_page), "UTF-8");
    if (!library.IsOpen()) GTEST_SKIP() << "this system cannot convert " << Name(code_page);
    for (char32_t character = 0x80; character < 0x10000; ++character) {
      if (character >= 0xD800 && character < 0xE000) continue;
      std::string utf8;
      AppendUtf8(character, &utf8);
      std::size_t lost = 0;
      const std::string bytes = DoubleByteFromUtf8(utf8, code_page, &lost, Undefined::kReplaced);
      const std::string expected = library.Convert(utf8);
      ASSERT_EQ(bytes, expected.empty() ? "?" : expected)
          << code_page << " " << static_cast<unsigned>(character);
      ASSERT_EQ(lost, expected.empty() ? 1u : 0u);
    }
  }
}

}  // namespace
}  // namespace scrivo
