// Labels and names in any script, whatever the code page.

#include "tests/cli/any_name.h"

#include "platform/globals.h"

namespace scrivo {
namespace {

// 目录.htm, Дом.htm, Κήπος.htm and café.htm, each labelled as it is called.
const std::vector<std::string> kNames = {"\xE7\x9B\xAE\xE5\xBD\x95", "\xD0\x94\xD0\xBE\xD0\xBC",
                                         "\xCE\x9A\xCE\xAE\xCF\x80\xCE\xBF\xCF\x82", "caf\xC3\xA9"};

class AnyName : public AnyNameRun {
 protected:
  AnyName() {
    std::string nodes = "3.0.0.507\r\n2000\r\n1000,index.htm,0,Home,0,1,0\r\n";
    for (std::size_t i = 0; i < kNames.size(); ++i) {
      Put(kNames[i] + ".htm", "<meta charset=utf-8><title>" + kNames[i] +
                                  "</title><meta name=keywords content=\"" + kNames[i] + "\">");
      nodes += std::to_string(1001 + i) + "," + kNames[i] + ".htm,0," + kNames[i] + ",1000,1,0\r\n";
    }
    Put("_vti_pvt/structure.cnf", nodes);
    TheServices().system->SetAnsiCodePage(1252);
  }
};

TEST_F(AnyName, TheTreeShowsEveryLabelAndPage) {
  EXPECT_EQ(Run({"tree", WebPath()}), 0) << err;
  std::string expected = "Home [index.htm]\n";
  for (const std::string& name : kNames) {
    expected.append("  ").append(name).append(" [").append(name).append(".htm]\n");
  }
  EXPECT_TRUE(out.starts_with(expected)) << out;
}

TEST_F(AnyName, EveryPageIsInTheHelpFileUnderItsName) {
  for (const char* code_page : {"1252", "936", "1251"}) {
    EXPECT_EQ(Compile({"--code-page", code_page}), 0) << err;
    EXPECT_EQ(err.find("error"), std::string::npos) << code_page << "\n" << err;
    EXPECT_EQ(Run({"list", Output()}), 0);
    for (const std::string& name : kNames) {
      EXPECT_NE(out.find("/" + name + ".htm"), std::string::npos) << code_page << "\n" << out;
    }
  }
}

TEST_F(AnyName, TheContentsLeadToEveryPage) {
  ASSERT_EQ(Compile(), 0) << err;
  EXPECT_EQ(Run({"info", Output()}), 0);
  for (const std::string& name : kNames) {
    EXPECT_NE(out.find(name + ".htm"), std::string::npos) << out;
  }
}

TEST_F(AnyName, WhatTheCodePageLacksIsTold) {
  ASSERT_EQ(Compile(), 0);
  EXPECT_NE(err.find("not in code page 1252"), std::string::npos) << err;
}

TEST_F(AnyName, AHelpFileMayHaveAnyName) {
  const std::string path = OutputPath(kNames[0] + " " + kNames[1] + ".chm");
  EXPECT_EQ(Run({"compile", WebPath(), "-o", path}), 0) << err;
  EXPECT_TRUE(TheServices().files->FileExists(path));
  EXPECT_EQ(Run({"list", path}), 0) << err;
}

TEST_F(AnyName, AWebMayLieInAFolderOfAnyName) {
  const std::string folder = OutputPath(kNames[2]);
  TheServices().files->MakeFolder(folder);
  TheServices().files->Write(folder + Separator(Globals().path_style) + kNames[0] + ".htm",
                             "<title>A</title>");
  EXPECT_EQ(Run({"compile", folder, "-o", Output()}), 0) << err;
  EXPECT_EQ(Run({"list", Output()}), 0);
  EXPECT_NE(out.find("/" + kNames[0] + ".htm"), std::string::npos) << out;
}

}  // namespace
}  // namespace scrivo
