#include "tests/doubles/sample_web.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/doubles/fake_services.h"
#include "tests/doubles/test_folder.h"
#include "tests/webs/reported.h"
#include "webs/disk_host.h"
#include "webs/disk_web.h"

namespace scrivo {
namespace {

// The sample web that is shipped.
class SampleWebTest : public WithFakeServices {
 protected:
  SampleWebTest() {
    TheServices().files = CreateSystemServices().files;
    CopySampleWeb(SCRIVO_SOURCE_DIR "/samples/Scrivo Builder sample web", folder);
    web = OpenDiskWeb(folder, {}, report, PathStyle::kPosix);
  }

  void Draw(SiteNode& node, const std::string& indent, std::string* text) {
    for (const auto& child : node.Children()) {
      *text += indent + child->Label() + ": " +
               host.RelativeLocation(*web, child->File() ? child->File()->Url() : "") + "\n";
      Draw(*child, indent + "-", text);
    }
  }

  const TestFolder place;
  const std::string folder = place.PathOf("sample web");
  WebProblemList report;
  std::shared_ptr<DiskWeb> web;
  DiskHost host{nullptr, PathStyle::kPosix};
};

TEST_F(SampleWebTest, HasANavigationOfThreeLevelsWithoutProblems) {
  std::string drawn;
  Draw(*web->NavigationRoot(), "", &drawn);
  EXPECT_EQ(drawn,
            "Building a help file with Scrivo: index.htm\n"
            "-Getting started: getting_started.htm\n"
            "--Your first help file: start/first_file.htm\n"
            "--The options: start/options.htm\n"
            "--Reading the messages: start/messages.htm\n"
            "-Pages, labels & keywords: writing.htm\n"
            "--The navigation structure: topics/navigation.htm\n"
            "--Good labels: topics/labels.htm\n"
            "--Keywords make the index: topics/keywords.htm\n"
            "--Pictures and style sheets: topics/images.htm\n"
            "-Unpacking a help file: unpacking.htm\n"
            "-Questions and answers: questions.htm\n");
  EXPECT_EQ(web->HomeNode()->Label(), "Building a help file with Scrivo");
  EXPECT_EQ(Reported(report), "");
}

TEST_F(SampleWebTest, HasOnePageOutsideItsNavigation) {
  const SiteFiles pages = web->PagesOutsideContents();
  ASSERT_EQ(pages.size(), 1u);
  EXPECT_EQ(pages[0]->Title(), "About this sample");
}

TEST_F(SampleWebTest, EveryPageHasATitleAndKeywords) {
  int pages = 0;
  for (const auto& file : AllFiles(*web)) {
    if (file->Extension() != "htm") continue;
    ++pages;
    EXPECT_NE(file->Property("keywords"), "") << file->Url();
    EXPECT_NE(file->Title(), host.RelativeLocation(*web, file->Url()));
  }
  EXPECT_EQ(pages, 13);
}

TEST_F(SampleWebTest, EveryLinkAndPictureOfItsPagesExists) {
  int links = 0;
  for (const auto& file : AllFiles(*web)) {
    if (file->Extension() != "htm") continue;
    const std::filesystem::path path = file->Url().substr(std::string("file://").size());
    const std::string page = ReadWholeFile(*TheServices().files, path.string());
    for (const std::string attribute : {"href=\"", "src=\""}) {
      for (std::size_t at = 0; (at = page.find(attribute, at)) != std::string::npos;) {
        at += attribute.size();
        const std::string target = page.substr(at, page.find('"', at) - at);
        EXPECT_TRUE(std::filesystem::exists(path.parent_path() / target)) << path << " " << target;
        ++links;
      }
    }
  }
  EXPECT_GT(links, 50);
}

}  // namespace
}  // namespace scrivo
