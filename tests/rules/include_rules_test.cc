// Holds every include line of the tree against the table of rooms in docs/architecture.md.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path kSource = SCRIVO_SOURCE_DIR;

// Headers of one operating system; only bodies made for that system may see them.
const std::set<std::string> kSystemHeaders = {
    "windows.h", "shellapi.h", "shlobj.h", "commdlg.h", "commctrl.h", "htmlhelp.h", "objbase.h",
    "ole2.h",    "winreg.h",   "unistd.h", "fcntl.h",   "dirent.h",   "poll.h",     "syslog.h",
    "spawn.h",   "iconv.h",    "signal.h", "csignal",   "pwd.h",      "dlfcn.h",    "langinfo.h",
    "process.h", "io.h",       "direct.h", "termios.h"};

std::string ReadText(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
    lines.push_back(text.substr(start, end - start));
  }
  lines.push_back(text.substr(start));
  return lines;
}

// The `quoted/` room names of one table cell.
std::vector<std::string> RoomsIn(const std::string& cell) {
  std::vector<std::string> rooms;
  std::size_t at = 0;
  for (std::size_t open; (open = cell.find('`', at)) != std::string::npos;) {
    const std::size_t close = cell.find('`', open + 1);
    if (close == std::string::npos) break;
    rooms.push_back(cell.substr(open + 1, close - open - 1));
    at = close + 1;
  }
  return rooms;
}

// One row of the table: the rooms that share it, and the other rooms that they may include.
struct Row {
  std::vector<std::string> rooms;
  std::vector<std::string> seen;
};

// The rows of the table, from its top to its end.
std::vector<Row> ReadRows() {
  std::vector<Row> rows;
  bool inside = false;
  for (const std::string& line : Lines(ReadText(kSource / "docs/architecture.md"))) {
    if (line.rfind("| room |", 0) == 0) inside = true;
    if (inside && line.empty()) break;
    if (!inside || line.rfind("| `", 0) != 0) continue;
    const std::size_t first_end = line.find('|', 1);
    const std::size_t second_end = line.find('|', first_end + 1);
    rows.push_back({RoomsIn(line.substr(0, first_end)), RoomsIn(line.substr(second_end))});
  }
  return rows;
}

// Room → the rooms that it may include, its own among them.
std::map<std::string, std::set<std::string>> ReadTable() {
  std::map<std::string, std::set<std::string>> table;
  for (const Row& row : ReadRows()) {
    for (const std::string& room : row.rooms) {
      table[room].insert(row.seen.begin(), row.seen.end());
      table[room].insert(room);
    }
  }
  return table;
}

// The innermost room of the table that holds this path, "" when none does.
std::string RoomOf(const std::string& path,
                   const std::map<std::string, std::set<std::string>>& table) {
  std::string best;
  for (const auto& [room, seen] : table) {
    if (path.rfind(room, 0) == 0 && room.size() > best.size()) best = room;
  }
  return best;
}

bool IsForOneSystem(const std::string& path) {
  return path.find("/posix/") != std::string::npos || path.find("/win32/") != std::string::npos;
}

std::vector<std::string> ProductFiles() {
  const std::set<std::string> not_product = {"build", "tests", "bench", "docs", ".git", "samples"};
  std::vector<std::string> files;
  for (auto entry = fs::recursive_directory_iterator(kSource); entry != fs::end(entry); ++entry) {
    const std::string path = fs::relative(entry->path(), kSource).generic_string();
    if (entry->is_directory() && not_product.count(path)) entry.disable_recursion_pending();
    if (path.ends_with(".h") || path.ends_with(".cc")) files.push_back(path);
  }
  std::sort(files.begin(), files.end());
  return files;
}

// What stands between the delimiters of an #include line, "" for any other line.
std::string Included(const std::string& line, char open, char close) {
  const std::string start = std::string("#include ") + open;
  if (line.rfind(start, 0) != 0) return "";
  return line.substr(start.size(), line.find(close, start.size()) - start.size());
}

TEST(IncludeRules, TheTableNamesEveryRoom) {
  const auto table = ReadTable();
  ASSERT_GT(table.size(), 10u);
  for (const std::string& path : ProductFiles()) {
    EXPECT_NE(RoomOf(path, table), "") << path << " lies in no room of docs/architecture.md";
  }
}

TEST(IncludeRules, NoRoomSeesOneThatStandsOnIt) {
  std::set<std::string> below;
  for (const Row& row : ReadRows()) {
    for (const std::string& seen : row.seen) {
      EXPECT_TRUE(below.count(seen)) << row.rooms.front() << " may include " << seen
                                     << ", which is not among the rooms before it in the table";
    }
    below.insert(row.rooms.begin(), row.rooms.end());
  }
}

TEST(IncludeRules, AFileIncludesOnlyRoomsThatItsOwnMaySee) {
  const auto table = ReadTable();
  for (const std::string& path : ProductFiles()) {
    const std::set<std::string>& allowed = table.at(RoomOf(path, table));
    int number = 0;
    for (const std::string& line : Lines(ReadText(kSource / path))) {
      ++number;
      const std::string target = Included(line, '"', '"');
      if (target.empty()) continue;
      EXPECT_TRUE(fs::exists(kSource / target))
          << path << ":" << number << ": write includes from the top folder: " << target;
      EXPECT_TRUE(allowed.count(RoomOf(target, table)))
          << path << ":" << number << ": " << RoomOf(path, table) << " may not include " << target;
    }
  }
}

TEST(IncludeRules, SystemHeadersStayInTheBodiesMadeForThem) {
  for (const std::string& path : ProductFiles()) {
    if (IsForOneSystem(path)) continue;
    int number = 0;
    for (const std::string& line : Lines(ReadText(kSource / path))) {
      ++number;
      const std::string header = Included(line, '<', '>');
      EXPECT_FALSE(kSystemHeaders.count(header) || header.rfind("sys/", 0) == 0)
          << path << ":" << number << ": <" << header << "> outside posix/ and win32/";
      EXPECT_EQ(line.find("_WIN32"), std::string::npos)
          << path << ":" << number << ": the build chooses the body, not the preprocessor";
    }
  }
}

// The name of the type that a line defines at the top of a namespace, "" for any other line.
std::string DefinedType(const std::string& line) {
  for (const std::string keyword : {"class ", "struct ", "enum class "}) {
    if (!line.starts_with(keyword) || line.ends_with(";")) continue;
    const std::size_t end = line.find_first_of(" :", keyword.size());
    return line.substr(keyword.size(), end - keyword.size());
  }
  return "";
}

// Two types of one name meet at last in a program that links both their rooms, and the linker takes
// the members of either for both without a word.
TEST(IncludeRules, EveryTypeHasANameOfItsOwn) {
  std::map<std::string, std::string> headers;
  for (const std::string& path : ProductFiles()) {
    if (!path.ends_with(".h")) continue;
    std::string space;
    for (const std::string& line : Lines(ReadText(kSource / path))) {
      if (line.starts_with("namespace ")) space = line;
      const std::string type = DefinedType(line);
      if (type.empty()) continue;
      const auto [known, added] = headers.try_emplace(space + " " + type, path);
      EXPECT_TRUE(added) << path << " and " << known->second << " both define " << type;
    }
  }
  EXPECT_GT(headers.size(), 100u);
}

}  // namespace
