#include "hhc/messages.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace scrivo {
namespace {

constexpr char kPage[] = SCRIVO_SOURCE_DIR "/docs/messages.md";

// The text with "…" for each argument.
std::string Shown(std::string_view text) {
  std::string shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      shown += "\u2026";
      ++i;
    } else {
      shown += text[i];
    }
  }
  return shown;
}

std::string MessagesPage() {
  std::string page =
      "# Messages of the help compiler\n"
      "\n"
      "`hhc` and `scrivo compile` print one line for each problem: the number of the message, its "
      "severity, and what it is\n"
      "about. A warning affects only what it names. An error means that something the project "
      "asks for is missing; the help\n"
      "file is made nevertheless, unless the message ends with \"Compilation stopped.\"\n"
      "\n"
      "This page is generated from the table in `hhc/messages.cc` by\n"
      "`SCRIVO_WRITE_DOCS=1 build/native/bin/hhc_tests --gtest_filter='Messages.*'`.\n";
  for (const MessageEntry& entry : MessageTable()) {
    const bool numbered = static_cast<int>(entry.code) != 0;
    page += "\n## ";
    page += numbered ? "HHC" + std::to_string(static_cast<int>(entry.code)) : "Without a number";
    page += entry.severity == Severity::kError ? " (error)\n\n" : " (warning)\n\n";
    page.append("> ").append(Shown(entry.text)).append("\n\n").append(entry.advice).append("\n");
  }
  return page;
}

TEST(Messages, ThePageInDocsIsTheTable) {
  if (std::getenv("SCRIVO_WRITE_DOCS") != nullptr) {
    std::ofstream(kPage, std::ios::binary) << MessagesPage();
  }
  std::ifstream file(kPage, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), MessagesPage());
}

TEST(Messages, EachStandsOnceAndHasAdvice) {
  int last = -1;
  std::set<std::string_view> texts;
  for (const MessageEntry& entry : MessageTable()) {
    EXPECT_GT(static_cast<int>(entry.code), last);
    last = static_cast<int>(entry.code);
    EXPECT_TRUE(texts.insert(entry.text).second) << entry.text;
    EXPECT_GT(entry.advice.size(), 20u) << entry.text;
  }
}

TEST(Messages, ArgumentsFillTheirPlacesAndAreNotReadAgain) {
  const CompileMessage message = MakeMessage(MessageCode::kLinkBroken, {"a%3.htm", "12", "b%1"});
  EXPECT_EQ(message.Line(),
            "HHC3010: Warning: a%3.htm(12) : The linked file \"b%1\" does not exist.");
  EXPECT_EQ(MakeMessage(MessageCode::kTooManyTopics, {"word", "7"}).Line(),
            "Warning: Too many topics associated to the \"word\" keyword.  Remaining 7 links "
            "truncated.");
}

}  // namespace
}  // namespace scrivo
