// The files of one target are compiled as one. Two functions of the same name without linkage are
// then overloads of each other, and a call may take the one of the other file without a word.

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

const std::filesystem::path kTop = SCRIVO_SOURCE_DIR;

std::string WholeFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string WithoutTemplateArguments(const std::string& text) {
  std::string rest;
  int depth = 0;
  for (const char character : text) {
    if (character == '<') ++depth;
    if (depth == 0) rest += character;
    if (character == '>' && depth > 0) --depth;
  }
  return rest;
}

// Where the head of a declaration ends, which nothing that opens or ends is part of.
std::size_t EndOfHead(const std::string& text) { return text.find_first_of("=({;["); }

// What one declaration without template arguments declares, or "" for what has linkage of its own
// or is nothing to look at: members defined outside their class, operators, macros.
std::string DeclaredName(const std::string& declaration) {
  static const std::string kWord =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_:~";
  std::string head = declaration.substr(0, EndOfHead(declaration));
  for (const char* kind : {"enum class ", "enum ", "struct ", "class ", "union "}) {
    if (!head.starts_with(kind)) continue;
    head.erase(0, std::string(kind).size());
    return head.substr(0, head.find_first_not_of(kWord));
  }
  if (head.find("operator") != std::string::npos) return "";
  head.erase(head.find_last_not_of(' ') + 1);
  const std::string name = head.substr(head.find_last_not_of(kWord) + 1);
  const bool is_macro = name.find_first_of("abcdefghijklmnopqrstuvwxyz") == std::string::npos;
  return is_macro || name.find(':') != std::string::npos || name == "struct" ? "" : name;
}

// Whether a line is the first one of a declaration that can clash unseen. An alias may be said
// again as long as it means the same, which the compiler sees to.
bool StartsDeclaration(const std::string& line) {
  if (line.empty() || (std::isalpha(static_cast<unsigned char>(line[0])) == 0)) return false;
  for (const char* other :
       {"namespace", "template", "using", "static_assert", "public:", "private:"}) {
    if (line.starts_with(other)) return false;
  }
  return true;
}

// The names without linkage that a file declares. It goes by the formatter's layout: what stands in
// a namespace is not indented, and everything else is.
std::set<std::string> LocalNames(const std::string& source) {
  std::set<std::string> names;
  std::istringstream lines(source);
  bool inside = false;
  std::string declaration;
  for (std::string line; std::getline(lines, line);) {
    if (line == "namespace {") inside = true;
    if (line == "}  // namespace") inside = false;
    const bool local = inside || line.starts_with("static ");
    const bool starts = StartsDeclaration(line);
    // One that is too long for its line goes on, indented, until something opens or ends.
    if (starts) declaration = local ? line : "";
    if (!starts && !declaration.empty()) declaration += line;
    if (declaration.empty()) continue;
    const std::string plain = WithoutTemplateArguments(declaration);
    if (EndOfHead(plain) == std::string::npos) continue;
    if (const std::string name = DeclaredName(plain); !name.empty()) names.insert(name);
    declaration.clear();
  }
  return names;
}

// The units that a CMakeLists.txt makes: for each target and system, its bodies.
std::vector<std::set<std::string>> Units(const std::string& cmake) {
  static const std::regex kTarget(
      R"((scrivo_room|scrivo_test|scrivo_fuzzer|scrivo_bench|add_executable|add_library)\(([^)]*)\))");
  std::vector<std::set<std::string>> units;
  for (std::sregex_iterator target(cmake.begin(), cmake.end(), kTarget), end; target != end;
       ++target) {
    std::set<std::string> posix;
    std::set<std::string> windows;
    std::istringstream words((*target)[2].str());
    std::string list = "SOURCES";
    for (std::string word; words >> word;) {
      if (word == "SOURCES" || word == "POSIX" || word == "WIN32") list = word;
      if (!word.ends_with(".cc")) continue;
      if (list != "WIN32") posix.insert(word);
      if (list != "POSIX") windows.insert(word);
    }
    units.push_back(posix);
    if (windows != posix) units.push_back(windows);
  }
  return units;
}

TEST(LocalNames, AreUsedOnceInWhatIsCompiledTogether) {
  std::set<std::string> clashes;
  std::size_t units = 0;
  std::size_t names = 0;
  for (auto entry = std::filesystem::recursive_directory_iterator(kTop); entry != end(entry);
       ++entry) {
    if (entry->path() == kTop / "build") entry.disable_recursion_pending();
    if (entry->path().filename() != "CMakeLists.txt") continue;
    const std::filesystem::path folder = entry->path().parent_path();
    for (const std::set<std::string>& unit : Units(WholeFile(entry->path()))) {
      ++units;
      std::map<std::string, std::string> first_uses;
      for (const std::string& file : unit) {
        for (const std::string& name : LocalNames(WholeFile(folder / file))) {
          ++names;
          const auto [use, is_first] = first_uses.emplace(name, file);
          if (is_first) continue;
          clashes.insert(folder.lexically_relative(kTop).string() + ": " + name + " is in " +
                         use->second + " and in " + file +
                         ", which are compiled as one; rename one of them");
        }
      }
    }
  }
  for (const std::string& clash : clashes) ADD_FAILURE() << clash;
  EXPECT_GT(units, 100u);
  EXPECT_GT(names, 2000u);
}

TEST(LocalNames, AreFoundInEveryKindOfDeclaration) {
  const std::string source =
      "int Public();\n"
      "namespace {\n"
      "// Comment();\n"
      "constexpr int kLimit = 3;\n"
      "const std::map<int, std::function<void()>> kTable{\n"
      "    {1, Inner}};\n"
      "struct Row {\n"
      "  int Member();\n"
      "};\n"
      "enum class Kind { kOne };\n"
      "using Bytes = std::vector<int>;\n"
      "std::function<int(int)> Make(int a) { return Other(a); }\n"
      "template <typename T>\n"
      "std::pair<std::string, std::string>\n"
      "    LongOne(T from,\n"
      "            T to) {\n"
      "  Inner();\n"
      "}\n"
      "int Row::Member() { return 1; }\n"
      "bool operator==(Row a, Row b) { return true; }\n"
      "TEST(Suite, Name) {}\n"
      "}  // namespace\n"
      "static int OldWay() { return 2; }\n"
      "int PublicToo() { return Public(); }\n";
  EXPECT_EQ(LocalNames(source), (std::set<std::string>{"kLimit", "kTable", "Row", "Kind", "Make",
                                                       "LongOne", "OldWay"}));
}

TEST(LocalNames, AreHeldApartByTargetAndSystem) {
  EXPECT_EQ(Units("scrivo_room(NAME a SOURCES a.cc b.cc POSIX posix/c.cc WIN32 win32/c.cc SEES x)\n"
                  "add_executable(p p.cc)\n"),
            (std::vector<std::set<std::string>>{
                {"a.cc", "b.cc", "posix/c.cc"}, {"a.cc", "b.cc", "win32/c.cc"}, {"p.cc"}}));
}

}  // namespace
