// What the command line tells of a web before it compiles it, and what it leaves out.

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class WebAccountTest : public ScrivoRun {
 protected:
  bool Tells(const std::string& part) const { return Plain(err).find(part) != std::string::npos; }
  std::string Listed() {
    EXPECT_EQ(Run({"list", Output()}), 0);
    return out;
  }
  void PutHidden() {
    web.Write("_private/results.htm", "<title>Results of a form</title>");
    web.Write("_private/logo.gif", "GIF");
    web.Write(".git/config", "");
    web.Write("docs/b.htm",
              "<title>B</title><a href=\"../_private/results.htm\">results</a>"
              "<img src=\"../_PRIVATE/logo.gif\"><a href=\"../.git/config\">x</a>");
  }
};

TEST_F(WebAccountTest, HiddenFilesStayOutAlsoWherePagesLinkToThem) {
  PutHidden();
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(
      Tells("Left out: 3 files (.git and _private), also where pages link to them. To take "
            "them in, add --with-hidden.\n"))
      << err;
  EXPECT_FALSE(Tells("does not exist")) << err;
  EXPECT_TRUE(Plain(out).starts_with("Made OUT/a.chm: 3 pages, no other files, ")) << out;
  const std::string listed = Listed();
  EXPECT_EQ(listed.find("_private"), std::string::npos) << listed;
  EXPECT_EQ(listed.find(".git"), std::string::npos) << listed;
}

TEST_F(WebAccountTest, HiddenFilesAreTakenInWhenAsked) {
  PutHidden();
  EXPECT_EQ(Compile({"--with-hidden"}), 0);
  EXPECT_FALSE(Tells("Left out")) << err;
  const std::string listed = Listed();
  for (const char* name : {"/_private/results.htm", "/_private/logo.gif", "/.git/config"}) {
    EXPECT_NE(listed.find(name), std::string::npos) << listed;
  }
}

TEST_F(WebAccountTest, TheHostsPicturesAndPiecesAreNotMeant) {
  web.Write("_derived/a.gif", "GIF");
  web.Write("_themes/t/b.gif", "GIF");
  web.Write("docs/b.htm", "<title>B</title><img src=\"../_themes/t/b.gif\">");
  EXPECT_EQ(Compile(), 0);
  EXPECT_FALSE(Tells("Left out")) << err;
  EXPECT_NE(Listed().find("/_themes/t/b.gif"), std::string::npos) << out;
}

TEST_F(WebAccountTest, AMissingFileIsToldThoughOthersAreLeftOut) {
  PutHidden();
  web.Write("docs/c.htm", "<title>C</title><a href=\"../none.htm\">x</a>");
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Tells("The linked file \"../none.htm\" does not exist")) << err;
}

TEST_F(WebAccountTest, SaysWhyAFileCouldNotBeCompiled) {
  web.Write("docs/help.hhp", "[OPTIONS]\nCompiled file=x.chm\n[FILES]\na.htm\nnone.htm\n");
  EXPECT_EQ(Run({"text", web.PathOf("docs/help.hhp")}), 0);
  EXPECT_TRUE(
      Tells("scrivo: error: Compilation failed while compiling none.htm. The reason: there "
            "is no such file\n"))
      << err;
}

TEST_F(WebAccountTest, AProjectSaysThatAnotherCompilerMayTakeThemIn) {
  PutHidden();
  EXPECT_EQ(Run({"project", WebPath()}), 0);
  EXPECT_TRUE(
      Tells("unless the compiler takes in what pages link to. To take them in, add "
            "--with-hidden.\n"))
      << err;
  EXPECT_EQ(web.Read("Scrivo.hhp").find("_private"), std::string::npos);
}

TEST_F(WebAccountTest, AHiddenPageCannotBeTheDefaultPage) {
  PutHidden();
  EXPECT_EQ(Compile({"--default-page", "_private/results.htm"}), 1);
  EXPECT_TRUE(
      Tells("_private/results.htm: the page is left out. To take in such files, add "
            "--with-hidden.\n"))
      << err;
}

TEST_F(WebAccountTest, SaysWhereTheContentsComeFromAndNamesTheOtherChoice) {
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(
      Tells("\nContents: the navigation structure, because it shows all of 2 pages. To "
            "follow the web's folders instead, add --contents folders.\n"))
      << err;
  web.Write("docs/b.htm", "<title>B</title>");
  EXPECT_EQ(Run({"tree", WebPath()}), 0);
  EXPECT_TRUE(Tells("because it shows 2 of 3 pages.")) << err;
}

TEST_F(WebAccountTest, SaysWhyItTookTheFolders) {
  const std::string header = "3.0.0.507\r\n1001\r\n", home = "1000,index.htm,0,Home,0,100,0\r\n";
  const std::string no_contents = ". With --contents navigation there would be no contents.\n";
  const std::string take_it = ". To use it anyway, add --contents navigation.\n";
  const struct {
    std::string structure, reason;
  } webs[] = {
      {header, "the navigation structure is empty" + no_contents},
      {header + home, "the navigation structure holds only the home page of 2 pages" + take_it},
      {header + home + "1001,x.htm,0,X,0,1,0\r\n1002,y.htm,0,Y,0,1,0\r\n",
       "of 3 entries in the navigation structure 2 lead to pages that are missing" + take_it},
      {std::string("\0\0", 2), "the navigation structure cannot be read" + no_contents},
  };
  for (const auto& [structure, reason] : webs) {
    web.Write("_vti_pvt/structure.cnf", structure);
    EXPECT_EQ(Compile(), 0);
    EXPECT_TRUE(Tells("\nContents: the web's folders, because " + reason)) << err;
  }
  std::filesystem::remove(web.PathOf("_vti_pvt/structure.cnf"));
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(Tells("because the web has no navigation structure" + no_contents)) << err;
}

TEST_F(WebAccountTest, TheHelpOpensAtTheHomePageWhereTheContentsHoldIt) {
  web.Write("_vti_pvt/structure.cnf",
            "3.0.0.507\r\n1002\r\n1001,docs/a.htm,0,First,0,100,0\r\n"
            "1000,index.htm,0,Home,1001,100,0\r\n");
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(Run({"info", Output()}), 0);
  EXPECT_NE(out.find("Default topic:  index.htm\n"), std::string::npos) << out;
  EXPECT_NE(out.find("Title:          Home\n"), std::string::npos) << out;
  web.Write("_vti_pvt/structure.cnf", "3.0.0.507\r\n1002\r\n1001,docs/a.htm,0,First,0,100,0\r\n");
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(Run({"info", Output()}), 0);
  EXPECT_NE(out.find("Default topic:  docs/a.htm\n"), std::string::npos) << out;
}

TEST_F(WebAccountTest, NamesSubwebs) {
  web.Write("shop/index.htm", "<title>Shop</title>");
  web.Write("shop/_vti_pvt/service.cnf", "");
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(
      Tells("Subwebs: shop. Its files are taken in too. To compile a subweb by itself, name "
            "its folder.\n"))
      << err;
}

TEST_F(WebAccountTest, NamesTheWebInAFolderThatIsNone) {
  TestFolder above;
  above.Write("site/index.htm", "<title>Home</title>");
  above.Write("site/_vti_pvt/service.cnf", "");
  EXPECT_EQ(Run({"compile", above.path().string(), "-o", Output()}), 0);
  EXPECT_TRUE(
      Tells(": not a FrontPage web: it has no _vti_pvt folder, but site in it has one. To "
            "compile that web, name its folder.\n"))
      << err;
}

TEST_F(WebAccountTest, ShowsTwentyWarningsOfAKindAndThenTheirSum) {
  std::string links;
  for (int i = 0; i < 25; ++i) links += "<a href=\"none" + std::to_string(i) + ".htm\">x</a>\n";
  web.Write("docs/b.htm", "<title>B</title>\n" + links);
  const auto told = [&] {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = err.find("does not exist.\n", at)) != std::string::npos; ++at) {
      ++count;
    }
    return count;
  };
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(told(), 21u) << err;
  EXPECT_TRUE(
      Tells("scrivo: warning: and 5 more of the kind: The linked file \"...\" does not "
            "exist.\n  To see them all, add --all-messages.\n"))
      << err;
  EXPECT_EQ(Compile({"--all-messages"}), 0);
  EXPECT_EQ(told(), 25u) << err;
  EXPECT_FALSE(Tells("--all-messages")) << err;
  EXPECT_EQ(Compile({"-q", "--strict"}), 1);
  EXPECT_EQ(told(), 21u) << err;
}

}  // namespace
}  // namespace scrivo
