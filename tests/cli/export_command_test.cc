// The commands that show a help file: export, text and view.

#include <fstream>
#include <map>
#include <set>

#include "chm/container_writer.h"
#include "cli/help_file.h"
#include "cli/hhc_command.h"
#include "tests/bytes/memory_store.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class ExportCommand : public ScrivoRun {
 protected:
  static std::string Book() {
    return std::string(SCRIVO_SOURCE_DIR) + "/tests/reader/book/book.hhp";
  }
  std::string Site() const { return output.PathOf("site"); }
  std::string Page(const std::string& name) const { return output.Read("site/pages/" + name); }
  // Compiles the book, with more options, into book/book.chm.
  void CompileBook(const std::string& options) {
    fs::copy(fs::path(Book()).parent_path(), output.PathOf("book"), fs::copy_options::recursive);
    std::string project = output.Read("book/book.hhp");
    output.Write("book/book.hhp", "[OPTIONS]\n" + options + project.substr(project.find('\n') + 1));
    HhcSurroundings surroundings;
    surroundings.gnu = true;
    surroundings.working_folder = output.PathOf("book");
    std::ostringstream told;
    ASSERT_EQ(RunHhc({"book.hhp"}, surroundings, told, told), 0) << told.str();
  }
  // Copies the help file without the entries whose names end in one of `endings`, and with `added`.
  void CopyWithout(const std::vector<std::string>& endings, const std::string& from,
                   const std::string& to, const std::map<std::string, std::string>& added = {}) {
    const HelpFile file = OpenHelpFile(output.PathOf(from));
    ASSERT_NE(file.reader, nullptr);
    MemoryStore store;
    ContainerWriter writer(store, {});
    for (const Entry& entry : file.reader->Entries()) {
      const std::string name(entry.name);
      const bool is_dropped =
          name.ends_with('/') || name.starts_with("::") ||
          std::any_of(endings.begin(), endings.end(),
                      [&](const std::string& ending) { return name.ends_with(ending); });
      if (!is_dropped) writer.AddPlain(name, file.reader->ReadWhole(entry).value());
    }
    for (const auto& [name, text] : added) writer.AddPlain(name, {text.begin(), text.end()});
    ASSERT_EQ(writer.Finish(), ContainerStatus::kOk);
    output.Write(to, {store.bytes.begin(), store.bytes.end()});
  }
};

TEST_F(ExportCommand, MakesASiteOfAProject) {
  EXPECT_EQ(Run({"export", Book(), Site()}), 0) << err;
  EXPECT_NE(out.find("9 pages"), std::string::npos) << out;
  for (const char* name :
       {"index.html", "keywords.html", "data/contents.js", "data/search.js", "data/words/0.js",
        "data/text/0.js", "reader/reader.js", "reader/page.js", "pages/beds/C_.htm"}) {
    EXPECT_TRUE(output.Has(std::string("site/") + name)) << name;
  }
  EXPECT_NE(output.Read("site/index.html").find("<title>Gardens &amp; &lt;paths&gt;</title>"),
            std::string::npos);
  EXPECT_NE(output.Read("site/index.html").find("<html lang=\"de\">"), std::string::npos);
  EXPECT_NE(Page("start.htm").find("Caf\xC3\xA9"), std::string::npos);
  EXPECT_NE(Page("old.htm").find("\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E"), std::string::npos);
  // Nothing is left beside the project.
  EXPECT_FALSE(fs::exists(fs::path(Book()).parent_path() / "book.chm"));
}

TEST_F(ExportCommand, MakesTheSameSiteOfTheHelpFile) {
  fs::copy(fs::path(Book()).parent_path(), output.PathOf("book"), fs::copy_options::recursive);
  const std::string project = output.PathOf("book/book.hhp");
  ASSERT_EQ(Run({"export", project, Site()}), 0) << err;
  const std::string page = Page("objects.htm");
  HhcSurroundings surroundings;
  surroundings.gnu = true;
  surroundings.working_folder = output.PathOf("book");
  std::ostringstream ignored;
  ASSERT_EQ(RunHhc({"book.hhp"}, surroundings, ignored, ignored), 0) << ignored.str();
  ASSERT_EQ(Run({"export", output.PathOf("book/book.chm"), Site(), "--force"}), 0) << err;
  // But for the word that comes from the help file's bytes.
  EXPECT_EQ(Page("objects.htm").size(), page.size());
}

TEST_F(ExportCommand, ReadsContentsAndIndexInTheirBinaryForm) {
  CompileBook("Binary TOC=Yes\nBinary Index=Yes\n");
  ASSERT_EQ(Run({"export", output.PathOf("book/book.chm"), Site()}), 0) << err;
  const std::string keywords = output.Read("site/data/keywords.js");
  ASSERT_NE(keywords.find("\"rose\""), std::string::npos) << keywords;
  CopyWithout({".hhc", ".hhk"}, "book/book.chm", "book.chm");
  ASSERT_EQ(Run({"export", output.PathOf("book.chm"), Site(), "--force"}), 0) << err;
  // Titles are the pages' own; entries without a page, or with a place in one, keep their names.
  EXPECT_EQ(output.Read("site/data/contents.js"),
            "scrivo.put(\"contents\",{\"home\":\"start.htm\",\"items\":[\n"
            "0,\"Welcome to the garden\",\"start.htm\",\n0,\"Beds\",\"\",\n"
            "1,\"Roses\",\"beds/roses.htm\",\n2,\"Pruning\",\"beds/roses.htm#pruning\",\n"
            "1,\"Tulips\",\"beds/tulips.htm\",\n1,\"Tools\",\"tools.asp.htm\",\n"
            "0,\"Objects\",\"objects.htm\",\n0,\"Elsewhere\",\"https://example.com/\",\n"
            "0,\"Trap\",\"\",\n0,\"\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\",\"old.htm\",\n"
            "0,\"Evil \\x3Cscript>document.title=\\\"hit\\\"\\x3C/script>\",\"evil.htm\",]});\n");
  EXPECT_EQ(output.Read("site/data/keywords.js"),
            "scrivo.put(\"keywords\",[\n0,\"Blumen\",\"tulip\",\n"
            "0,\"pruning\",[\"Pruning\",\"beds/roses.htm#pruning\",\"Welcome to the garden\","
            "\"start.htm\"],\n0,\"rose\",[],\n1,\"red\",[\"Roses\",\"beds/roses.htm\"],\n"
            "0,\"tulip\",[\"Tulips\",\"beds/tulips.htm\"],\n"
            "0,\"weeds\",[\"Outside the contents\",\"outside.htm\"],]);\n");
  ASSERT_EQ(Run({"text", output.PathOf("book.chm"), "--quiet"}), 0) << err;
  EXPECT_TRUE(out.starts_with("<a id=\"start.htm\"></a>\n\n# Welcome to the garden\n")) << out;
  EXPECT_LT(out.find("\n## Roses\n"), out.find("\n## Tulips\n"));
}

TEST_F(ExportCommand, TakesKeywordsOfPagesFromTheBinaryIndexToo) {
  CompileBook("Binary Index=Yes\nAuto Index=Yes\n");
  // Help files of some compilers have the objects with keywords and names in these streams only.
  CopyWithout({"outside.htm"}, "book/book.chm", "book.chm",
              {{"/outside.htm", "<title>Outside the contents</title>"}});
  ASSERT_EQ(Run({"export", output.PathOf("book.chm"), Site()}), 0) << err;
  EXPECT_NE(output.Read("site/data/keywords.js").find("\"weeds\",[\"Outside the contents\""),
            std::string::npos);
  EXPECT_NE(Page("objects.htm").find("<a href=\"outside.htm\">By association</a>"),
            std::string::npos);
}

TEST_F(ExportCommand, TakesNoMisspeltKeywordsFromTheBinaryIndex) {
  CompileBook("Binary Index=Yes\nAuto Index=Yes\n");
  // As from a project whose index file has letters that the binary one could not hold.
  CopyWithout({".hhk"}, "book/book.chm", "book.chm",
              {{"/book.hhk",
                "<meta charset=utf-8><ul><li><object type=\"text/sitemap\">"
                "<param name=Name value=\"\xD7\xA9\"><param name=Local value=\"start.htm\">"
                "</object></ul>"}});
  ASSERT_EQ(Run({"export", output.PathOf("book.chm"), Site()}), 0) << err;
  const std::string keywords = output.Read("site/data/keywords.js");
  EXPECT_NE(keywords.find("\"\xD7\xA9\""), std::string::npos) << keywords;
  EXPECT_EQ(keywords.find("tulip"), std::string::npos) << keywords;
}

TEST_F(ExportCommand, MakesASiteOfAWeb) {
  ASSERT_EQ(Run({"export", WebPath(), Site(), "--title", "My web"}), 0) << err;
  EXPECT_NE(output.Read("site/index.html").find("<title>My web</title>"), std::string::npos);
  EXPECT_NE(output.Read("site/data/contents.js").find("1,\"First\",\"docs/a.htm\""),
            std::string::npos);
  EXPECT_NE(output.Read("site/keywords.html").find("pages/docs/a.htm"), std::string::npos);
  EXPECT_TRUE(ProjectFiles().empty());
}

TEST_F(ExportCommand, ShowsNoPageThatTheCompileOfAWebAdds) {
  web.Write("_derived/banner.gif", "GIF");
  web.Write("notes.tmp.htm", "<html><head><title>Notes</title></head><body>x</body></html>");
  ASSERT_EQ(Run({"export", WebPath(), Site()}), 0) << err;
  EXPECT_TRUE(output.Has("site/pages/_derived/banner.gif"));
  EXPECT_NE(out.find(": 3 pages,"), std::string::npos) << out;
  EXPECT_TRUE(output.Has("site/pages/notes.tmp.htm"));
  ASSERT_EQ(Run({"text", WebPath(), "--quiet"}), 0) << err;
  EXPECT_EQ(out.find("banner"), std::string::npos) << out;
}

TEST_F(ExportCommand, RefusesAFolderThatIsNotEmptyUnlessForced) {
  output.Write("site/mine.txt", "mine");
  EXPECT_EQ(Run({"export", Book(), Site()}), 1);
  EXPECT_NE(err.find("the folder is not empty"), std::string::npos) << err;
  EXPECT_FALSE(output.Has("site/index.html"));
  EXPECT_EQ(Run({"export", Book(), Site(), "--force"}), 0) << err;
  EXPECT_EQ(output.Read("site/mine.txt"), "mine");
}

TEST_F(ExportCommand, SaysWhatIsWrongWithItsSource) {
  EXPECT_EQ(Run({"export", output.PathOf("none.chm"), Site()}), 1);
  EXPECT_NE(err.find("none.chm"), std::string::npos) << err;
  output.Write("bad.chm", "no help file");
  EXPECT_EQ(Run({"export", output.PathOf("bad.chm"), Site()}), 1);
  EXPECT_NE(err.find("bad.chm"), std::string::npos) << err;
  EXPECT_FALSE(output.Has("site"));
  EXPECT_EQ(Run({"export", Book()}), 2);
}

TEST_F(ExportCommand, PrintsTheTopicsAsMarkdown) {
  ASSERT_EQ(Run({"text", Book(), "--quiet"}), 0) << err;
  EXPECT_TRUE(out.starts_with("<a id=\"start.htm\"></a>\n\n# Welcome\n\n## The garden\n")) << out;
  EXPECT_NE(out.find("A [rose](#beds/roses.htm), a [tulip](#beds/tulips.htm)"), std::string::npos);
  EXPECT_NE(out.find("\n# Beds\n"), std::string::npos);
  EXPECT_NE(out.find("| Tool | Use |\n| --- | --- |\n| Spade | digs |\n"), std::string::npos);
  EXPECT_LT(out.find("\n## Roses\n"), out.find("\n## Tulips\n"));
  EXPECT_NE(out.find("Weeds grow here."), std::string::npos);  // outside the contents
}

std::string Golden(const std::string& name) {
  std::ostringstream bytes;
  bytes << std::ifstream(std::string(SCRIVO_SOURCE_DIR) + "/tests/exporter/golden/" + name,
                         std::ios::binary)
               .rdbuf();
  return bytes.str();
}

// The projects whose texts are golden files, and how many files their folders have.
struct GoldenBook {
  const char *project, *golden;
  std::size_t files;
};
constexpr GoldenBook kGoldenBooks[] = {
    {"/tests/reader/book/book.hhp", "garden", 10},
    {"/tests/exporter/links_book/links.hhp", "links", 6},
};

TEST_F(ExportCommand, PrintsTheTextsOfTheGoldenFiles) {
  for (const auto& [project, golden, files] : kGoldenBooks) {
    ASSERT_EQ(Run({"text", std::string(SCRIVO_SOURCE_DIR) + project, "--quiet"}), 0) << err;
    EXPECT_EQ(out, Golden(std::string(golden) + ".md"));
  }
}

TEST_F(ExportCommand, WritesTheTextsOfTheGoldenFolders) {
  for (const auto& [project, golden, files] : kGoldenBooks) {
    const std::string made = output.PathOf(golden);
    ASSERT_EQ(Run({"text", std::string(SCRIVO_SOURCE_DIR) + project, "-o", made, "--quiet"}), 0)
        << err;
    std::set<std::string> names;
    const fs::path folder = fs::path(SCRIVO_SOURCE_DIR) / "tests/exporter/golden" / golden;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (!entry.is_regular_file()) continue;
      const std::string name =
          std::string(golden) + "/" + entry.path().lexically_relative(folder).generic_string();
      EXPECT_EQ(output.Read(name), Golden(name)) << name;
      names.insert(name);
    }
    EXPECT_EQ(names.size(), files);
    std::istringstream list(output.Read(std::string(golden) + "/site-files.txt"));
    std::string line;
    std::getline(list, line);  // what the list is
    while (std::getline(list, line)) {
      EXPECT_TRUE(names.contains(std::string(golden) + "/" + line)) << line;
    }
  }
}

TEST_F(ExportCommand, GivesEveryTopicATextOfItsOwn) {
  output.Write("p/index.htm", "<title>Home</title>HOME <a href=a.html>a</a> <a href=a.md>b</a>");
  output.Write("p/a.htm", "<title>A</title>FIRST <a href=index.htm#x>home</a>");
  output.Write("p/a.html", "<title>A</title>SECOND");
  output.Write("p/a.md", "A file.");
  output.Write("p/p.hhp", "[FILES]\nindex.htm\na.htm\na.html\na.md\n");
  ASSERT_EQ(Run({"text", output.PathOf("p/p.hhp"), "-o", Site(), "--quiet"}), 0) << err;
  EXPECT_EQ(output.Read("site/index.md"),
            "# p.chm\n\n- [Home](index~2.md)\n- [A](a.md)\n- [A](a~2.md)\n");
  EXPECT_EQ(output.Read("site/index~2.md"), "# Home\n\nHOME [a](a~2.md) [b](a~3.md)\n");
  EXPECT_EQ(output.Read("site/a.md"), "# A\n\nFIRST [home](index~2.md)\n");
  EXPECT_EQ(output.Read("site/a~2.md"), "# A\n\nSECOND\n");
  EXPECT_EQ(output.Read("site/a~3.md"), "A file.");
}

TEST_F(ExportCommand, LeadsKeywordLinksToThePlaceAndByTheTitleOfAPage) {
  const std::string book = std::string(SCRIVO_SOURCE_DIR) + "/tests/exporter/links_book/links.hhp";
  ASSERT_EQ(Run({"export", book, Site()}), 0) << err;
  const std::string page = Page("part/objects.htm");
  EXPECT_NE(page.find("<a href=\"../places.htm#cell\">One</a>"), std::string::npos) << page;
  // A page that asks for topics itself is named by its title like any other.
  EXPECT_NE(page.find("<a href=\"../places.htm#cell\">Cell</a>, "
                      "<a href=\"../places.htm#code\">Code</a>, "
                      "<a href=\"objects.htm\">All objects</a>"),
            std::string::npos)
      << page;
}

TEST_F(ExportCommand, WritesTheTopicsIntoAFolder) {
  ASSERT_EQ(Run({"text", Book(), "-o", Site(), "--quiet"}), 0) << err;
  EXPECT_TRUE(output.Read("site/beds/tulips.md").starts_with("# Tulips\n\nTulips flower"));
  EXPECT_NE(output.Read("site/index.md").find("  - [Roses](beds/roses.md)\n"), std::string::npos);
  EXPECT_NE(output.Read("site/beds/roses.md").find("[On to tulips](tulips.md)"), std::string::npos);
  EXPECT_EQ(Run({"text", Book(), "-o", Site()}), 1);
  EXPECT_EQ(Run({"text", Book(), "-o", Site(), "--force"}), 0) << err;
}

}  // namespace
}  // namespace scrivo
