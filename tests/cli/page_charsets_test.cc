// Pages that declare another charset than the one they are in.

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class PageCharsets : public ScrivoRun {
 protected:
  PageCharsets() {
    web.Write("docs/a.htm", Declaring("big5", kUtf8));
    web.Write("docs/b.htm", Declaring("big5", kBig5));
    web.Write("docs/c.htm", Declaring("gb2312", kUtf8));
  }
  static std::string Declaring(const std::string& charset, const std::string& text) {
    return "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=" + charset +
           "\">\r\n<title>T</title></head><body>" + text + "</body></html>";
  }

  // "Red forest" in Chinese.
  const std::string kUtf8 = "\u7D05\u6A39\u6797", kBig5 = "\xAC\xF5\xBE\xF0\xAA\x4C";
};

TEST_F(PageCharsets, AreCorrectedInTheHelpFileWhereAPageIsPlainlyUtf8) {
  const std::string before = web.Read("docs/a.htm");
  ASSERT_EQ(Compile(), 0) << err;
  EXPECT_NE(
      err.find("\nCorrected the declared charset to UTF-8 in 2 pages, first in docs/a.htm. To "
               "keep the pages as they are, add --keep-charsets.\n"),
      std::string::npos)
      << err;
  Unpack();
  EXPECT_EQ(output.Read("un packed/docs/a.htm"), Declaring("utf-8", kUtf8));
  EXPECT_EQ(output.Read("un packed/docs/b.htm"), Declaring("big5", kBig5));
  EXPECT_EQ(output.Read("un packed/docs/c.htm"), Declaring("utf-8", kUtf8));
  EXPECT_EQ(output.Read("un packed/index.htm"), web.Read("index.htm"));
  EXPECT_EQ(web.Read("docs/a.htm"), before);
}

TEST_F(PageCharsets, StayWhenAsked) {
  ASSERT_EQ(Compile({"--keep-charsets"}), 0) << err;
  EXPECT_EQ(err.find("Corrected"), std::string::npos) << err;
  Unpack();
  for (const char* page : {"docs/a.htm", "docs/b.htm", "docs/c.htm"}) {
    EXPECT_EQ(output.Read(std::string("un packed/") + page), web.Read(page)) << page;
  }
}

TEST_F(PageCharsets, ThatAreRightAreNotSpokenOf) {
  web.Write("docs/a.htm", Declaring("utf8", kUtf8));
  web.Write("docs/c.htm", Declaring("gb2312", "ASCII"));
  ASSERT_EQ(Compile(), 0) << err;
  EXPECT_EQ(err.find("Corrected"), std::string::npos) << err;
  Unpack();
  for (const char* page : {"docs/a.htm", "docs/b.htm", "docs/c.htm"}) {
    EXPECT_EQ(output.Read(std::string("un packed/") + page), web.Read(page)) << page;
  }
}

TEST_F(PageCharsets, StayForACompilerThatTakesProjects) {
  ASSERT_EQ(Run({"project", WebPath(), "-o", Output(), "-q"}), 0) << err;
  std::ostringstream told;
  ASSERT_EQ(RunHhc({web.PathOf("Scrivo.hhp")}, {"/", false, ""}, told, told), 1) << told.str();
  Unpack();
  EXPECT_EQ(output.Read("un packed/docs/a.htm"), web.Read("docs/a.htm"));
}

TEST_F(PageCharsets, StayInAWebMadeOfAHelpFileAndInTheHelpFileMadeOfThat) {
  ASSERT_EQ(Compile({"--keep-charsets"}), 0) << err;
  ASSERT_EQ(Run({"decompile", "--web", Output(), output.PathOf("made")}), 0) << err;
  EXPECT_EQ(output.Read("made/docs/a.htm"), web.Read("docs/a.htm"));
  EXPECT_TRUE(out.ends_with(" --default-page index.htm --keep-charsets\n")) << out;
  ASSERT_EQ(Compile(), 0) << err;
  ASSERT_EQ(Run({"decompile", "--web", Output(), output.PathOf("right")}), 0) << err;
  EXPECT_EQ(out.find("--keep-charsets"), std::string::npos) << out;
}

}  // namespace
}  // namespace scrivo
