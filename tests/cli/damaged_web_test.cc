// Webs made of help files that are damaged: what can be read is there, what cannot is told.

#include <map>
#include <random>

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class DamagedWeb : public ScrivoRun {
 protected:
  DamagedWeb() {
    // Enough of what cannot be compressed that pages, contents and index lie in blocks of their
    // own.
    std::string structure = "3.0.0.507\r\n3000";
    for (int i = 0; i < 6; ++i) {
      const std::string name = "docs/p" + std::to_string(i) + ".htm";
      web.Write(name, "<html><head><title>P</title><meta name=\"keywords\" content=\"" +
                          Words(300) + "\"></head><body><!-- " + Words(1000) + "--></body></html>");
      for (int entry = 0; entry < 30; ++entry) {
        const int id = 1000 + 30 * i + entry;
        structure += "\r\n" + std::to_string(id) + "," + name + ",0," + Words(20) + ",0,0,0";
      }
    }
    web.Write("_vti_pvt/structure.cnf", structure);
  }

  std::string Words(int count) {
    std::string words;
    for (int i = 0; i < count; ++i) {
      for (int letter = 0; letter < 8; ++letter) {
        words.push_back(static_cast<char>('a' + random_() % 26));
      }
      words.push_back(i % 10 == 9 ? ';' : ' ');
    }
    return words;
  }

  // The files below a folder of the output, by name, without those that the host keeps.
  std::map<std::string, std::string> FilesIn(const std::string& folder) const {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(output.path() / folder)) {
      if (!entry.is_regular_file()) continue;
      const std::string name =
          entry.path().lexically_relative(output.path() / folder).generic_string();
      if (name.find("_vti_") == std::string::npos) files[name] = output.Read(folder + "/" + name);
    }
    return files;
  }
  bool Tells(const std::string& part) const { return err.find(part) != std::string::npos; }

  // Makes a web of the first bytes of the help file. Each file of `whole` is in it or told of.
  void MakeWebOf(const std::string& bytes, const std::map<std::string, std::string>& whole) {
    fs::remove_all(output.path() / "made");
    output.Write("cut.chm", bytes);
    EXPECT_EQ(Run({"decompile", "--web", output.PathOf("cut.chm"), output.PathOf("made")}), 1);
    if (!output.Has("made")) return;
    const auto made = FilesIn("made");
    for (const auto& [name, content] : whole) {
      const auto found = made.find(name);
      if (found == made.end()) {
        EXPECT_TRUE(Tells("scrivo: error: /" + name + ": not unpacked: ")) << name << err;
      } else {
        EXPECT_TRUE(found->second == content) << name;
      }
    }
    EXPECT_LE(made.size(), whole.size());
  }

  std::minstd_rand random_{1};
};

TEST_F(DamagedWeb, HasWhatCanBeReadOfAFileThatIsCutShort) {
  ASSERT_EQ(Compile(), 0) << err;
  ASSERT_EQ(Run({"decompile", Output(), output.PathOf("whole"), "-q"}), 0) << err;
  const auto whole = FilesIn("whole");
  const std::string bytes = output.Read("a.chm");
  int webs = 0, without_contents = 0, none = 0;
  for (std::size_t percent = 6; percent < 100; percent += 6) {
    SCOPED_TRACE(percent);
    MakeWebOf(bytes.substr(0, bytes.size() * percent / 100), whole);
    if (!output.Has("made")) {
      ++none;
      EXPECT_TRUE(Tells("cut.chm: no page can be read, so no web is made\n")) << err;
      continue;
    }
    ++webs;
    const bool lacks_contents =
        Tells("cut.chm: the contents cannot be read, so the web has no navigation structure\n");
    if (lacks_contents) ++without_contents;
    EXPECT_NE(lacks_contents, out.find(", 180 contents entries") != std::string::npos) << out;
    EXPECT_EQ(Run({"compile", output.PathOf("made"), "-o", output.PathOf("again.chm")}), 0) << err;
  }
  EXPECT_GT(none, 0);
  EXPECT_GT(without_contents, 0);
  EXPECT_GT(webs, without_contents);
}

TEST_F(DamagedWeb, GetsNoKeywordsWhereTheIndexCannotBeRead) {
  ASSERT_EQ(Compile(), 0) << err;
  const std::string bytes = output.Read("a.chm");
  int without_index = 0;
  for (std::size_t percent = 40; percent < 100; percent += 4) {
    fs::remove_all(output.path() / "made");
    output.Write("cut.chm", bytes.substr(0, bytes.size() * percent / 100));
    const auto make = [&](const char* keywords) {
      return Run({"decompile", "--web", keywords, output.PathOf("cut.chm"), output.PathOf("made")});
    };
    EXPECT_EQ(make("--keywords"), 1);
    if (!Tells("cut.chm: the index cannot be read, so the pages get no keywords\n")) continue;
    ++without_index;
    EXPECT_NE(out.find(", no keywords.\n"), std::string::npos) << out;
    fs::remove_all(output.path() / "made");
    EXPECT_EQ(make("-q"), 1);
    EXPECT_FALSE(Tells("keywords")) << err;
  }
  EXPECT_GT(without_index, 0);
}

TEST_F(DamagedWeb, SaysThatThereAreNoContentsWhereNobodyKnowsThem) {
  ASSERT_EQ(Compile(), 0) << err;
  std::string bytes = output.Read("a.chm");
  const std::size_t name = bytes.find("/#SYSTEM");
  ASSERT_NE(name, std::string::npos);
  bytes.replace(name, 8, "/#SUSTEM");
  output.Write("cut.chm", bytes);
  EXPECT_EQ(Run({"decompile", "--web", output.PathOf("cut.chm"), output.PathOf("made")}), 1);
  EXPECT_TRUE(Tells("cut.chm: the contents cannot be read")) << err;
  EXPECT_TRUE(output.Has("made/docs/p5.htm"));
}

TEST_F(DamagedWeb, HasTheEntriesOfContentsThatAreBroken) {
  web.Write("p.hhp", "[OPTIONS]\nCompiled file=p.chm\nContents file=p.hhc\n[FILES]\ndocs/a.htm\n");
  constexpr char kContents[] =
      "<UL><LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"A\"><param "
      "name=\"Local\" value=\"docs/a.htm\"></OBJECT>\0\xFF</UL></UL><LI><OBJECT><param "
      "name=\"Name\" value=\"B\"></OBJECT><UL><LI><OBJECT type=\"text/sitemap\"><param name=";
  web.Write("p.hhc", {kContents, sizeof kContents - 1});
  std::ostringstream told;
  ASSERT_EQ(RunHhc({web.PathOf("p.hhp")}, {"/", false, ""}, told, told), 1) << told.str();
  EXPECT_EQ(Run({"decompile", "--web", web.PathOf("p.chm"), output.PathOf("made")}), 0) << err;
  EXPECT_NE(output.Read("made/_vti_pvt/structure.cnf").find("docs/a.htm,0,A,0,0,0"),
            std::string::npos)
      << output.Read("made/_vti_pvt/structure.cnf");
}

}  // namespace
}  // namespace scrivo
