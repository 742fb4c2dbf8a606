// Compiles that leave out the navigation bars which the host has put into the pages.

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class WithoutBarsRun : public ScrivoRun {
 protected:
  WithoutBarsRun() {
    web.Write("docs/a.htm",
              Page("<!--msnavigation--><table><tr><td>"
                   "<h2>Top</h2><img src=\"../_derived/a.htm_cmp_blank_bnr.gif\">"
                   "</td></tr><!--msnavigation--></table>"
                   "<!--msnavigation--><table><tr><!--msnavigation--><td>" +
                   kOwn + "<!--msnavigation--></td></tr><!--msnavigation--></table>"));
    web.Write("docs/b.htm", Page("<!--webbot bot=\"Navigation\" startspan --><img src=\"bar.gif\">"
                                 "<!--webbot bot=\"Navigation\" endspan -->" +
                                 kOwn));
    web.Write("docs/bar.gif", "GIF of a bar");
    web.Write("docs/own.gif", "GIF of the page");
    web.Write("_derived/a.htm_cmp_blank_bnr.gif", "GIF of a banner");
    web.Write("_derived/b.htm_CMP_blank_hbtn_a.gif", "GIF of a button that is pressed");
    web.Write("_derived/c.htm_cmp_blank_bnr.gif", "GIF that a page shows itself");
    web.Write("_derived/text.gif", "GIF with a text on it");
  }

  static std::string Page(const std::string& body) {
    return "<html><head><title>A</title></head><body>" + body + "</body></html>";
  }

  const std::string kOwn =
      "<h1>Own</h1>\r\n<img src=\"own.gif\"><img src=\"../_derived/c.htm_cmp_blank_bnr.gif\">\x80";
};

TEST_F(WithoutBarsRun, LeavesBarsAndTheirPicturesOutOfTheHelpFile) {
  const std::string before = web.Read("docs/a.htm");
  ASSERT_EQ(Compile({"--without-bars"}), 0) << err;
  EXPECT_TRUE(err.find("Left the bars out of 2 pages: ") != std::string::npos) << err;
  Unpack();
  EXPECT_EQ(output.Read("un packed/docs/a.htm"), Page(kOwn));
  EXPECT_EQ(output.Read("un packed/docs/b.htm"), Page(kOwn));
  EXPECT_EQ(output.Read("un packed/index.htm"), web.Read("index.htm"));
  EXPECT_TRUE(output.Has("un packed/docs/own.gif"));
  EXPECT_TRUE(output.Has("un packed/_derived/c.htm_cmp_blank_bnr.gif"));
  EXPECT_TRUE(output.Has("un packed/_derived/text.gif"));
  EXPECT_FALSE(output.Has("un packed/docs/bar.gif"));
  EXPECT_FALSE(output.Has("un packed/_derived/a.htm_cmp_blank_bnr.gif"));
  EXPECT_FALSE(output.Has("un packed/_derived/b.htm_CMP_blank_hbtn_a.gif"));
  EXPECT_EQ(web.Read("docs/a.htm"), before);
}

TEST_F(WithoutBarsRun, KeepsThemUnlessAsked) {
  ASSERT_EQ(Compile(), 0) << err;
  Unpack();
  EXPECT_EQ(output.Read("un packed/docs/a.htm"), web.Read("docs/a.htm"));
  EXPECT_TRUE(output.Has("un packed/docs/bar.gif"));
  EXPECT_TRUE(output.Has("un packed/_derived/a.htm_cmp_blank_bnr.gif"));
  EXPECT_TRUE(output.Has("un packed/_derived/b.htm_CMP_blank_hbtn_a.gif"));
}

TEST_F(WithoutBarsRun, MakesNoIndexEntriesFromBars) {
  ASSERT_EQ(Compile({"--index", "headings", "--without-bars"}), 0) << err;
  Unpack();
  const std::string index = output.Read("un packed/Scrivo.hhk");
  EXPECT_NE(index.find("VALUE=\"Own\""), std::string::npos);
  EXPECT_EQ(index.find("VALUE=\"Top\""), std::string::npos);
}

TEST_F(WithoutBarsRun, SaysWhenThereIsNothingToLeaveOut) {
  std::filesystem::remove_all(web.path() / "docs");
  ASSERT_EQ(Compile({"--without-bars"}), 0) << err;
  EXPECT_NE(err.find("No page has bars that --without-bars could leave out.\n"), std::string::npos)
      << err;
}

TEST_F(WithoutBarsRun, WorksForWhatIsMadeOfAWeb) {
  ASSERT_EQ(Run({"text", WebPath(), "--without-bars", "-q"}), 0) << err;
  EXPECT_NE(out.find("Own"), std::string::npos) << out;
  EXPECT_EQ(out.find("Top"), std::string::npos) << out;
  ASSERT_EQ(Run({"export", WebPath(), output.PathOf("site"), "--without-bars", "-q"}), 0) << err;
  EXPECT_TRUE(output.Has("site/pages/docs/own.gif"));
  EXPECT_FALSE(output.Has("site/pages/docs/bar.gif"));
}

TEST_F(WithoutBarsRun, CannotBeHadInAProject) {
  EXPECT_EQ(Run({"project", WebPath(), "--without-bars"}), 2);
  EXPECT_EQ(err,
            "scrivo: error: --without-bars: a project names the pages on disk, bars and all; leave "
            "out --without-bars, or make the help file with scrivo compile\n"
            "See scrivo project --help.\n");
  EXPECT_EQ(ProjectFiles(), std::vector<std::string>{});
}

TEST_F(WithoutBarsRun, SaysThatAProjectThatIsKeptHasThem) {
  ASSERT_EQ(Compile({"--without-bars", "--keep-project"}), 0) << err;
  EXPECT_NE(err.find("The project that is kept names the pages on disk, which keep their bars.\n"),
            std::string::npos)
      << err;
  EXPECT_NE(web.Read("Scrivo.tmp.htm").find("a.htm_cmp_blank_bnr.gif"), std::string::npos)
      << "the pages show it";
  Unpack();
  EXPECT_FALSE(output.Has("un packed/_derived/a.htm_cmp_blank_bnr.gif"));
}

}  // namespace
}  // namespace scrivo
