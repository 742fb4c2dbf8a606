// Holds the man pages against what the programs themselves say that they take.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "cli/hh_command.h"
#include "cli/hhc_command.h"
#include "cli/scrivo.h"

namespace scrivo {
namespace {

using Texts = std::vector<std::string>;

Texts Lines(const std::string& text) {
  Texts lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

Texts Words(const std::string& line) {
  std::istringstream stream(line);
  return {std::istream_iterator<std::string>(stream), {}};
}

bool IsAmong(const std::string& text, const Texts& texts) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

Texts Sorted(Texts texts) {
  std::sort(texts.begin(), texts.end());
  return texts;
}

// What a program takes, as its help tells it. An option is written "-o --output FILE".
struct Usage {
  Texts operands;
  Texts options;
};

// The options of the rows below, and those and the operands of the line "usage:".
Usage UsageFrom(const std::string& help) {
  static const std::regex kRow("^  (?:    |(-\\w), )?(--?[a-z][a-z-]*)( [A-Z]+)?(  .*|$)");
  Usage usage;
  for (const std::string& line : Lines(help)) {
    std::smatch row;
    if (std::regex_match(line, row, kRow)) {
      const std::string short_name = row[1].matched ? row[1].str() + " " : "";
      usage.options.push_back(short_name + row[2].str() + row[3].str());
    }
  }
  for (std::string word : Words(Lines(help).at(0))) {
    if (word.starts_with("-")) usage.options.push_back(word);
    const bool capital = word.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::string::npos;
    if (capital || word.ends_with(".hhp")) usage.operands.push_back(word);
  }
  return usage;
}

// One section of a man page, from its heading to the next.
struct Section {
  std::string part;  // the heading of the part of the page that it lies in
  Texts lines;
  Texts options;  // what its list explains
  Texts others;   // the sections that it names
};

// The option of a line such as ".It Fl o Ar FILE , Fl -output Ar FILE".
std::string OptionOf(const std::string& line) {
  std::string names, value;
  const Texts words = Words(line);
  for (std::size_t i = 1; i + 1 < words.size(); ++i) {
    if (words[i] == "Fl") names += (names.empty() ? "-" : " -") + words[i + 1];
    if (words[i] == "Ar") value = " " + words[i + 1];
  }
  return names + value;
}

// Heading to section.
using ManPage = std::map<std::string, Section>;

ManPage ReadManPage(const std::string& name) {
  ManPage page;
  const auto path = std::filesystem::path(SCRIVO_SOURCE_DIR) / "packaging" / "man" / name;
  std::ifstream stream(path, std::ios::binary);
  std::string part, heading;
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with(".Sh ")) part = heading = line.substr(4);
    if (line.starts_with(".Ss ")) heading = line.substr(4);
    Section& section = page[heading];
    section.part = part;
    section.lines.push_back(line);
    if (line.starts_with(".It Fl ")) section.options.push_back(OptionOf(line));
    if (line.starts_with(".Sx ")) {
      const std::string named = line.substr(4);
      section.others.push_back(named.substr(0, named.find_last_not_of(" .,") + 1));
    }
  }
  return page;
}

// The options of a section and of those that it names.
Texts AllOptions(const ManPage& page, const std::string& heading) {
  Texts options = page.at(heading).options;
  for (const std::string& other : page.at(heading).others) {
    const Texts& more = page.at(other).options;
    options.insert(options.end(), more.begin(), more.end());
  }
  return options;
}

std::string HelpOf(const std::vector<std::string>& arguments) {
  std::ostringstream out, err;
  EXPECT_EQ(RunScrivo(arguments, {out, err, false, 80, [] { return 0.0; }}), 0) << err.str();
  return out.str();
}

// The names in the overview's list.
Texts Commands() {
  Texts commands;
  bool inside = false;
  for (const std::string& line : Lines(HelpOf({"--help"}))) {
    if (inside && line.empty()) break;
    if (inside && !line.starts_with("   ")) commands.push_back(Words(line).at(0));
    if (line == "commands:") inside = true;
  }
  return commands;
}

// What stands behind ".Cm COMMAND" in the synopsis: "[options]", if there are any, and operands.
std::map<std::string, std::string> Synopsis(const ManPage& page) {
  std::map<std::string, std::string> forms;
  std::string command;
  for (const std::string& line : page.at("SYNOPSIS").lines) {
    if (line == ".Nm") command.clear();
    if (line.starts_with(".Cm ")) forms[command = line.substr(4)];
    if (command.empty()) continue;
    if (line.starts_with(".Ar ")) forms[command] += line.substr(3);
    if (line == ".Op Ar options") forms[command] += " [options]";
  }
  return forms;
}

TEST(ManPages, HaveASectionForEachCommandAndNoOther) {
  const ManPage page = ReadManPage("scrivo.1");
  const Texts commands = Commands();
  ASSERT_GT(commands.size(), 5u);
  for (const std::string& command : commands) {
    ASSERT_TRUE(page.count(command)) << "scrivo.1 has no section for scrivo " << command;
    EXPECT_EQ(page.at(command).part, "COMMANDS");
  }
  for (const auto& [heading, section] : page) {
    if (section.part != "COMMANDS" || heading == "COMMANDS") continue;
    EXPECT_TRUE(IsAmong(heading, commands)) << "there is no command " << heading;
  }
}

TEST(ManPages, ExplainEachOptionOfACommandOnceAndNoOther) {
  const ManPage page = ReadManPage("scrivo.1");
  for (const std::string& command : Commands()) {
    ASSERT_TRUE(page.count(command)) << command;
    EXPECT_EQ(Sorted(AllOptions(page, command)),
              Sorted(UsageFrom(HelpOf({command, "--help"})).options))
        << "scrivo.1 (left) and scrivo " << command << " --help (right)";
  }
}

TEST(ManPages, ShowHowEachCommandIsCalled) {
  const ManPage page = ReadManPage("scrivo.1");
  const auto synopsis = Synopsis(page);
  const Texts commands = Commands();
  EXPECT_EQ(synopsis.size(), commands.size() + 1);  // and "help", which is no command of its own
  EXPECT_TRUE(synopsis.count("help"));
  for (const std::string& command : commands) {
    ASSERT_TRUE(page.count(command) && synopsis.count(command)) << command;
    const Usage usage = UsageFrom(HelpOf({command, "--help"}));
    std::string form, line = ".D1 Nm Cm " + command;
    if (!usage.options.empty()) {
      form += " [options]";
      line += " Oo Ar options Oc";
    }
    if (!usage.operands.empty()) line += " Ar";
    for (const std::string& operand : usage.operands) {
      form += " " + operand;
      line += " " + operand;
    }
    EXPECT_EQ(synopsis.at(command), form) << command;
    EXPECT_TRUE(IsAmong(line, page.at(command).lines)) << line;
  }
}

TEST(ManPages, ExplainWhatTheProgramTakesWithoutACommand) {
  const Texts options = ReadManPage("scrivo.1").at("DESCRIPTION").options;
  EXPECT_EQ(options, (Texts{"-h --help", "--version"}));
  for (const std::string& option : options) {
    for (const std::string& name : Words(option)) EXPECT_NE(HelpOf({name}), "");
  }
}

TEST(ManPages, ExplainTheOptionsOfTheHelpCompiler) {
  std::ostringstream out, err;
  ASSERT_EQ(RunHhc({"--help"}, {}, out, err), 0);
  const Texts options = UsageFrom(out.str()).options;
  ASSERT_GT(options.size(), 3u);
  EXPECT_EQ(Sorted(AllOptions(ReadManPage("hhc.1"), "DESCRIPTION")), Sorted(options));
}

TEST(ManPages, ExplainTheOptionsOfTheUnpacker) {
  std::ostringstream out, err;
  ASSERT_EQ(RunHh({"--help"}, out, err), 0);
  const Usage usage = UsageFrom(out.str() + err.str());
  EXPECT_EQ(usage.operands, (Texts{"FOLDER", "FILE"}));
  EXPECT_EQ(Sorted(AllOptions(ReadManPage("hh.1"), "DESCRIPTION")), Sorted(usage.options));
}

}  // namespace
}  // namespace scrivo
