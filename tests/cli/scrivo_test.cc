// The command line as a user meets it: help, versions, mistakes, the tree and the project.

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class Scrivo : public ScrivoRun {};

TEST_F(Scrivo, PrintsItsHelpOnRequest) {
  EXPECT_EQ(Run({"--help"}), 0);
  EXPECT_TRUE(out.starts_with("usage: scrivo COMMAND ...\n"));
  for (const char* command : {"compile", "project", "tree", "decompile", "list", "info"}) {
    EXPECT_NE(out.find("\n  " + std::string(command) + " "), std::string::npos) << command;
  }
  EXPECT_EQ(err, "");
}

TEST_F(Scrivo, PrintsTheHelpOfEachCommand) {
  for (const char* command : {"compile", "project", "tree", "decompile", "list", "info"}) {
    EXPECT_EQ(Run({command, "--help"}), 0);
    EXPECT_TRUE(out.starts_with("usage: scrivo " + std::string(command) + " ")) << out;
    EXPECT_EQ(err, "");
    for (std::size_t at = 0; at < out.size();) {
      const std::size_t end = out.find('\n', at);
      EXPECT_LE(end - at, 80u) << out.substr(at, end - at);
      at = end + 1;
    }
  }
}

TEST_F(Scrivo, PrintsTheHelpOfACommandWhateverElseIsGiven) {
  EXPECT_EQ(Run({"compile", "--nonsense", "-h"}), 0);
}

TEST_F(Scrivo, TakesAnOptionsValueForNoRequestForHelp) {
  EXPECT_EQ(Run({"project", WebPath(), "-q", "--title", "--help"}), 0);
  EXPECT_TRUE(out.starts_with(WebPath())) << out;
}

TEST_F(Scrivo, PrintsTheHelpOfACommandByItsName) {
  EXPECT_EQ(Run({"compile", "--help"}), 0);
  const std::string help = out;
  EXPECT_EQ(Run({"help", "compile"}), 0);
  EXPECT_EQ(out, help);
  EXPECT_EQ(Run({"help", "complie"}), 2);
  EXPECT_EQ(err,
            "scrivo: error: complie: unknown command; did you mean compile?\nSee scrivo --help.\n");
  EXPECT_EQ(Run({"help", "compile", "tree"}), 2);
  EXPECT_EQ(Run({"help"}), 0);
  EXPECT_TRUE(out.starts_with("usage: scrivo COMMAND ...\n")) << out;
}

TEST_F(Scrivo, SaysWhatTheExitStatusOfACompileMeans) {
  EXPECT_EQ(Run({"compile", "--help"}), 0);
  EXPECT_TRUE(out.ends_with(
      "\n\nThe exit status is 0 if the help file was made, 1 if it was not or if --strict\nis "
      "given and the compiler reported problems, and 2 if the command line is wrong.\n"))
      << out;
}

TEST_F(Scrivo, SaysWhichOptionsDoNothingForAProject) {
  EXPECT_EQ(Run({"project", "--help"}), 0);
  EXPECT_TRUE(out.ends_with(
      "\n\nNothing is compiled: -o only says which help file the project is to make, and\n"
      "--compiler, --view, --strict, --keep-charsets and --keep-project change nothing\nhere. "
      "--without-bars is refused: a project names the pages as they are on disk.\n"))
      << out;
}

TEST_F(Scrivo, PrintsItsVersion) {
  EXPECT_EQ(Run({"--version"}), 0);
  EXPECT_EQ(out, std::string("scrivo ") + SCRIVO_VERSION + "\n");
}

TEST_F(Scrivo, TakesNoCommandForAMistake) {
  EXPECT_EQ(Run({}), 2);
  EXPECT_EQ(out, "");
  EXPECT_TRUE(err.starts_with("usage: scrivo COMMAND ...\n"));
}

TEST_F(Scrivo, SuggestsTheCommandThatWasMeant) {
  EXPECT_EQ(Run({"complie", "x"}), 2);
  EXPECT_EQ(err,
            "scrivo: error: complie: unknown command; did you mean compile?\nSee scrivo --help.\n");
  EXPECT_EQ(Run({"frobnicate"}), 2);
  EXPECT_EQ(err, "scrivo: error: frobnicate: unknown command\nSee scrivo --help.\n");
  EXPECT_EQ(Run({"--verison"}), 2);
  EXPECT_EQ(err, "scrivo: error: --verison: unknown option\nSee scrivo --help.\n");
}

TEST_F(Scrivo, ExitsWithTwoOnWrongUsage) {
  const std::vector<std::vector<std::string>> wrong = {
      {"compile"},
      {"compile", "a", "b"},
      {"compile", "a", "--contents", "pages"},
      {"compile", "a", "--index", "keywords,tittles"},
      {"compile", "a", "--index", ""},
      {"compile", "a", "--code-page", "12345"},
      {"compile", "a", "--title", ""},
      {"compile", "a", "-o", ""},
      {"compile", "a", "-o"},
      {"tree", "a", "--strict"},
      {"list"},
      {"info", "a", "b"},
      {"decompile", "a.chm"},
  };
  for (const std::vector<std::string>& arguments : wrong) {
    EXPECT_EQ(Run(arguments), 2) << err;
    EXPECT_TRUE(err.starts_with("scrivo: error: ")) << err;
    EXPECT_TRUE(err.ends_with("\nSee scrivo " + arguments[0] + " --help.\n")) << err;
    EXPECT_EQ(out, "");
  }
}

TEST_F(Scrivo, SuggestsTheValueThatWasMeant) {
  Run({"compile", "a", "--contents", "navigaton"});
  EXPECT_EQ(err,
            "scrivo: error: --contents: unknown value \"navigaton\"; did you mean navigation?\n"
            "See scrivo compile --help.\n");
  Run({"compile", "a", "--contents", "xyz"});
  EXPECT_EQ(err,
            "scrivo: error: --contents: unknown value \"xyz\"; choose auto, navigation or folders\n"
            "See scrivo compile --help.\n");
  Run({"compile", "a", "--index", "keywords,tittles"});
  EXPECT_EQ(err,
            "scrivo: error: --index: unknown value \"tittles\"; did you mean titles?\n"
            "See scrivo compile --help.\n");
}

TEST_F(Scrivo, PrintsTheTreeWithLabelsAndPages) {
  web.Write("docs/more.htm", "<title>More</title>");
  EXPECT_EQ(Run({"tree", WebPath()}), 0);
  EXPECT_EQ(out,
            "Home [index.htm]\n"
            "  First [docs/a.htm]\n"
            "\n"
            "Pages outside the contents:\n"
            "  More [docs/more.htm]\n");
  EXPECT_EQ(err, ContentsLine("2 of 3"));
}

TEST_F(Scrivo, PrintsTheFoldersAsATreeWhenAsked) {
  EXPECT_EQ(Run({"tree", WebPath(), "--contents", "folders"}), 0);
  EXPECT_EQ(out, "Home page [index.htm]\ndocs\n  A [docs/a.htm]\n");
}

TEST_F(Scrivo, ShowsANodeWhosePageIsMissing) {
  web.Write("_vti_pvt/structure.cnf",
            "3.0.0.507\r\n1002\r\n1000,index.htm,0,Home,0,100,0\r\n"
            "1001,gone.htm,0,Gone,1000,100,0");
  EXPECT_EQ(Run({"tree", WebPath(), "-q"}), 0);
  EXPECT_NE(out.find("  Gone [gone.htm, not in the web]\n"), std::string::npos) << out;
  EXPECT_EQ(err, "");
}

TEST_F(Scrivo, PrintsLabelsAsTheTerminalReadsThem) {
  web.Write("_vti_pvt/structure.cnf",
            "3.0.0.507\r\n1002\r\n1000,index.htm,0,\u041f\u0443\u0442\u044c,0,100,0\r\n"
            "1001,docs/a.htm,0,\u00dc,1000,100,0");
  EXPECT_EQ(Run({"tree", WebPath(), "--code-page", "utf-8"}), 0);
  if (SystemPathStyle() == PathStyle::kPosix) {
    EXPECT_EQ(out, "\u041f\u0443\u0442\u044c [index.htm]\n  \u00dc [docs/a.htm]\n");
  }
  EXPECT_EQ(Run({"tree", WebPath(), "--code-page", "1252"}), 0);
  EXPECT_NE(err.find("scrivo: warning: "), std::string::npos) << "what was lost is told";
}

TEST_F(Scrivo, LimitsItsWarningsAboutOneWeb) {
  std::string structure = "3.0.0.507\r\n1002\r\n1000,index.htm,0,Home,0,100,0\r\n";
  for (int i = 0; i < 30; ++i) structure += "no node\r\n";
  web.Write("_vti_pvt/structure.cnf", structure);
  EXPECT_EQ(Run({"tree", WebPath()}), 0);
  EXPECT_NE(err.find(":23: 1 field instead of 7\n"), std::string::npos) << err;
  EXPECT_EQ(err.find(":24: "), std::string::npos) << err;
  EXPECT_NE(err.find("scrivo: warning: and 10 more of the kind: ... field instead of ...\n"
                     "  To see them all, add --all-messages.\n"),
            std::string::npos)
      << err;
  EXPECT_EQ(Run({"tree", WebPath(), "--all-messages"}), 0);
  EXPECT_NE(err.find(":33: 1 field instead of 7\n"), std::string::npos) << err;
}

TEST_F(Scrivo, WritesTheProjectAndPrintsItsPaths) {
  EXPECT_EQ(Run({"project", WebPath(), "-q"}), 0);
  const std::vector<std::string> names = ProjectFiles();
  ASSERT_EQ(names.size(), 4u);
  EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 4);
  for (const std::string& name : names) {
    EXPECT_NE(out.find(web.PathOf(name) + "\n"), std::string::npos) << name;
  }
  EXPECT_TRUE(out.substr(0, out.find('\n')).ends_with(".hhp")) << "the project first";
  EXPECT_EQ(err, "");
}

TEST_F(Scrivo, ListsAHelpFile) {
  EXPECT_EQ(Run({"list", output.PathOf("none.chm")}), 1);
  EXPECT_EQ(out, "");
  EXPECT_NE(Plain(err).find("OUT/none.chm"), std::string::npos);
}

TEST_F(Scrivo, TellsAboutAHelpFile) {
  EXPECT_EQ(Run({"info", output.PathOf("none.chm")}), 1);
  EXPECT_EQ(out, "");
  EXPECT_NE(Plain(err).find("OUT/none.chm"), std::string::npos);
}

TEST_F(Scrivo, UnpacksWhatItHasCompiled) {
  const std::string file = output.PathOf("a.chm");
  LabelPagesByTheirTitles();
  ASSERT_EQ(Run({"compile", WebPath(), "-o", file, "--compiler", TestProgram("hhc")}), 0) << err;
  const std::string by_hhc = output.Read("a.chm");
  ASSERT_EQ(Compile(), 0) << err;
  EXPECT_TRUE(output.Read("a.chm") == by_hhc);
  EXPECT_EQ(err.find("scrivo: error"), std::string::npos) << err;
  EXPECT_EQ(Run({"decompile", file, output.PathOf("un packed")}), 0) << err;
  EXPECT_EQ(Plain(out), "Unpacked into OUT/un packed\n");
  EXPECT_EQ(err, "Unpacking\n");
  EXPECT_EQ(output.Read("un packed/docs/a.htm"), web.Read("docs/a.htm"));
  EXPECT_EQ(output.Read("un packed/index.htm"), web.Read("index.htm"));
  EXPECT_EQ(Run({"info", file}), 0);
  EXPECT_NE(out.find("Home"), std::string::npos) << out;
  EXPECT_EQ(Run({"list", file}), 0);
  EXPECT_NE(out.find("/docs/a.htm"), std::string::npos) << out;
}

TEST_F(Scrivo, SaysWhyAFileCannotBeUnpacked) {
  EXPECT_EQ(Run({"decompile", output.PathOf("none.chm"), output.PathOf("un")}), 1);
  EXPECT_EQ(Plain(err), "scrivo: error: OUT/none.chm: no such help file\n");
  output.Write("no.chm", "no help file");
  EXPECT_EQ(Run({"decompile", output.PathOf("no.chm"), output.PathOf("un"), "-q"}), 1);
  EXPECT_EQ(err.find("scrivo: error: "), 0u) << err;
  EXPECT_NE(err.find("no.chm: not a compiled help file: no ITSF signature"), std::string::npos)
      << err;
  EXPECT_EQ(out, "");
}

}  // namespace
}  // namespace scrivo
