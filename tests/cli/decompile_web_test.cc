// Help files that become webs, and webs made so that become help files again.

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include "cli/help_file.h"
#include "project/source_files.h"
#include "tests/cli/book_text.h"
#include "tests/cli/scrivo_run.h"
#include "tests/doubles/sample_web.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class DecompileWeb : public ScrivoRun {
 protected:
  // Compiles a project with these contents and index, besides the pages that are in the web.
  void CompileProject(const std::string& contents, const std::string& index) {
    web.Write(
        "p.hhp",
        "[OPTIONS]\nCompiled file=p.chm\nContents file=p.hhc\nIndex file=p.hhk\nTitle=A "
        "project\nDefault topic=docs/a.htm\nLanguage=0x419\n[FILES]\nindex.htm\ndocs/a.htm\n");
    web.Write("p.hhc", contents);
    web.Write("p.hhk", index);
    std::ostringstream told;
    ASSERT_EQ(RunHhc({web.PathOf("p.hhp")}, {"/", false, ""}, told, told), 1) << told.str();
    fs::copy_file(web.path() / "p.chm", Output(), fs::copy_options::overwrite_existing);
  }
  static std::string Item(const std::string& name, const std::string& local) {
    return "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + name + "\">" +
           (local.empty() ? "" : "<param name=\"Local\" value=\"" + local + "\">") + "</OBJECT>\n";
  }

  BookText Read(const std::string& name) {
    const HelpFile file = OpenHelpFile(PortablePath(output.path()) + "/" + name);
    EXPECT_NE(file.reader, nullptr) << name;
    return file.reader == nullptr ? BookText() : ReadBook(*file.reader);
  }
  // Makes a web of a.chm and a help file, b.chm, of that web.
  void GoRound(const std::vector<std::string>& options) {
    fs::remove_all(output.path() / "made");
    std::vector<std::string> arguments = {"decompile", "--web", Output(), output.PathOf("made")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ASSERT_EQ(Run(arguments), 0) << err;
    told = out + err;
    ASSERT_EQ(Run({"compile", output.PathOf("made"), "-o", output.PathOf("b.chm"), "--contents",
                   "navigation", "--keep-charsets"}),
              0)
        << err;
  }
  // The files below a folder of the output, by name.
  std::map<std::string, std::string> FilesIn(const std::string& folder) const {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(output.path() / folder)) {
      if (!entry.is_regular_file()) continue;
      const std::string name =
          entry.path().lexically_relative(output.path() / folder).generic_string();
      files[name] = output.Read(folder + "/" + name);
    }
    return files;
  }

  std::string told;
};

TEST_F(DecompileWeb, GivesTheSampleBackWithItsContentsPagesAndIndex) {
  const fs::path sample = output.path() / "sample";
  CopySampleWeb(fs::path(SCRIVO_SOURCE_DIR) / "samples" / "Scrivo Builder sample web", sample);
  ASSERT_EQ(Run({"compile", sample.string(), "-o", Output()}), 0) << err;
  const BookText before = Read("a.chm");
  ASSERT_EQ(before.contents.size(), 12U);
  ASSERT_EQ(before.index.size(), 40U);
  for (const auto& options : {std::vector<std::string>{}, {"--keywords"}}) {
    GoRound(options);
    const BookText after = Read("b.chm");
    EXPECT_EQ(after.contents, before.contents);
    EXPECT_EQ(after.index, before.index);
    EXPECT_EQ(after.pages, before.pages);
    for (const std::string& page : before.pages) {
      EXPECT_EQ(output.Read("made/" + page), output.Read("sample/" + page)) << page;
    }
  }
}

// SCRIVO_BOOKS names help files, and webs to make them of, with ":" between.
TEST_F(DecompileWeb, GivesBackHelpFilesOfOnesOwn) {
  const char* const named = std::getenv("SCRIVO_BOOKS");
  if (named == nullptr) GTEST_SKIP() << "SCRIVO_BOOKS names no help files";
  std::istringstream books(named);
  for (std::string book; std::getline(books, book, ':');) {
    SCOPED_TRACE(book);
    fs::remove(Output());
    if (fs::is_directory(book)) {
      ASSERT_EQ(Run({"compile", book, "-o", Output()}), 0) << err;
    } else {
      fs::copy_file(book, Output());
    }
    const BookText before = Read("a.chm");
    ASSERT_FALSE(before.contents.empty());
    ASSERT_FALSE(before.pages.empty());
    GoRound({});
    const BookText after = Read("b.chm");
    EXPECT_EQ(after.contents, before.contents);
    EXPECT_EQ(after.pages, before.pages);
    ASSERT_EQ(Run({"decompile", Output(), output.PathOf("plain"), "-q"}), 0) << err;
    ASSERT_EQ(Run({"decompile", output.PathOf("b.chm"), output.PathOf("again"), "-q"}), 0) << err;
    for (const std::string& page : before.pages) {
      EXPECT_EQ(output.Read("again/" + page), output.Read("plain/" + page)) << page;
    }
    fs::remove_all(output.path() / "plain");
    fs::remove_all(output.path() / "again");
  }
}

TEST_F(DecompileWeb, MakesTheWebOfAProjectWithWhatAWebCanHold) {
  web.Write("docs/a.htm", "<html><head></head><body>\xE4\xEE\xEC</body></html>");
  CompileProject("<UL>" + Item("Heading, \\ one", "") + "<UL>" + Item("Anchor", "docs/a.htm#x") +
                     Item("\xC4\xEE\xEC", "docs\\A.HTM") + "</UL>" + Item("Out", "http://a.org/") +
                     Item("Home", "index.htm") + "</UL>",
                 "<UL>" + Item("\xC4\xEE\xEC", "docs/a.htm") + Item("plain", "index.htm#top") +
                     "<UL>" + Item("sub", "index.htm") + "</UL>" + Item("a, b", "index.htm") +
                     Item("gone", "none.htm") + "</UL>");
  const BookText before = Read("a.chm");
  GoRound({"--keywords"});
  EXPECT_EQ(output.Read("made/_vti_pvt/structure.cnf"),
            "3.0.0.507\r\n1005\r\n1000,,0,Heading\\, \\\\ one,0,0,0\r\n"
            "1001,http://a.org/,1,Out,0,0,0\r\n1002,index.htm,0,Home,0,0,1\r\n"
            "vti_globalpage:BW|true\r\n1003,docs/a.htm,0,Anchor,1000,0,0\r\n"
            "1004,docs/a.htm,0,Дом,1000,0,0");
  EXPECT_EQ(output.Read("made/_vti_pvt/service.cnf"),
            "vti_encoding:SR|utf8-nl\r\nvti_defaultcharset:SR|windows-1251\r\n"
            "vti_defaultlanguage:SR|ru\r\nvti_title:SR|A project\r\nvti_welcomenames:VX|"
            "index.htm index.html default.htm default.html welcome.htm welcome.html home.htm "
            "home.html\r\n");
  EXPECT_EQ(output.Read("made/docs/_vti_cnf/a.htm"),
            "vti_encoding:SR|utf8-nl\r\nvti_title:SR|Anchor\r\n");
  EXPECT_FALSE(output.Has("made/_vti_cnf/index.htm")) << "the page has a title";
  EXPECT_EQ(output.Read("made/docs/a.htm"),
            "<html><head><meta name=\"keywords\" content=\"&#1044;&#1086;&#1084;\"></head><body>"
            "\xE4\xEE\xEC</body></html>");
  EXPECT_NE(told.find("but compiled again they lose 1 place within a page, 1 address outside the "
                      "web\n"),
            std::string::npos)
      << told;
  EXPECT_NE(told.find("left out: 1 name with a comma, a semicolon or a character reference, 1 "
                      "sub-entry, 1 entry without a page of the web, 1 place within a page\n"),
            std::string::npos)
      << told;
  EXPECT_NE(told.find("Made a web in " + output.PathOf("made") +
                      ": 2 pages, 5 contents entries, 2 keywords.\n"),
            std::string::npos)
      << told;
  EXPECT_NE(told.find(" --contents navigation --title \"A project\" --default-page docs/a.htm\n"),
            std::string::npos)
      << told;
  const BookText after = Read("b.chm");
  EXPECT_EQ(after.contents,
            (std::vector<std::string>{"Heading, \\ one -> ", "  Anchor -> docs/a.htm",
                                      "  Дом -> docs/a.htm", "Out -> ", "Home -> index.htm"}));
  EXPECT_EQ(after.index, (std::set<std::string>{"plain -> index.htm", "Дом -> docs/a.htm"}));
  EXPECT_EQ(after.pages, before.pages);
}

TEST_F(DecompileWeb, LeavesPagesAsTheyAreWithoutKeywords) {
  ASSERT_EQ(Compile(), 0);
  ASSERT_EQ(Run({"decompile", Output(), output.PathOf("plain"), "-q"}), 0) << err;
  GoRound({});
  for (const auto& [name, bytes] : FilesIn("plain")) EXPECT_EQ(output.Read("made/" + name), bytes);
  EXPECT_EQ(FilesIn("made").size(), FilesIn("plain").size() + 2) << "the host's two files";
}

TEST_F(DecompileWeb, FindsContentsByNamesThatAreNotAscii) {
  std::ofstream(web.path() / "docs" / fs::path(u8"Дом.htm")) << "<title>T</title>";
  CompileProject("<UL>" + Item("a", "docs/\xC4\xEE\xEC.htm") + "</UL>", "");
  GoRound({});
  EXPECT_EQ(Read("b.chm").contents, std::vector<std::string>{"a -> docs/Дом.htm"});
}

TEST_F(DecompileWeb, GivesAWebBackWhoseNamesNoSystemsCodePageHasTogether) {
  const auto path_of = [](const fs::path& folder, const char8_t* name) {
    return folder / fs::path(name);
  };
  const auto put = [&](const char8_t* name, const std::string& bytes) {
    const fs::path path = path_of(web.path(), name);
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
  };
  const auto read = [](const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  constexpr const char8_t* kNames[] = {u8"文档/首页.htm", u8"文档/Дом é.htm"};
  const std::string head = "<html><head><meta charset=\"utf-8\"><title>";
  put(kNames[0], head +
                     "首页</title><meta name=\"keywords\" content=\"词\"></head><body>"
                     "<a href=\"Дом é.htm\">Дом</a><img src=\"图.gif\"></body></html>");
  put(kNames[1], head + "Дом</title></head><body></body></html>");
  put(u8"文档/图.gif", "GIF");
  web.Write("_vti_pvt/service.cnf", "vti_defaultcharset:SR|gb2312\r\n");
  web.Write("_vti_pvt/structure.cnf",
            "3.0.0.507\r\n1003\r\n1000,index.htm,0,Home page,0,0,0\r\n"
            "1001,文档/首页.htm,0,首页,1000,0,0\r\n1002,文档/Дом é.htm,0,Дом,1001,0,0");
  ASSERT_EQ(Compile({"--contents", "navigation"}), 0) << err;
  EXPECT_EQ(err.find("does not exist"), std::string::npos) << err;
  const BookText before = Read("a.chm");
  EXPECT_EQ(before.contents,
            (std::vector<std::string>{"Home page -> index.htm", "  首页 -> 文档/首页.htm",
                                      "    Дом -> 文档/Дом é.htm"}));
  for (const auto& options : {std::vector<std::string>{}, {"--keywords"}}) {
    GoRound(options);
    EXPECT_EQ(err.find("does not exist"), std::string::npos) << err;
    const BookText after = Read("b.chm");
    EXPECT_EQ(after.contents, before.contents);
    EXPECT_EQ(after.index, before.index);
    EXPECT_EQ(after.pages, before.pages);
    for (const char8_t* name : kNames) {
      EXPECT_EQ(read(path_of(output.path() / "made", name)), read(path_of(web.path(), name)));
    }
    EXPECT_EQ(read(path_of(output.path() / "made", u8"文档/图.gif")), "GIF");
  }
}

TEST_F(DecompileWeb, RefusesAFolderThatIsNotEmpty) {
  ASSERT_EQ(Compile(), 0);
  output.Write("made/mine.htm", "mine");
  EXPECT_EQ(Run({"decompile", "--web", Output(), output.PathOf("made")}), 1);
  EXPECT_NE(err.find(": the folder is not empty; name a new folder for the web"), std::string::npos)
      << err;
  EXPECT_EQ(FilesIn("made"), (std::map<std::string, std::string>{{"mine.htm", "mine"}}));
}

TEST_F(DecompileWeb, MakesNoFolderOfWhatIsNoHelpFile) {
  output.Write("a.chm", "nothing");
  EXPECT_EQ(Run({"decompile", "--web", Output(), output.PathOf("made")}), 1);
  EXPECT_FALSE(fs::exists(output.path() / "made"));
}

TEST_F(DecompileWeb, NeedsAWebForKeywords) {
  EXPECT_EQ(Run({"decompile", "--keywords", Output(), output.PathOf("made")}), 2);
  EXPECT_EQ(err,
            "scrivo: error: --keywords: only a web has them; add --web\n"
            "See scrivo decompile --help.\n");
}

}  // namespace
}  // namespace scrivo
