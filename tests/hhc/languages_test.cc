// Help in languages of other scripts: whatever the sources are written in, title, contents, index
// and search say the same, in the code page that viewers expect, on a machine of any language.

#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <stdexcept>

#include "bytes/little_endian.h"
#include "hhc/compiler.h"
#include "project/sitemap.h"
#include "search/search_alphabet.h"
#include "search/word_collector.h"
#include "tests/hhc/internal_streams.h"
#include "tests/hhc/project_check.h"
#include "tests/hhc/project_folder.h"
#include "tests/hhc/utf16_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

struct Language {
  const char* name;
  const char* number;
  int code_page;
  // All in UTF-8.
  std::string title, chapter, keyword, page, text;
};

const Language kLanguages[] = {
    {"Japanese", "0x411", 932, "\u64CD\u4F5C\u30AC\u30A4\u30C9", "\u7B2C\u4E00\u7AE0 \u8868\u793A",
     "\u8868\u793A\u65B9\u6CD5", "\u6982\u8981.htm",
     "\u30BD\u30D5\u30C8\u30A6\u30A7\u30A2\u306E\u8868\u793A\u80FD\u529B"},
    {"SimplifiedChinese", "0x804", 936, "\u4F7F\u7528\u5E2E\u52A9",
     "\u7B2C\u4E00\u7AE0 \u5B89\u88C5", "\u5B89\u88C5\u65B9\u6CD5", "\u6982\u8FF0.htm",
     "\u8F6F\u4EF6\u7684\u5B89\u88C5\u8BF4\u660E"},
    {"TraditionalChinese", "0x404", 950, "\u4F7F\u7528\u8AAA\u660E",
     "\u7B2C\u4E00\u7AE0 \u529F\u80FD", "\u529F\u80FD\u8868", "\u6982\u8981.htm",
     "\u8EDF\u9AD4\u7684\u529F\u80FD\u8A31\u53EF"},
    {"Korean", "0x412", 949, "\uC0AC\uC6A9\uC790 \uB3C4\uC6C0\uB9D0", "\uC81C1\uC7A5 \uC124\uCE58",
     "\uC124\uCE58 \uBC29\uBC95", "\uAC1C\uC694.htm",
     "\uC18C\uD504\uD2B8\uC6E8\uC5B4 \uC124\uCE58"},
    {"Russian", "0x419", 1251, "\u0421\u043F\u0440\u0430\u0432\u043A\u0430",
     "\u0413\u043B\u0430\u0432\u0430 \u2116 1",
     "\u0423\u0441\u0442\u0430\u043D\u043E\u0432\u043A\u0430", "\u041E\u0431\u0437\u043E\u0440.htm",
     "\u0423\u0441\u0442\u0430\u043D\u043E\u0432\u043A\u0430 "
     "\u043F\u0440\u043E\u0433\u0440\u0430\u043C\u043C\u044B"},
    {"Greek", "0x408", 1253, "\u0392\u03BF\u03AE\u03B8\u03B5\u03B9\u03B1",
     "\u039A\u03B5\u03C6\u03AC\u03BB\u03B1\u03B9\u03BF",
     "\u0395\u03B3\u03BA\u03B1\u03C4\u03AC\u03C3\u03C4\u03B1\u03C3\u03B7",
     "\u0395\u03C0\u03B9\u03C3\u03BA\u03CC\u03C0\u03B7\u03C3\u03B7.htm",
     "\u0395\u03B3\u03BA\u03B1\u03C4\u03AC\u03C3\u03C4\u03B1\u03C3\u03B7 "
     "\u03C0\u03C1\u03BF\u03B3\u03C1\u03AC\u03BC\u03BC\u03B1\u03C4\u03BF\u03C2"},
    {"Hebrew", "0x40D", 1255, "\u05E2\u05D6\u05E8\u05D4",
     "\u05E4\u05E8\u05E7 \u05E8\u05D0\u05E9\u05D5\u05DF", "\u05D4\u05EA\u05E7\u05E0\u05D4",
     "\u05E1\u05E7\u05D9\u05E8\u05D4.htm",
     "\u05D4\u05EA\u05E7\u05E0\u05D4 \u05E9\u05DC \u05D4\u05EA\u05D5\u05DB\u05E0\u05D4"},
    {"Thai", "0x41E", 874, "\u0E04\u0E39\u0E48\u0E21\u0E37\u0E2D",
     "\u0E1A\u0E17\u0E17\u0E35\u0E48 1",
     "\u0E01\u0E32\u0E23\u0E15\u0E34\u0E14\u0E15\u0E31\u0E49\u0E07",
     "\u0E20\u0E32\u0E1E\u0E23\u0E27\u0E21.htm",
     "\u0E15\u0E34\u0E14\u0E15\u0E31\u0E49\u0E07 \u0E42\u0E1B\u0E23\u0E41\u0E01\u0E23\u0E21"},
};

// What the sources may be written in.
enum class Form { kCodePage, kUtf8, kUtf8WithMark, kUtf16, kUtf16Swapped };
constexpr Form kForms[] = {Form::kCodePage, Form::kUtf8, Form::kUtf8WithMark, Form::kUtf16,
                           Form::kUtf16Swapped};

std::string Written(const std::string& utf8, Form form, int code_page) {
  switch (form) {
    case Form::kCodePage:
      return FromUtf8(utf8, code_page);
    case Form::kUtf8:
      return utf8;
    case Form::kUtf8WithMark:
      return "\xEF\xBB\xBF" + utf8;
    case Form::kUtf16:
      return Utf16Text(utf8, true);
    case Form::kUtf16Swapped:
      break;
  }
  return Utf16Text(utf8, false);
}

// A project of one page whose name, and all else, is in the language.
void WriteProjectIn(const ProjectFolder& folder, const Language& language, Form form) {
  const auto write = [&](const std::string& name, const std::string& text) {
    folder.Write(name, Written(text, form, language.code_page));
  };
  write("help.hhp",
        "[OPTIONS]\r\nContents file=a.hhc\r\nIndex file=a.hhk\r\nBinary "
        "TOC=Yes\r\nFull-text search=Yes\r\nTitle=" +
            language.title + "\r\nLanguage=" + language.number + " " + language.name +
            "\r\n[FILES]\r\n" + language.page + "\r\n");
  write("a.hhc",
        "<HTML><BODY>\r\n<UL>\r\n" + ItemText(language.chapter, language.page) + "</UL>\r\n");
  write("a.hhk",
        "<HTML><BODY>\r\n<UL>\r\n" + ItemText(language.keyword, language.page) + "</UL>\r\n");
  write(language.page, "<html><head><title>" + language.chapter + "</title></head><body><p>" +
                           language.text + "</p></body></html>\r\n");
}

std::string UpToZero(const std::string& text) { return text.substr(0, text.find('\0')); }

// The words of a query, as the viewer breaks it.
std::vector<std::string> WordsOf(const std::string& utf8, int code_page) {
  WordCollector collector;
  WordBreaker breaker(code_page, &collector);
  breaker.Text(FromUtf8(utf8, code_page));
  breaker.Break();
  const PageWords found = collector.Finish();
  std::vector<std::string> words;
  std::string_view rest = found.encoded;
  while (!rest.empty()) {
    const std::size_t length = static_cast<unsigned char>(rest[0]);
    words.emplace_back(rest.substr(1, length));
    rest.remove_prefix(2 + length);
    const std::uint64_t positions = TakeVarint(&rest);
    TakeVarint(&rest);
    for (std::uint64_t i = 0; i < positions; ++i) TakeVarint(&rest);
  }
  return words;
}

class LanguagesTest : public testing::TestWithParam<Language> {};

TEST_P(LanguagesTest, AreRightInEveryPartWhateverTheSourcesAreWrittenIn) {
  const Language& language = GetParam();
  const auto encoded = [&](const std::string& text) { return FromUtf8(text, language.code_page); };
  for (const std::string& text : {language.title, language.chapter, language.keyword}) {
    ASSERT_EQ(ToUtf8(encoded(text), language.code_page), text);
  }
  for (const Form form : kForms) {
    SCOPED_TRACE(static_cast<int>(form));
    ProjectFolder folder;
    CompileRecorder recorder;
    WriteProjectIn(folder, language, form);
    ASSERT_TRUE(folder.Compile(&recorder).made);
    EXPECT_TRUE(recorder.messages.empty()) << recorder.messages[0];
    const auto help = InternalStreams::Open(folder.Path("help.chm"));

    auto system = help->System();
    ASSERT_TRUE(system) << help->problem();
    EXPECT_EQ(UpToZero((*system)[kTitleRecord]), encoded(language.title));
    EXPECT_EQ(UpToZero((*system)[kDefaultTopicRecord]), encoded(language.page));

    const auto contents = help->Contents();
    ASSERT_TRUE(contents) << help->problem();
    ASSERT_EQ(contents->size(), 1u);
    EXPECT_EQ(contents->at(0).title, encoded(language.chapter));
    EXPECT_EQ(contents->at(0).address, encoded(language.page));

    const auto keywords = help->Keywords("/$WWKeywordLinks/");
    ASSERT_TRUE(keywords) << help->problem();
    ASSERT_EQ(keywords->size(), 1u);
    EXPECT_EQ(keywords->at(0).text, language.keyword);
    EXPECT_EQ(keywords->at(0).topics, std::vector<std::uint32_t>{0});

    // Viewers without the binary forms read these, as bytes of the code page.
    const std::string hhc = help->Bytes("/a.hhc").value_or("");
    EXPECT_NE(hhc.find("\"" + encoded(language.chapter) + "\""), std::string::npos) << hhc;
    EXPECT_NE(hhc.find("\"" + encoded(language.page) + "\""), std::string::npos) << hhc;
    EXPECT_NE(help->Bytes("/a.hhk").value_or("").find("\"" + encoded(language.keyword) + "\""),
              std::string::npos);

    // The page stays as it was written.
    EXPECT_EQ(help->Bytes("/" + language.page), folder.Read(language.page));

    const auto index = help->Search();
    ASSERT_TRUE(index) << help->problem();
    // Whose words they are stands in the header of the index.
    const std::string header = help->Bytes("/$FIftiMain").value_or("").substr(0, 0x82);
    ASSERT_EQ(header.size(), 0x82u);
    EXPECT_EQ(LoadLe32(reinterpret_cast<const std::uint8_t*>(header.data()) + 0x7A),
              static_cast<std::uint32_t>(language.code_page));
    const std::vector<std::string> words = WordsOf(language.text, language.code_page);
    EXPECT_GE(words.size(), 2u);
    for (const std::string& word : words) {
      ASSERT_TRUE(index->contains({word, false})) << ToUtf8(word, language.code_page);
      EXPECT_TRUE(index->at({word, false}).contains(0));
    }
    for (const std::string& word : WordsOf(language.chapter, language.code_page)) {
      EXPECT_TRUE(index->contains({word, true})) << ToUtf8(word, language.code_page);
    }
  }
}

// Puts the machine into a language and back.
class OtherLocale {
 public:
  explicit OtherLocale(const char* name) : before_(std::setlocale(LC_ALL, nullptr)) {
    try {
      std::locale::global(std::locale(name));
      is_set_ = true;
    } catch (const std::runtime_error&) {
      is_set_ = std::setlocale(LC_ALL, name) != nullptr;
    }
  }
  ~OtherLocale() {
    std::locale::global(std::locale::classic());
    std::setlocale(LC_ALL, before_.c_str());
  }
  bool IsSet() const { return is_set_; }

 private:
  std::string before_;
  bool is_set_ = false;
};

TEST_P(LanguagesTest, GiveTheSameBytesOnMachinesOfEveryLanguage) {
  ProjectFolder folder;
  CompileRecorder recorder;
  WriteProjectIn(folder, GetParam(), Form::kUtf8);
  ASSERT_TRUE(folder.Compile(&recorder).made);
  const std::string expected = folder.Read("help.chm");
  int tried = 0;
  // As POSIX calls them, and as Windows does. A machine has some of them.
  for (const char* name : {"C", "C.UTF-8", "ja_JP.UTF-8", "ja_JP.EUC-JP", "tr_TR.UTF-8",
                           "tr_TR.ISO-8859-9", "Japanese_Japan.932", "Turkish_Turkey.1254"}) {
    const OtherLocale locale(name);
    if (!locale.IsSet()) continue;
    ++tried;
    ASSERT_TRUE(folder.Compile(&recorder).made) << name;
    EXPECT_TRUE(folder.Read("help.chm") == expected) << name;
  }
  EXPECT_GE(tried, 1);
}

// Whichever code page the machine's programs name their files in.
TEST_P(LanguagesTest, NameTheHelpFileAlikeOnMachinesOfEveryLanguage) {
  const Language& language = GetParam();
  ProjectFolder folder;
  CompileRecorder recorder;
  WriteProjectIn(folder, language, Form::kCodePage);
  const std::string title = FromUtf8(language.title, language.code_page);
  folder.Write("help.hhp", "[OPTIONS]\r\nCompiled file=" + title +
                               ".chm\r\nLanguage=" + language.number + "\r\n[FILES]\r\n" +
                               FromUtf8(language.page, language.code_page) + "\r\n");
  std::string expected;
  for (const int machine : {65001, 932, 1251, 1252, 1255}) {
    CompileRequest request;
    request.name_code_page = machine;
    const CompileResult result = folder.Compile(&recorder, request);
    ASSERT_TRUE(result.made) << machine;
    EXPECT_EQ(result.file_name, std::string(language.title) + ".chm") << machine;
    const std::string bytes = folder.Read(result.file_name);
    if (expected.empty()) expected = bytes;
    EXPECT_TRUE(bytes == expected) << machine;
  }
}

INSTANTIATE_TEST_SUITE_P(All, LanguagesTest, testing::ValuesIn(kLanguages),
                         [](const testing::TestParamInfo<Language>& info) {
                           return info.param.name;
                         });

}  // namespace
}  // namespace scrivo
