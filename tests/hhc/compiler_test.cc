#include "hhc/compiler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "project/project_tree.h"
#include "tests/hhc/internal_streams.h"
#include "tests/hhc/project_folder.h"

namespace scrivo {
namespace {

std::string Page(const std::string& title, const std::string& body) {
  return "<html><head><title>" + title + "</title></head><body>" + body + "</body></html>\r\n";
}

std::string Item(const std::string& name, const std::string& local, const std::string& more = "") {
  return "<LI><OBJECT type=\"text/sitemap\">\r\n<param name=\"Name\" value=\"" + name + "\">" +
         (local.empty() ? "" : "<param name=\"Local\" value=\"" + local + "\">") + more +
         "\r\n</OBJECT>\r\n";
}

constexpr char kOptions[] =
    "[OPTIONS]\r\nCompiled file=help.chm\r\nContents file=a.hhc\r\nIndex file=a.hhk\r\n"
    "Default topic=index.htm\r\nDefault window=main\r\nFull-text search=Yes\r\nBinary TOC=Yes\r\n"
    "Title=The help\r\nDisplay compile progress=Yes\r\n[WINDOWS]\r\n"
    "main=\"The help\",\"a.hhc\",\"a.hhk\",,,,,,,0x2520,,0x3006,,,,,,,,0\r\n";

class CompilerTest : public testing::Test {
 protected:
  void WriteSample() {
    folder_.Write("help.hhp", std::string(kOptions) + "[FILES]\r\nindex.htm\r\n");
    folder_.Write("index.htm", Page("Start page",
                                    "hello <a href=\"sub/Two.htm#x\">two</a> "
                                    "<a href=\"http://x/\">w</a><img src=i.gif>"));
    folder_.Write("sub/Two.htm", Page("Second", "hello again <link href=s.css>"));
    folder_.Write("sub/s.css", "p { background: url(../bg.png) }");
    folder_.Write("i.gif", "GIF");
    folder_.Write("bg.png", "PNG");
    folder_.Write("a.hhc", "<UL>" + Item("Start & more", "index.htm") + "<UL>" + Item("Part", "") +
                               "<UL>" + Item("Anchor", "sub\\Two.htm#x") + "</UL></UL></UL>");
    folder_.Write("a.hhk", "<UL>" + Item("beta", "index.htm") + Item("Alpha", "sub/two.htm") +
                               Item("beta", "sub/Two.htm#x") +
                               Item("gone", "", "<param name=\"See Also\" value=\"beta\">") +
                               "</UL>");
  }

  CompileResult Compile(int threads = 2) {
    return folder_.Compile(&recorder_, "help.hhp", threads);
  }

  std::unique_ptr<InternalStreams> Opened() {
    return InternalStreams::Open(folder_.Path("help.chm"));
  }

  bool Told(const std::string& line) const {
    return std::find(recorder_.messages.begin(), recorder_.messages.end(), line) !=
           recorder_.messages.end();
  }

  ProjectFolder folder_;
  CompileRecorder recorder_;
};

TEST_F(CompilerTest, StoresEveryFileThatThePagesNeedByteForByte) {
  WriteSample();
  const CompileResult result = Compile();
  ASSERT_TRUE(result.made);
  EXPECT_TRUE(recorder_.messages.empty()) << recorder_.messages[0];
  const auto help = Opened();
  ASSERT_NE(help, nullptr);
  for (const char* name :
       {"index.htm", "sub/Two.htm", "sub/s.css", "i.gif", "bg.png", "a.hhc", "a.hhk"}) {
    EXPECT_EQ(help->Bytes(std::string("/") + name), folder_.Read(name)) << name;
  }
}

TEST_F(CompilerTest, CompilesPagesThenImagesThenStyleSheets) {
  WriteSample();
  Compile();
  EXPECT_EQ(recorder_.files,
            (std::vector<std::string>{"index.htm", "a.hhc", "a.hhk", SystemSlashes("sub/Two.htm"),
                                      "i.gif", SystemSlashes("sub/s.css"), "bg.png"}));
}

TEST_F(CompilerTest, CountsTopicsLinksAndGraphics) {
  WriteSample();
  const CompileResult result = Compile();
  EXPECT_EQ(result.topics, 4u);
  EXPECT_EQ(result.local_links, 1u + 2 * 2 + 2 * 3);
  EXPECT_EQ(result.internet_links, 1u);
  EXPECT_EQ(result.graphics, 1u);
  EXPECT_EQ(result.output_size, folder_.Read("help.chm").size());
}

TEST_F(CompilerTest, FollowsTheSameAddressAnewFromAnotherFolderElementOrCodePage) {
  folder_.Write("help.hhp", "[FILES]\na/1.htm\na/2.htm\na/3.htm\nb/1.htm\n");
  const std::string western = "<meta charset=windows-1252>";
  const std::string cyrillic = "<meta charset=windows-1251>";
  folder_.Write("a/1.htm", western + "<a href=same.gif>x</a><img src=\"\xE9.gif\">");
  folder_.Write("a/2.htm", western + "<img src=same.gif><img src=\"\xE9.gif\">");
  folder_.Write("a/3.htm", cyrillic + "<img src=\"\xE9.gif\"><img src=no.gif>");
  folder_.Write("b/1.htm", cyrillic + "<img src=same.gif><img src=no.gif><img src=no.gif>");
  for (const char* name : {"a/same.gif", "b/same.gif", "a/\u00E9.gif", "a/\u0439.gif"}) {
    folder_.Write(name, "GIF");
  }
  const CompileResult result = Compile();
  EXPECT_EQ(result.graphics, 4u);
  EXPECT_EQ(std::count_if(recorder_.messages.begin(), recorder_.messages.end(),
                          [](const std::string& line) { return line.find("no.gif") != line.npos; }),
            2);
}

TEST_F(CompilerTest, NumbersTopicsAndNamesThem) {
  WriteSample();
  Compile();
  const auto help = Opened();
  const auto topics = help->Topics();
  ASSERT_TRUE(topics) << help->problem();
  ASSERT_EQ(topics->size(), 5u);
  EXPECT_EQ((*topics)[0].address, "index.htm");
  EXPECT_EQ((*topics)[0].title, "Start page");
  EXPECT_EQ((*topics)[0].flags, 6);
  EXPECT_EQ((*topics)[1].address, "a.hhc");
  EXPECT_FALSE((*topics)[1].title);
  EXPECT_EQ((*topics)[3].address, "sub/Two.htm");
  EXPECT_EQ((*topics)[3].flags, 2);
  EXPECT_EQ((*topics)[4].address, "sub/Two.htm#x");
  EXPECT_EQ((*topics)[4].title, "Anchor");
  EXPECT_EQ((*topics)[4].flags, 4);
}

TEST_F(CompilerTest, WritesTheContentsInBinary) {
  WriteSample();
  Compile();
  const auto help = Opened();
  const auto contents = help->Contents();
  ASSERT_TRUE(contents) << help->problem();
  ASSERT_EQ(contents->size(), 3u);
  EXPECT_EQ((*contents)[0].address, "index.htm");
  EXPECT_EQ((*contents)[1].title, "Part");
  EXPECT_EQ((*contents)[1].level, 1);
  EXPECT_EQ((*contents)[2].address, "sub/Two.htm#x");
  EXPECT_EQ((*contents)[2].level, 2);
}

TEST_F(CompilerTest, WritesTheIndexSortedAndMerged) {
  WriteSample();
  Compile();
  const auto help = Opened();
  const auto keywords = help->Keywords("/$WWKeywordLinks/");
  ASSERT_TRUE(keywords) << help->problem();
  ASSERT_EQ(keywords->size(), 3u);
  EXPECT_EQ((*keywords)[0].text, "Alpha");
  EXPECT_EQ((*keywords)[0].topics, std::vector<std::uint32_t>{3});
  EXPECT_EQ((*keywords)[1].text, "beta");
  EXPECT_EQ((*keywords)[1].topics, (std::vector<std::uint32_t>{0, 4}));
  EXPECT_TRUE((*keywords)[2].see_also);
  EXPECT_EQ((*keywords)[2].target, "beta");
}

TEST_F(CompilerTest, FindsEveryWordThroughTheSearchIndex) {
  WriteSample();
  Compile();
  const auto help = Opened();
  const auto words = help->Search();
  ASSERT_TRUE(words) << help->problem();
  const auto& hello = words->at({"hello", false});
  EXPECT_EQ(hello.at(0), std::vector<std::uint32_t>{2});
  EXPECT_EQ(hello.at(3), std::vector<std::uint32_t>{1});
  EXPECT_EQ(words->at({"start", true}).at(0), std::vector<std::uint32_t>{0});
  EXPECT_TRUE(words->contains({"again", false}));
  EXPECT_FALSE(words->contains({"href", false}));
}

TEST_F(CompilerTest, FindsEveryWordOfALargeText) {
  folder_.Write("help.hhp", "[OPTIONS]\nFull-text search=Yes\n[FILES]\n*.htm\n");
  for (int page = 0; page < 40; ++page) {
    std::string body;
    for (int i = 0; i < 900; ++i) body += "word" + std::to_string(page * 500 + i) + " ";
    folder_.Write("p" + std::to_string(100 + page) + ".htm", Page("page", body));
  }
  ASSERT_TRUE(Compile().made);
  const auto help = Opened();
  const auto words = help->Search();
  ASSERT_TRUE(words) << help->problem();
  EXPECT_EQ(words->size(), 39 * 500u + 900 + 1);
  for (std::uint32_t i = 0; i < 39 * 500 + 900; ++i) {
    const auto found = words->find({"word" + std::to_string(i), false});
    ASSERT_NE(found, words->end()) << i;
    const std::uint32_t last = std::min(i / 500, 39u);
    EXPECT_EQ(found->second.at(last), std::vector<std::uint32_t>{1 + i - last * 500});
  }
}

TEST_F(CompilerTest, HonoursTheStopList) {
  folder_.Write(
      "help.hhp",
      "[OPTIONS]\nFull-text search=Yes\nFull text search stop list file=s.stp\n[FILES]\na.htm\n");
  folder_.Write("s.stp", "The\r\nof\r\n");
  folder_.Write("a.htm", Page("t", "the end of it"));
  Compile();
  const auto words = Opened()->Search();
  ASSERT_TRUE(words);
  EXPECT_FALSE(words->contains({"the", false}));
  EXPECT_EQ(words->at({"it", false}).at(0), std::vector<std::uint32_t>{4});
}

TEST_F(CompilerTest, LeavesTheSearchStreamEmptyWhenSearchIsOff) {
  folder_.Write("help.hhp", "[FILES]\na.htm\n");
  folder_.Write("a.htm", Page("t", "x"));
  Compile();
  EXPECT_EQ(Opened()->Bytes("/$FIftiMain"), "");
}

TEST_F(CompilerTest, WritesContextNumbersInProjectOrder) {
  folder_.Write("help.hhp",
                "[FILES]\na.htm\n[ALIAS]\nB=sub\\b.htm\nA=a.htm ; note\nX=none.htm\n"
                "[MAP]\n#include ids.h\n#define X 9\n");
  folder_.Write("ids.h", "#define A 0x64\r\n#define B 5\r\n");
  folder_.Write("a.htm", Page("t", "x"));
  folder_.Write("sub/b.htm", Page("t", "x"));
  Compile();
  const auto help = Opened();
  const auto ids = help->ContextIds();
  ASSERT_TRUE(ids) << help->problem();
  EXPECT_EQ(ids->at(100), "a.htm");
  EXPECT_EQ(ids->at(5), "sub/b.htm");
  EXPECT_TRUE(help->Bytes("/sub/b.htm"));
  EXPECT_TRUE(
      Told("HHC3015: Warning: An alias has been created to \"none.htm\" but the file does not "
           "exist."));
}

TEST_F(CompilerTest, TakesKeywordsFromPagesWhenAskedTo) {
  const std::string object =
      "<OBJECT classid=\"clsid:1E2A7BD0-DAB9-11D0-B93A-00C04FC99F9E\"><param name=\"Keyword\" "
      "value=\"a, b\"><param name=\"ALink Name\" value=\"assoc\"></OBJECT>";
  folder_.Write("help.hhp", "[OPTIONS]\nAuto Index=Yes\n[FILES]\na.htm\n");
  folder_.Write("a.htm", Page("t", object));
  Compile();
  auto help = Opened();
  const auto keywords = help->Keywords("/$WWKeywordLinks/");
  ASSERT_TRUE(keywords) << help->problem();
  EXPECT_EQ(keywords->at(1).text, "a, b");
  EXPECT_EQ(help->Keywords("/$WWAssociativeLinks/")->at(0).text, "assoc");
  help.reset();  // a file that is open cannot be replaced everywhere
  folder_.Write("help.hhp", "[OPTIONS]\nAuto Index=No\n[FILES]\na.htm\n");
  Compile();
  EXPECT_FALSE(Opened()->Keywords("/$WWKeywordLinks/"));
}

TEST_F(CompilerTest, ReportsMissingFilesAndMakesTheRest) {
  folder_.Write("help.hhp",
                "[OPTIONS]\nContents file=a.hhc\nOdd=1\nnothing\n[FILES]\na.htm\nno.htm\n"
                "A.HTM\n[STRANGE]\n");
  folder_.Write("a.hhc", "<UL>" + Item("x", "lost.htm") + "</UL>");
  folder_.Write("a.htm", Page("t", "\n<img src=\"gone.gif\"><img src=\"gone.gif\">"));
  const CompileResult result = Compile();
  EXPECT_TRUE(result.made);
  EXPECT_EQ(result.not_compiled, std::vector<std::string>{"no.htm"});
  EXPECT_EQ(
      recorder_.messages,
      (std::vector<std::string>{
          "HHC4003: Warning: The following option line does not contain an '=' character "
          "separating the option and its value: nothing",
          "HHC4004: Warning: Line 3 of the project: unknown option \"Odd\" ignored.",
          "HHC4005: Warning: Line 9 of the project: unknown section [STRANGE] ignored.",
          "HHC5003: Error: Compilation failed while compiling no.htm.",
          "HHC4006: Warning: The file \"A.HTM\" is already listed in the [FILES] section of the "
          "project file.",
          "HHC3010: Warning: a.htm(2) : The linked file \"gone.gif\" does not exist.",
          "HHC5013: Error: URL reference in the TOC cannot be resolved: \"lost.htm\"."}));
}

TEST_F(CompilerTest, TellsOfBadTagsWithPageAndLine) {
  folder_.Write("help.hhp", "[OPTIONS]\nContents file=a.hhc\n[FILES]\nsub/a.htm\n");
  folder_.Write("a.hhc", "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<UL>" +
                             Item("x", "sub/a.htm") + "</UL>");
  folder_.Write("sub/a.htm", "\n\n(0 <= n and n < 3)<br\n>\n<b title=\"x");
  EXPECT_TRUE(Compile().made);
  const std::string page = SystemSlashes("sub/a.htm");
  EXPECT_EQ(recorder_.messages,
            (std::vector<std::string>{
                "HHC3004: Warning: " + page +
                    "(3) : The HTML tag \"= n and n < 3)<br \" is not a "
                    "valid HTML tag (it does not begin with an alphanumeric character).",
                "HHC3002: Warning: " + page +
                    "(5) : The HTML tag \"b title=\"x\" is not a valid HTML "
                    "tag (no closing \">\").",
                "HHC3004: Warning: a.hhc(1) : The HTML tag \"?xml version=\"1.0\" "
                "encoding=\"utf-8\"?\" is not a valid HTML tag (it does not begin with an "
                "alphanumeric character)."}));
}

TEST_F(CompilerTest, MakesContentsOfHeadingsWhenAskedTo) {
  folder_.Write(
      "help.hhp",
      "[OPTIONS]\nAuto TOC=2\nBinary TOC=Yes\nDefault window=main\n"
      "[WINDOWS]\nmain=\"t\",,,,,,,,,0x2520,,0x3006,,,,,,,,0\n[FILES]\na.htm\nsub/b.htm\n");
  folder_.Write("a.htm", Page("A page", "<h1>First</h1><h2 id=x>Part</h2><h3>deep</h3>"));
  folder_.Write("sub/b.htm", Page("B page", "<h1>Second</h1>"));
  EXPECT_TRUE(Compile().made);
  EXPECT_TRUE(recorder_.messages.empty()) << recorder_.messages[0];
  EXPECT_FALSE(folder_.Has("help.hhc"));
  const auto help = Opened();
  const auto contents = help->Contents();
  ASSERT_TRUE(contents) << help->problem();
  ASSERT_EQ(contents->size(), 3u);
  EXPECT_EQ((*contents)[0].address, "a.htm");
  EXPECT_EQ((*contents)[1].address, "a.htm#x");
  EXPECT_EQ((*contents)[1].level, 1);
  EXPECT_EQ((*contents)[2].address, "sub/b.htm");
  EXPECT_NE(help->Bytes("/help.hhc")->find("value=\"Part\""), std::string::npos);
  // The viewer finds the contents through the window.
  EXPECT_NE(help->Bytes("/#STRINGS")->find("help.hhc"), std::string::npos);
}

TEST_F(CompilerTest, MakesContentsOfHeadingsOfPagesOutsideTheProjectsFolder) {
  folder_.Write("p/help.hhp", "[OPTIONS]\nAuto TOC=Yes\nBinary TOC=Yes\n[FILES]\n../a#1.htm\n");
  folder_.Write("a#1.htm", Page("A page", "<h1>First</h1>"));
  EXPECT_TRUE(folder_.Compile(&recorder_, "p/help.hhp").made);
  EXPECT_TRUE(recorder_.messages.empty()) << recorder_.messages[0];
  const auto contents = InternalStreams::Open(folder_.Path("p/help.chm"))->Contents();
  ASSERT_EQ(contents->size(), 1u);
  EXPECT_EQ((*contents)[0].address, "a#1.htm");
}

TEST_F(CompilerTest, UsesAContentsFileThatIsThereRatherThanHeadings) {
  folder_.Write("help.hhp", "[OPTIONS]\nAuto TOC=9\nContents file=a.hhc\n[FILES]\na.htm\n");
  folder_.Write("a.hhc", "<UL>" + Item("Mine", "a.htm") + "</UL>");
  folder_.Write("a.htm", Page("A page", "<h1>First</h1>"));
  EXPECT_TRUE(Compile().made);
  EXPECT_EQ(Opened()->Bytes("/a.hhc"), folder_.Read("a.hhc"));
  EXPECT_EQ(recorder_.messages,
            std::vector<std::string>{"HHC4008: Warning: The contents file \"a.hhc\" already exists "
                                     "and is used as it is; \"Auto TOC\" has no effect."});
}

TEST_F(CompilerTest, TellsOfWhatIsNotSupported) {
  folder_.Write("help.hhp", "[OPTIONS]\nCreate CHI file=Yes\n[FILES]\na.htm\n[INFOTYPES]\nx\ny\n");
  folder_.Write("a.htm", Page("t", ""));
  EXPECT_TRUE(Compile().made);
  EXPECT_EQ(recorder_.messages,
            (std::vector<std::string>{
                "HHC4007: Warning: Line 2 of the project: option \"Create CHI file\" not "
                "supported; the help file is made without it.",
                "HHC4007: Warning: Line 6 of the project: section [INFOTYPES] not supported; "
                "the help file is made without it."}));
}

TEST_F(CompilerTest, MakesNothingWithoutFiles) {
  folder_.Write("help.hhp", "[OPTIONS]\nTitle=x\n");
  folder_.Write("help.chm", "old");
  const CompileResult result = Compile();
  EXPECT_FALSE(result.made);
  EXPECT_EQ(folder_.Read("help.chm"), "old");
  EXPECT_FALSE(folder_.Has("help.chm.scrivo-new"));
  ASSERT_EQ(recorder_.messages.size(), 1u);
  EXPECT_EQ(recorder_.messages[0].substr(0, 14), "HHC6000: Error");
}

TEST_F(CompilerTest, TellsWhenTheProjectOrTheOutputCannotBeOpened) {
  EXPECT_FALSE(Compile().project_found);
  folder_.Write("help.hhp", "[OPTIONS]\nCompiled file=a.htm/folder/x.chm\n[FILES]\na.htm\n");
  folder_.Write("a.htm", "x");
  EXPECT_FALSE(Compile().made);
  ASSERT_FALSE(recorder_.messages.empty());
  EXPECT_NE(recorder_.messages[0].find("HHC5010: Error: Cannot open \""), std::string::npos);
}

TEST_F(CompilerTest, FindsTheProjectWithoutItsExtension) {
  folder_.Write("My help.hhp", "[FILES]\na.htm\n");
  folder_.Write("a.htm", "x");
  EXPECT_TRUE(folder_.Compile(&recorder_, "My help").made);
  EXPECT_TRUE(folder_.Has("My help.chm"));
}

TEST_F(CompilerTest, GivesTheSameBytesForAnyNumberOfThreads) {
  WriteSample();
  for (int i = 0; i < 60; ++i) {
    folder_.Write("many/p" + std::to_string(i) + ".htm",
                  Page("p", std::string(3000, static_cast<char>('a' + i % 26)) + " <a href=p" +
                                std::to_string((i * 7) % 61) + ".htm>"));
  }
  folder_.Write("help.hhp",
                std::string(kOptions) + "[FILES]\r\nindex.htm\r\nmany/p0.htm\r\nmany/p1.htm\r\n");
  ASSERT_TRUE(Compile(1).made);
  const std::string one = folder_.Read("help.chm");
  const auto messages = recorder_.messages;
  for (const int threads : {2, 5}) {
    recorder_.messages.clear();
    ASSERT_TRUE(Compile(threads).made);
    EXPECT_TRUE(folder_.Read("help.chm") == one);
    EXPECT_EQ(recorder_.messages, messages);
  }
}

TEST_F(CompilerTest, GivesTheSameBytesWhenWordsDoNotFitIntoMemory) {
  folder_.Write("help.hhp", "[OPTIONS]\nFull-text search=Yes\n[FILES]\n*.htm\n");
  for (int page = 0; page < 30; ++page) {
    std::string body;
    for (int i = 0; i < 300; ++i) body += "word" + std::to_string(i * (page + 1)) + " ";
    folder_.Write("p" + std::to_string(100 + page) + ".htm", Page("page", body));
  }
  ASSERT_TRUE(Compile().made);
  const std::string expected = folder_.Read("help.chm");
  CompileRequest request;
  request.project_path = "help.hhp";
  request.working_folder = folder_.Path();
  request.compiler_name = "Test compiler 1.0";
  request.word_memory = 0;
  const DiskFiles files;
  EXPECT_TRUE(CompileProject(request, files, &recorder_).made);
  EXPECT_TRUE(folder_.Read("help.chm") == expected);
  EXPECT_FALSE(folder_.Has("help.chm.words"));
}

TEST_F(CompilerTest, TellsWhenWordsHaveNowhereToGoAndKeepsTheOldFile) {
  folder_.Write("help.hhp", "[OPTIONS]\nFull-text search=Yes\n[FILES]\na.htm\n");
  folder_.Write("a.htm", Page("t", "word"));
  folder_.Write("help.chm", "old");
  folder_.Write("help.chm.words/in", "the way");
  CompileRequest request;
  request.project_path = "help.hhp";
  request.working_folder = folder_.Path();
  request.word_memory = 0;
  const DiskFiles files;
  EXPECT_FALSE(CompileProject(request, files, &recorder_).made);
  ASSERT_EQ(recorder_.messages.size(), 1u);
  EXPECT_TRUE(recorder_.messages[0].starts_with("HHC5010: Error: Cannot write \""));
  EXPECT_NE(recorder_.messages[0].find("help.chm.words\" ("), std::string::npos);
  EXPECT_EQ(folder_.Read("help.chm"), "old");
  EXPECT_FALSE(folder_.Has("help.chm.scrivo-new"));
}

TEST_F(CompilerTest, TreatsFilesByTheirExtensionWhateverTheirPath) {
  folder_.Write("help.hhp", "[OPTIONS]\nFull-text search=Yes\n[FILES]\nx.html.d/a, b.gif\np.htm\n");
  folder_.Write("x.html.d/a, b.gif", "<title>no page</title> words");
  folder_.Write("p.htm", Page("t", "x"));
  const CompileResult result = Compile();
  EXPECT_EQ(result.topics, 1u);
  EXPECT_EQ(Opened()->Bytes("/x.html.d/a, b.gif"), "<title>no page</title> words");
  EXPECT_FALSE(Opened()->Search()->contains({"words", false}));
}

TEST_F(CompilerTest, ConvertsTitlesAndCountsLostCharacters) {
  folder_.Write("help.hhp", "[OPTIONS]\nLanguage=0x419\n[FILES]\na.htm\nb.htm\n");
  folder_.Write("a.htm", "<meta charset=utf-8>" + Page("\u0413\u043B \u00E9", ""));
  folder_.Write("b.htm", Page("\xC3\xEB", ""));
  Compile();
  const auto topics = Opened()->Topics();
  EXPECT_EQ(topics->at(0).title, "\xC3\xEB ?");
  EXPECT_EQ(topics->at(1).title, "\xC3\xEB");
  ASSERT_EQ(recorder_.messages.size(), 1u);
  EXPECT_EQ(recorder_.messages[0].substr(0, 31), "HHC3018: Warning: 1 characters ");
}

std::string Utf16(const std::u16string& text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

TEST_F(CompilerTest, ReadsPagesAndStyleSheetsInUtf16) {
  const std::string page = Utf16(
      u"<title>Wide \u00E9</title>\n<a href='\u00E9.htm'>caf\u00E9</a>\n"
      u"<link href=s.css><img src=no.gif>");
  folder_.Write("help.hhp",
                "[OPTIONS]\nCompiled file=help.chm\nFull-text search=Yes\n[FILES]\nwide.htm\n");
  folder_.Write("wide.htm", page);
  folder_.Write("\xC3\xA9.htm", Page("Linked", ""));
  folder_.Write("s.css", Utf16(u"p { background: url(bg.png) }"));
  folder_.Write("bg.png", "PNG");
  ASSERT_TRUE(Compile().made);
  EXPECT_EQ(recorder_.messages,
            (std::vector<std::string>{
                "HHC3010: Warning: wide.htm(3) : The linked file \"no.gif\" does not exist."}));
  const auto help = Opened();
  ASSERT_NE(help, nullptr);
  EXPECT_EQ(help->Bytes("/wide.htm"), page);
  EXPECT_TRUE(help->Bytes("/bg.png"));
  const auto topics = help->Topics();
  ASSERT_TRUE(topics);
  ASSERT_EQ(topics->size(), 2u);
  EXPECT_EQ((*topics)[0].title, "Wide \xE9");
  const auto search = help->Search();
  ASSERT_TRUE(search);
  EXPECT_TRUE(search->contains({"cafe", false}));
}

TEST_F(CompilerTest, TheOutputsOwnNameLosesNoCharacters) {
  folder_.Write("help.hhp",
                "[OPTIONS]\r\nCompiled file=\xD0\x9F\xD1\x80.chm\r\n[FILES]\r\nindex.htm\r\n");
  folder_.Write("index.htm", Page("Start", "hello"));
  EXPECT_TRUE(Compile().made);
  for (const std::string& message : recorder_.messages) {
    EXPECT_EQ(message.find("code page"), std::string::npos) << message;
  }
}

TEST_F(CompilerTest, AcceptsEmptyContentsAndIndex) {
  folder_.Write("help.hhp", std::string(kOptions) + "[FILES]\r\nindex.htm\r\n");
  folder_.Write("index.htm", Page("t", "x"));
  folder_.Write("a.hhc", "");
  folder_.Write("a.hhk", "<UL></UL>");
  EXPECT_TRUE(Compile().made);
  EXPECT_TRUE(recorder_.messages.empty());
  EXPECT_TRUE(Opened()->Contents()->empty());
  EXPECT_EQ(Opened()->Bytes("/$WWKeywordLinks/Property"), std::string(4, '\0'));
}

TEST_F(CompilerTest, RecordsNoTimeUnlessAsked) {
  WriteSample();
  Compile();
  const auto records = Opened()->System();
  ASSERT_TRUE(records);
  EXPECT_EQ(records->at(10), std::string(4, '\0'));
  EXPECT_EQ(records->at(2), std::string("index.htm\0", 10));
  EXPECT_EQ(records->at(3), std::string("The help\0", 9));
  EXPECT_EQ(records->at(5), std::string("main\0", 5));
  EXPECT_EQ(records->at(6), std::string("help\0", 5));
  EXPECT_EQ(records->at(13), Opened()->Bytes("/#IDXHDR"));
  EXPECT_TRUE(records->contains(7));
  EXPECT_TRUE(records->contains(11));
  EXPECT_FALSE(records->contains(0));
}

TEST_F(CompilerTest, ReadsLargeFilesInPieces) {
  folder_.Write("help.hhp", "[FILES]\na.htm\nbig.bin\n");
  folder_.Write("a.htm", "x");
  folder_.Write("big.bin", std::string(9 << 20, 'b') + "end");
  ASSERT_TRUE(Compile().made);
  EXPECT_TRUE(Opened()->Bytes("/big.bin") == folder_.Read("big.bin"));
}

TEST_F(CompilerTest, NeverReplacesASourceOfItsOwn) {
  WriteSample();
  const std::string project = folder_.Read("help.hhp");
  std::filesystem::create_hard_link(folder_.Path("index.htm"), folder_.Path("other name.chm"));
  // A listed page, also under another name; the project; the contents; a page that is linked to; a
  // style sheet that the linked page names.
  for (const char* name :
       {"index.htm", "other name.chm", "help.hhp", "a.hhc", "sub/Two.htm", "sub/s.css"}) {
    const std::string content = folder_.Read(name);
    std::string own_project = project;
    const std::string output = "Compiled file=help.chm";
    own_project.replace(own_project.find(output), output.size(),
                        std::string("Compiled file=") + name);
    folder_.Write("help.hhp", own_project);
    recorder_ = {};
    EXPECT_FALSE(Compile().made) << name;
    ASSERT_FALSE(recorder_.messages.empty()) << name;
    EXPECT_NE(recorder_.messages.back().find("source of the help file"), std::string::npos)
        << recorder_.messages.back();
    if (std::string(name) != "help.hhp") {
      EXPECT_EQ(folder_.Read(name), content) << name;
    }
    EXPECT_TRUE(folder_.Read("help.hhp") == own_project);
  }
}

TEST_F(CompilerTest, ReplacesTheEarlierHelpFileThatAPatternOrALinkLeadsTo) {
  folder_.Write("help.hhp", "[OPTIONS]\r\nCompiled file=help.chm\r\n[FILES]\r\n*.*\r\n");
  folder_.Write("index.htm", Page("Start", "<a href=help.chm>all of it</a>"));
  EXPECT_TRUE(Compile().made);
  EXPECT_TRUE(Compile().made);
  folder_.Write("help.hhp", "[OPTIONS]\r\nCompiled file=help.chm\r\n[FILES]\r\nhelp.chm\r\n");
  EXPECT_FALSE(Compile().made) << "it is listed by its name";
}

TEST_F(CompilerTest, RefusesAFolderAsTheOutput) {
  folder_.Write("folder/a.txt", "kept");
  folder_.Write("index.htm", Page("Start", ""));
  for (const char* name : {"folder", "folder/", "none/"}) {
    folder_.Write("help.hhp", std::string("[OPTIONS]\r\nCompiled file=") + name +
                                  "\r\n[FILES]\r\nindex.htm\r\n");
    recorder_ = {};
    EXPECT_FALSE(Compile().made) << name;
    ASSERT_EQ(recorder_.messages.size(), 1u) << name;
    EXPECT_NE(recorder_.messages[0].find(SystemSlashes(name)), std::string::npos)
        << recorder_.messages[0];
  }
  EXPECT_EQ(folder_.Read("folder/a.txt"), "kept");
  EXPECT_FALSE(folder_.Has("none"));
}

// Wants to stop when it has been asked so many times.
class StoppingRecorder : public CompileRecorder {
 public:
  explicit StoppingRecorder(int questions) : questions_(questions) {}
  bool StopWanted() const override { return --questions_ < 0; }

 private:
  mutable int questions_;
};

TEST_F(CompilerTest, StopsAtAnyMomentAndLeavesTheEarlierFile) {
  WriteSample();
  folder_.Write("i.gif", std::string(9 << 20, 'x'));  // too large to be read at once
  folder_.Write("help.chm", "earlier");
  bool made = false;
  int questions = 0;
  for (; !made; ++questions) {
    StoppingRecorder recorder(questions);
    const CompileResult result = folder_.Compile(&recorder, "help.hhp", 1);
    made = result.made;
    EXPECT_EQ(result.stopped, !made);
    EXPECT_TRUE(recorder.messages.empty()) << questions;
    if (!made) {
      EXPECT_EQ(folder_.Read("help.chm"), "earlier");
    }
    EXPECT_FALSE(folder_.Has("help.chm.scrivo-new"));
  }
  EXPECT_GT(questions, 12);
}

// Counts the questions before the first file goes in, and behind the last one.
class CountingRecorder : public CompileRecorder {
 public:
  void File(std::string_view path) override {
    CompileRecorder::File(path);
    asked_behind = 0;
  }
  bool StopWanted() const override {
    ++(files.empty() ? asked_before : asked_behind);
    return false;
  }

  mutable std::size_t asked_before = 0, asked_behind = 0;
};

TEST_F(CompilerTest, AsksWhetherToStopThroughoutEveryLongStretch) {
  constexpr std::size_t kItems = 200, kWords = 3000, kPieces = 3;
  std::string words, items, lines;
  for (std::size_t i = 0; i < kWords; ++i) words.append(" word").append(std::to_string(i));
  for (std::size_t i = 0; i < kItems; ++i) items += ItemText("Page", "a.htm");
  for (std::size_t i = 0; i < kItems; ++i) lines += "a.htm\n";
  std::string noise(kPieces << 20, '\0');  // which cannot be made smaller
  std::mt19937 random(1);
  for (char& byte : noise) byte = static_cast<char>(random());
  folder_.Write("a.htm", "<title>A</title>" + words);
  folder_.Write("a.hhc", "<UL>" + items + "</UL>");
  folder_.Write("large.bin", noise);
  folder_.Write("none.bin", "");
  const auto compile = [&](const std::string& first, CountingRecorder* recorder) {
    folder_.Write("help.hhp",
                  "[OPTIONS]\nContents file=a.hhc\nFull-text search=Yes\n"
                  "Display compile progress=Yes\n[FILES]\n" +
                      first + "\n" + lines);
    ASSERT_TRUE(folder_.Compile(recorder, "help.hhp", 1).made);
  };
  CountingRecorder small, large;
  compile("none.bin", &small);
  compile("large.bin", &large);
  EXPECT_GT(small.asked_before, 2 * kItems) << "over the list of files, over the contents";
  EXPECT_GT(small.asked_behind, kWords) << "over the search index";
  EXPECT_GE(large.asked_behind, small.asked_behind + kPieces) << "as the content is moved";
}

// 0xD2 is no character of the Greek code page, 0xFF none of the Chinese one.
TEST_F(CompilerTest, PassesBytesThatHaveNoMeaningInTheCodePageThrough) {
  const struct {
    std::string language, text;
  } projects[] = {{"0x408", "\xC1\xD2 \xFFz"}, {"0x804", "\xD6\xD0\xFF"}};
  for (const auto& [language, text] : projects) {
    const ProjectFolder folder;
    folder.Write("help.hhp",
                 "[OPTIONS]\r\nCompiled file=help.chm\r\nContents file=a.hhc\r\n"
                 "Index file=a.hhk\r\nBinary Index=Yes\r\nLanguage=" +
                     language + "\r\nTitle=T" + text + "\r\n[FILES]\r\nindex.htm\r\nb.htm\r\n");
    folder.Write("index.htm", Page("I", ""));
    folder.Write("b.htm", Page("P" + text, ""));
    folder.Write("a.hhc", "<UL>" + Item("C" + text, "") + "</UL>");
    folder.Write("a.hhk", "<UL>" + Item("K" + text, "index.htm") + "</UL>");
    CompileRecorder recorder;
    ASSERT_TRUE(folder.Compile(&recorder).made);
    EXPECT_TRUE(recorder.messages.empty()) << recorder.messages[0];
    const auto help = InternalStreams::Open(folder.Path("help.chm"));
    ASSERT_NE(help, nullptr);
    const auto holds = [&](const char* stream, const std::string& wanted) {
      return help->Bytes(stream).value_or("").find(wanted + '\0') != std::string::npos;
    };
    EXPECT_TRUE(holds("/#SYSTEM", std::string("T") + text)) << language;
    EXPECT_TRUE(holds("/#STRINGS", std::string("C") + text)) << language;
    EXPECT_TRUE(holds("/#STRINGS", std::string("P") + text)) << language;
  }
}

}  // namespace
}  // namespace scrivo
