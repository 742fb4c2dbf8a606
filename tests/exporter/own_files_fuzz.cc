// Any bytes as the small files that an export finds on the user's disk: the list of an earlier
// export, of which nothing outside its folder may be removed, and what says which browser the
// desktop uses.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "exporter/site_output.h"
#include "exporter/view_folder.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

void CheckList(const TestFolder& folder, const std::string& bytes) {
  std::filesystem::remove_all(folder.path() / "site");
  folder.Write("site/site-files.txt",
               "Files of a site made by Scrivo; a new export replaces these only.\n" + bytes);
  folder.Write("site/inside.txt", "theirs");
  folder.Write("outside.txt", "theirs");
  SiteOutput output(folder.path() / "site", true);
  output.Create("index.html", "a page");
  output.Finish();
  if (!folder.Has("outside.txt") || !folder.Has("site/index.html")) std::abort();
  const bool is_listed = ("\n" + bytes + "\n").find("\ninside.txt\n") != std::string::npos;
  if (!is_listed && !folder.Has("site/inside.txt")) std::abort();
}

void CheckBrowser(const TestFolder& folder, const std::string& bytes) {
  folder.Write("home/.config/mimeapps.list", bytes);
  folder.Write("home/.config/user-dirs.dirs", bytes);
  folder.Write("home/.local/share/applications/a.desktop", bytes);
  Surroundings surroundings;
  surroundings.root = folder.path();
  surroundings.variable = [&](const std::string& name) {
    return name == "HOME" ? folder.PathOf("home") : std::string();
  };
  if (ViewFolder(surroundings).empty()) std::abort();
}

}  // namespace
}  // namespace scrivo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  static const TestFolder folder;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  CheckList(folder, bytes);
  CheckBrowser(folder, bytes);
  return 0;
}
