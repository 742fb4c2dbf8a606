#include "cli/arguments.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

class Arguments : public testing::Test {
 protected:
  Arguments() {
    syntax.command = "compile";
    syntax.summary = "Compiles.";
    syntax.operands = {{"WEB", "a folder", &web}};
    syntax.options = {
        {"--output", "-o", "FILE", "the file", [this](const std::string& v) { output = v; }},
        {"--quiet", "-q", "", "be quiet", [this](const std::string&) { quiet = true; }},
        {"--a-very-long-option-name", "", "VALUE", "two\nlines", [](const std::string&) {}},
    };
  }
  void Parse(const std::vector<std::string>& arguments) { ParseArguments(arguments, syntax); }
  std::string Complaint(const std::vector<std::string>& arguments) {
    try {
      Parse(arguments);
    } catch (const UsageError& error) {
      return error.what();
    }
    return "";
  }

  std::string web, output;
  bool quiet = false;
  Syntax syntax;
};

TEST_F(Arguments, TakesOperandsAndOptionsInAnyOrder) {
  Parse({"--quiet", "site", "--output", "a.chm"});
  EXPECT_EQ(web, "site");
  EXPECT_EQ(output, "a.chm");
  EXPECT_TRUE(quiet);
}

TEST_F(Arguments, TakesAValueAfterAnEqualsSignOrRightAfterAShortName) {
  Parse({"site", "--output=a=b.chm"});
  EXPECT_EQ(output, "a=b.chm");
  Parse({"site", "-ob.chm"});
  EXPECT_EQ(output, "b.chm");
  Parse({"site", "-o", "c.chm", "-q"});
  EXPECT_EQ(output, "c.chm");
  EXPECT_TRUE(quiet);
}

TEST_F(Arguments, TakesAValueThatLooksLikeAnOption) {
  Parse({"site", "-o", "--quiet"});
  EXPECT_EQ(output, "--quiet");
  EXPECT_FALSE(quiet);
}

TEST_F(Arguments, TakesEverythingAfterTwoDashesAsOperands) {
  Parse({"-q", "--", "--quiet"});
  EXPECT_EQ(web, "--quiet");
}

TEST_F(Arguments, TakesASingleDashAsAnOperand) {
  Parse({"-"});
  EXPECT_EQ(web, "-");
}

TEST_F(Arguments, ComplainsOfWhatIsMissing) {
  EXPECT_EQ(Complaint({}), "WEB: missing");
  EXPECT_EQ(Complaint({""}), "WEB: empty");
  EXPECT_EQ(Complaint({"site", "-o"}), "-o: needs a value, as in -o FILE");
  EXPECT_EQ(Complaint({"site", "--output"}), "--output: needs a value, as in --output FILE");
}

TEST_F(Arguments, ComplainsOfWhatIsTooMuch) {
  EXPECT_EQ(Complaint({"site", "more"}), "\"more\": unexpected argument");
  EXPECT_EQ(Complaint({"site", "--quiet=1"}), "--quiet: takes no value");
}

TEST_F(Arguments, SuggestsTheOptionThatWasMeant) {
  EXPECT_EQ(Complaint({"site", "--qiuet"}), "--qiuet: unknown option; did you mean --quiet?");
  EXPECT_EQ(Complaint({"site", "--outptu=a"}), "--outptu: unknown option; did you mean --output?");
  EXPECT_EQ(Complaint({"site", "-quiet"}), "-quiet: unknown option; did you mean --quiet?");
  EXPECT_EQ(Complaint({"site", "-x"}), "-x: unknown option");
  EXPECT_EQ(Complaint({"site", "--xyz"}), "--xyz: unknown option");
}

TEST_F(Arguments, TellsInTheHelpHowTheCommandIsCalled) {
  EXPECT_EQ(HelpText(syntax),
            "usage: scrivo compile WEB [options]\n"
            "\n"
            "Compiles.\n"
            "\n"
            "  WEB                           a folder\n"
            "\n"
            "options:\n"
            "  -o, --output FILE             the file\n"
            "  -q, --quiet                   be quiet\n"
            "      --a-very-long-option-name VALUE\n"
            "                                two\n"
            "                                lines\n");
}

TEST_F(Arguments, TakesHelpForARequestUnlessItIsAValueOrAnOperand) {
  EXPECT_TRUE(AsksForHelp({"--help"}, syntax));
  EXPECT_TRUE(AsksForHelp({"site", "-q", "-h"}, syntax));
  EXPECT_TRUE(AsksForHelp({"--output=a", "--help"}, syntax));
  EXPECT_FALSE(AsksForHelp({"site", "--output", "--help"}, syntax));
  EXPECT_FALSE(AsksForHelp({"site", "-o", "-h"}, syntax));
  EXPECT_FALSE(AsksForHelp({"--", "--help"}, syntax));
  EXPECT_FALSE(AsksForHelp({"site"}, syntax));
}

TEST_F(Arguments, EndTheHelpWithTheNote) {
  EXPECT_FALSE(HelpText(syntax).ends_with("\n\nMind this.\n"));
  syntax.note = "Mind this.";
  EXPECT_TRUE(HelpText(syntax).ends_with("\n\nMind this.\n"));
}

}  // namespace
}  // namespace scrivo
