#include "host/host_arguments.h"

#include <gtest/gtest.h>

namespace scrivo::host {
namespace {

TEST(HostArgumentsTest, NothingIsAWindowWithoutAWeb) {
  const HostArguments parsed = ParseArguments({});
  EXPECT_EQ(parsed.web + parsed.problem, "");
  EXPECT_FALSE(parsed.external || parsed.help);
}

TEST(HostArgumentsTest, TakesAWebWithTheOptionBeforeOrBehind) {
  for (const auto& arguments :
       {std::vector<std::string>{"--external", "C:\\my web"}, {"C:\\my web", "--external"}}) {
    const HostArguments parsed = ParseArguments(arguments);
    EXPECT_EQ(parsed.web, "C:\\my web");
    EXPECT_TRUE(parsed.external);
    EXPECT_EQ(parsed.problem, "");
  }
  EXPECT_EQ(ParseArguments({"--", "-odd name"}).web, "-odd name");
}

TEST(HostArgumentsTest, AsksForHelpInEveryUsualWay) {
  for (const char* option : {"--help", "-h", "/?"}) EXPECT_TRUE(ParseArguments({option}).help);
  EXPECT_NE(Usage().find("--external"), std::string::npos);
}

TEST(HostArgumentsTest, SaysWhatIsWrong) {
  EXPECT_EQ(ParseArguments({"--extern", "a"}).problem, "Unknown option --extern.");
  EXPECT_EQ(ParseArguments({"a", "b"}).problem, "Unexpected argument \"b\".");
  EXPECT_EQ(ParseArguments({"--external"}).problem, "--external needs the web's folder.");
}

}  // namespace
}  // namespace scrivo::host
