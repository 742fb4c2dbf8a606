#include "exporter/script_text.h"

#include <gtest/gtest.h>

#include <string>

namespace scrivo {
namespace {

TEST(ScriptText, EndsNoLiteralThatItStandsIn) {
  std::string script, html;
  AppendScriptString("a\"b\\c\n</script>", &script);
  EXPECT_EQ(script, "\"a\\\"b\\\\c\\x0A\\x3C/script>\"");
  AppendHtmlText("<a href='x' title=\"y\">&\xC3\xA9", &html);
  EXPECT_EQ(html, "&lt;a href=&#39;x&#39; title=&quot;y&quot;&gt;&amp;\xC3\xA9");
}

TEST(ScriptText, EscapesInAddressesWhatHasAMeaningThere) {
  std::string address;
  AppendAddress("a b/c#?%'\xC3\xA9.htm", &address);
  EXPECT_EQ(address, "a%20b/c%23%3F%25%27%C3%A9.htm");
}

TEST(ScriptText, WritesNumbersThatReadBack) {
  std::string text;
  std::vector<std::uint64_t> numbers;
  for (std::uint64_t n = 0; n < 70000; n += n < 4000 ? 1 : 97) numbers.push_back(n);
  numbers.push_back(std::uint64_t{1} << 40);
  for (const std::uint64_t number : numbers) AppendNumber(number, &text);
  // Such text stands in quotes as it is.
  EXPECT_EQ(text.find_first_of("\"\\! "), std::string::npos);
  std::string_view rest = text;
  for (const std::uint64_t number : numbers) ASSERT_EQ(TakeNumber(&rest), number);
  EXPECT_TRUE(rest.empty());
}

TEST(ScriptText, SpendsFewCharactersOnSmallNumbers) {
  const auto length = [](std::uint64_t number) {
    std::string text;
    AppendNumber(number, &text);
    return text.size();
  };
  EXPECT_EQ(length(56), 1u);
  EXPECT_EQ(length(57), 2u);
  EXPECT_EQ(length(1880), 2u);
  EXPECT_EQ(length(1881), 3u);
}

}  // namespace
}  // namespace scrivo
