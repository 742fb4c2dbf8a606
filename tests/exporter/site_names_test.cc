#include "exporter/site_names.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(SiteNames, KeepsNamesThatServersAndSystemsTake) {
  SiteNames names("book.chm");
  EXPECT_EQ(names.Add("/a b/Page.htm", true), "a b/Page.htm");
  EXPECT_EQ(names.Add("/_derived/x.gif", false), "_derived/x.gif");
}

TEST(SiteNames, MapsWhatServersRefuseOrRun) {
  SiteNames names("book.chm");
  EXPECT_EQ(names.Add("/c++#1.htm", true), "c___1.htm");
  EXPECT_EQ(names.Add("/.htaccess", false), "_.htaccess");
  EXPECT_EQ(names.Add("/bin/x.htm", true), "bin_/x.htm");
  EXPECT_EQ(names.Add("/page.asp", true), "page.asp.html");
  EXPECT_EQ(names.Add("/code.php", false), "code.php.txt");
  EXPECT_EQ(names.Add("/con.htm", true), "_con.htm");
}

TEST(SiteNames, LetsNothingOutOfTheFolder) {
  SiteNames names("book.chm");
  EXPECT_EQ(names.Add("/../x.htm", true), "");
  EXPECT_EQ(names.Add("C:/x.htm", true).find(':'), std::string::npos);
}

TEST(SiteNames, GivesEachFileAPlaceOfItsOwn) {
  SiteNames names("book.chm");
  EXPECT_EQ(names.Add("/c+.htm", true), "c_.htm");
  EXPECT_EQ(names.Add("/C#.htm", true), "C_~2.htm");
  ASSERT_NE(names.Find("/c#.HTM"), nullptr);
  EXPECT_EQ(*names.Find("/c#.HTM"), "C_~2.htm");
}

class Links : public testing::Test {
 protected:
  Links() {
    names.Add("/start.htm", true);
    names.Add("/Beds/Roses & more.htm", true);
    names.Add("/Beds/C#.htm", true);
    names.Add("/Beds/part:one.htm", true);
    names.Add("/Beds/5%20more.htm", true);
  }
  LinkTarget Resolve(std::string_view address, std::string_view from = "/Beds/x.htm") const {
    return ResolveLink(names, address, from);
  }
  void ExpectPage(std::string_view address, std::string_view place, std::string_view rest = "") {
    const LinkTarget target = Resolve(address);
    EXPECT_EQ(target.kind, LinkTarget::Kind::kPage) << address;
    EXPECT_EQ(target.place, place) << address;
    EXPECT_EQ(target.rest, rest) << address;
  }
  SiteNames names{"Book.chm"};
};

TEST_F(Links, FindsPagesWhateverTheirCaseAndTheirSlashes) {
  ExpectPage("../START.htm#a", "start.htm", "#a");
  ExpectPage("/start.htm?x=1", "start.htm", "?x=1");
  ExpectPage("..\\start.htm", "start.htm");
  ExpectPage("roses%20%26%20more.htm", "Beds/Roses _ more.htm");
  ExpectPage(" ../st\nart.htm ", "start.htm");
  ExpectPage("../../../start.htm", "start.htm");
}

TEST_F(Links, FindsPagesByTheSchemesOfTheHelpViewer) {
  ExpectPage("ms-its:book.chm::/start.htm#a", "start.htm", "#a");
  ExpectPage("mk:@MSITStore:C:\\Program Files\\BOOK.CHM::/start.htm", "start.htm");
  ExpectPage("its:book.chm::start.htm", "start.htm");
  ExpectPage("book.chm::/start.htm", "start.htm");
}

TEST_F(Links, TellsOtherHelpFilesApart) {
  const LinkTarget target = Resolve("ms-its:other%20one.chm::/a/b.htm#c");
  EXPECT_EQ(target.kind, LinkTarget::Kind::kOtherHelp);
  EXPECT_EQ(target.help_file, "other one.chm");
  EXPECT_EQ(target.place, "/a/b.htm");
}

TEST_F(Links, TakesAnOddCharacterOfANameForWhatItIs) {
  ExpectPage("C#.htm", "Beds/C_.htm");
  ExpectPage("C%23.htm", "Beds/C_.htm");
  ExpectPage("Part:one.htm#a", "Beds/part_one.htm", "#a");
  ExpectPage("/beds/part%3Aone.htm", "Beds/part_one.htm");
  ExpectPage("5%20more.htm?b", "Beds/5_20more.htm", "?b");
}

TEST_F(Links, SeesScriptsThroughTheirDisguise) {
  for (const char* address : {"javascript:x()", " JavaScript:x", "java\tscript:x",
                              "\x01javascript:x", "vbscript:x", "data:text/html,<script>"}) {
    EXPECT_EQ(Resolve(address).kind, LinkTarget::Kind::kScript) << address;
  }
  EXPECT_EQ(Resolve("data:image/png;base64,AA").kind, LinkTarget::Kind::kOutside);
}

TEST_F(Links, LeavesOtherAddressesAlone) {
  EXPECT_EQ(Resolve("https://example.com/").kind, LinkTarget::Kind::kOutside);
  EXPECT_EQ(Resolve("//example.com/").kind, LinkTarget::Kind::kOutside);
  EXPECT_EQ(Resolve("#top").kind, LinkTarget::Kind::kSamePage);
  EXPECT_EQ(Resolve("none.htm").kind, LinkTarget::Kind::kMissing);
}

TEST_F(Links, KnowsWhetherAnAddressLeadsThereAsItIs) {
  EXPECT_TRUE(LeadsThere("../b%20c.htm#x", "a/x.htm", "b c.htm"));
  EXPECT_FALSE(LeadsThere("../B c.htm", "a/x.htm", "b c.htm"));
  EXPECT_FALSE(LeadsThere("../../b.htm", "a/x.htm", "b.htm"));  // above the folder of the pages
  EXPECT_FALSE(LeadsThere("/b.htm", "a/x.htm", "b.htm"));
  EXPECT_FALSE(LeadsThere("..\\b.htm", "a/x.htm", "b.htm"));
}

TEST_F(Links, MakesAddressesFromPlaceToPlace) {
  EXPECT_EQ(RelativeAddress("a/b/x.htm", "a/c/y z.htm"), "../c/y%20z.htm");
  EXPECT_EQ(RelativeAddress("x.htm", "y.htm"), "y.htm");
  EXPECT_EQ(UpFrom("a/b/x.htm"), "../../");
}

}  // namespace
}  // namespace scrivo
