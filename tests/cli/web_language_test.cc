// The language and code page of a help file, as a web's owner means them.

#include "tests/cli/scrivo_run.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr char kTitle[] = "\u7EA2\u6811\u6797";              // of Chinese characters, simplified
constexpr char kTraditional[] = "\u7D05\u6A39\u6797\u751F";  // the same, traditional
constexpr char kRussian[] = "\u041F\u0443\u0442\u044C";

class WebLanguageTest : public ScrivoRun {
 protected:
  void PutNotes(const std::string& charset, const std::string& language) {
    web.Write("_vti_pvt/service.cnf", "vti_encoding:SR|utf8-nl\r\nvti_defaultlanguage:SR|" +
                                          language + "\r\nvti_defaultcharset:SR|" + charset +
                                          "\r\n");
  }
  // A web of a home page whose title is `title` (UTF-8) in the code page, with a page that is not
  // in the contents, and without any declaration.
  void PutPages(const std::string& title, int code_page, const std::string& head = "") {
    const std::string bytes = FromUtf8(title, code_page);
    web.Write("index.htm", "<html><head>" + head + "<title>" + bytes + "</title></head></html>");
    web.Write("docs/a.htm", "<html><head>" + head + "<title>" + bytes + "</title>" +
                                "<meta name=\"keywords\" content=\"" + bytes + "\"></head></html>");
    web.Write("_vti_pvt/structure.cnf", "3.0.0.507\r\n1001\r\n1000,index.htm,0," + title +
                                            ",0,100,0\r\n" + "1001,docs/a.htm,0,A,0,100,0\r\n");
  }
  // What `scrivo info` prints about the help file.
  std::string Info() {
    EXPECT_EQ(Run({"info", Output()}), 0) << err;
    return out;
  }
  bool Says(const std::string& text, const std::string& part) const {
    return text.find(part) != std::string::npos;
  }
};

TEST_F(WebLanguageTest, AWebInGbkKeepsItsTitles) {
  PutPages(kTitle, 936);
  PutNotes("gb2312", "en");
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(Plain(err), "Reading WEB\n" + ContentsLine("all of 2") + "Compiling\n");
  const std::string info = Info();
  EXPECT_TRUE(Says(info, std::string("Title:          ") + kTitle + "\n")) << info;
  EXPECT_TRUE(Says(info, "0x804 Chinese (PRC), code page 936\n")) << info;
  EXPECT_TRUE(Says(info, std::string("  ") + kTitle + "  [index.htm]\n")) << info;
  Unpack();
  EXPECT_TRUE(Says(output.Read("un packed/#STRINGS"), FromUtf8(kTitle, 936)));
  EXPECT_EQ(Run({"tree", WebPath()}), 0);
  EXPECT_TRUE(Says(out, kTitle)) << out;
  EXPECT_EQ(err, ContentsLine("all of 2"));
}

TEST_F(WebLanguageTest, TheProjectCarriesTheLanguageOfTheCodePage) {
  PutPages(kTitle, 936);
  PutNotes("gb2312", "en");
  EXPECT_EQ(Run({"project", WebPath(), "-q"}), 0);
  EXPECT_TRUE(Says(web.Read("Scrivo.hhp"), "\r\nLanguage=0x804 Chinese (PRC)\r\n"));
  EXPECT_TRUE(Says(web.Read("Scrivo.hhp"), "\r\nTitle=" + FromUtf8(kTitle, 936) + "\r\n"));
}

TEST_F(WebLanguageTest, TheNotedLanguageIsTakenWhereItGoesWithTheCodePage) {
  PutNotes("windows-1252", "de-at");
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Says(Info(), "0xc07 German (Austria), code page 1252\n")) << out;
}

TEST_F(WebLanguageTest, ANotedLanguageTellsTheCodePageOfAWebInUtf8) {
  PutPages(kRussian, kUtf8CodePage);
  PutNotes("utf-8", "ru");
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Says(Info(), std::string("Title:          ") + kRussian + "\n")) << out;
  EXPECT_TRUE(Says(out, "0x419 Russian, code page 1251\n")) << out;
}

TEST_F(WebLanguageTest, WithoutNotesThePagesTell) {
  PutPages(kRussian, 1251, "<meta http-equiv=\"Content-Type\" content=\"charset=windows-1251\">");
  web.Write("plain.htm", "<meta charset=\"windows-1252\"><title>Plain</title>");
  web.Write("plain2.htm", "<meta charset=\"windows-1252\"><title>Plain</title>");
  web.Write("plain3.htm", "<meta charset=\"windows-1252\"><title>Plain</title>");
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Says(Info(), std::string("Title:          ") + kRussian + "\n")) << out;
  EXPECT_TRUE(Says(out, "code page 1251\n")) << "pages of ASCII tell less: " << out;
}

TEST_F(WebLanguageTest, AWebThatTellsNothingIsWestern) {
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Says(Info(), "0x409 English (United States), code page 1252\n")) << out;
}

TEST_F(WebLanguageTest, OptionsGoBeforeWhatTheWebSays) {
  PutPages(kRussian, kUtf8CodePage);
  PutNotes("windows-1252", "en");
  EXPECT_EQ(Compile({"--code-page", "1251"}), 0);
  EXPECT_TRUE(Says(Info(), "0x419 Russian, code page 1251\n")) << out;
  EXPECT_TRUE(Says(out, kRussian)) << out;
  EXPECT_EQ(Compile({"--code-page", "1251", "--language", "uk"}), 0);
  EXPECT_TRUE(Says(Info(), "0x422 Ukrainian, code page 1251\n")) << out;
  EXPECT_EQ(Compile({"--language", "0x40c"}), 0);
  EXPECT_TRUE(Says(Info(), "0x40c French (France), code page 1252\n")) << out;
}

TEST_F(WebLanguageTest, ALanguageAloneTellsTheCodePageOfAWebThatTellsNone) {
  PutPages(kRussian, 1251);
  EXPECT_EQ(Compile({"--language", "ru"}), 0);
  EXPECT_TRUE(Says(Info(), std::string("Title:          ") + kRussian + "\n")) << out;
}

TEST_F(WebLanguageTest, RefusesALanguageThatTheCodePageCannotHold) {
  EXPECT_EQ(Compile({"--language", "ru", "--code-page", "936"}), 2);
  EXPECT_TRUE(
      err.starts_with("scrivo: error: --language: Russian is written in code page 1251, "
                      "not in 936; leave out"))
      << err;
  PutPages(kTitle, 936);
  PutNotes("gb2312", "en");
  EXPECT_EQ(Compile({"--language", "ru"}), 1);
  EXPECT_TRUE(Says(err,
                   "but the web in 936. If the web's texts are in that language, add "
                   "--code-page 1251.\n"))
      << err;
  EXPECT_EQ(Compile({"--language", "elvish"}), 2);
}

TEST_F(WebLanguageTest, AnOldCodePageIsReadAndTheAnsiOneOfItsScriptWritten) {
  PutPages(kRussian, 20866);
  EXPECT_EQ(Compile({"--code-page", "koi8-r", "--contents", "folders"}), 0);
  EXPECT_TRUE(Says(Info(), std::string("Title:          ") + kRussian + "\n")) << out;
  EXPECT_TRUE(Says(out, "0x419 Russian, code page 1251\n")) << out;
}

TEST_F(WebLanguageTest, ThePagesMayGoThroughUtf8) {
  PutPages(kTitle, 936);
  PutNotes("gb2312", "zh-cn");
  for (const char* name : {"utf-8", "65001"}) {
    EXPECT_EQ(Run({"project", WebPath(), "-q", "--code-page", name}), 0);
    EXPECT_TRUE(Says(web.Read("Scrivo.hhp"), std::string("\r\nTitle=") + kTitle + "\r\n")) << name;
    std::filesystem::remove(web.PathOf("Scrivo.hhp"));
    std::filesystem::remove(web.PathOf("Scrivo.hhc"));
    std::filesystem::remove(web.PathOf("Scrivo.hhk"));
    std::filesystem::remove(web.PathOf("Scrivo.tmp.htm"));
    EXPECT_EQ(Compile({"--code-page", name}), 0);
    EXPECT_TRUE(Says(Info(), std::string("Title:          ") + kTitle + "\n")) << out;
  }
}

// The warnings of a compile as western text, which loses characters.
TEST_F(WebLanguageTest, WhatIsLostIsToldOnceWithTheTextAndTheOptionToGive) {
  PutPages(kTraditional, kUtf8CodePage);
  EXPECT_EQ(Compile(), 0);
  const std::string told = Plain(err);
  EXPECT_TRUE(Says(told, std::string("are not in code page 1252 and will be \"?\" in the help "
                                     "file; the first is in \"") +
                             kTraditional + "\" in WEB/"))
      << told;
  EXPECT_TRUE(Says(told, "; --code-page 950 keeps them all\n")) << told;
  EXPECT_FALSE(Says(told, "936")) << told;
  EXPECT_FALSE(Says(told, "were replaced")) << "the compiler's own count: " << told;
  PutPages(kTitle, kUtf8CodePage);
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Says(err, "; --code-page 936 keeps them all\n")) << err;
  EXPECT_EQ(Compile({"--code-page", "950"}), 0);
  EXPECT_TRUE(Says(err, "not in code page 950")) << err;
  EXPECT_TRUE(Says(err, "; --code-page 936 keeps them all\n")) << err;
}

TEST_F(WebLanguageTest, TextOfWesternLettersIsAdvisedNoEasternCodePageForItsSymbols) {
  PutPages("\u00C9t\u00E9 \u2192", kUtf8CodePage);
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Says(err, "; no other code page keeps more of them\n")) << err;
  PutPages("\u0141\u00F3d\u017A", kUtf8CodePage);
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Says(err, "; --code-page 1250 keeps them all\n")) << err;
  PutPages("\u65E5\u672C\u8A9E\u306E", kUtf8CodePage);
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Says(err, "; --code-page 932 keeps them all\n")) << err;
}

TEST_F(WebLanguageTest, ATitleThatOnlyThePageHasIsCountedByTheCompiler) {
  web.Write("docs/x.shtml", std::string("<meta charset=\"utf-8\"><title>") + kTitle + "</title>");
  web.Write("docs/a.htm", "<title>A</title><a href=\"x.shtml\">more</a>");
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Says(err, "code page 1252")) << err;
}

}  // namespace
}  // namespace scrivo
