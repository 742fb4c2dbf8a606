#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "system/services.h"
#include "webs/disk_web.h"

// A web on disk against reading the same files once: listing it, its tree, the keywords of all its
// pages, with the navigation structure and without.

namespace scrivo {
namespace {

constexpr int kPagesInFolder = 100;

// Webs made when they are first needed, removed at the end.
class Webs {
 public:
  ~Webs() {
    for (const auto& [pages, folder] : folders_) std::filesystem::remove_all(folder);
  }
  const std::string& WithPages(int pages) {
    std::string& folder = folders_[pages];
    if (folder.empty()) {
      folder = (std::filesystem::temp_directory_path() / ("scrivo-bench-" + std::to_string(pages)))
                   .string();
      std::filesystem::remove_all(folder);
      Make(folder, pages);
    }
    return folder;
  }

 private:
  static std::string Folder(int page) {
    std::string name = "f";
    return name.append(std::to_string(page / kPagesInFolder));
  }
  static std::string Location(int page) {
    if (page == 0) return "index.htm";
    return Folder(page) + "/page" + std::to_string(page) + ".htm";
  }
  static void Make(const std::string& folder, int pages) {
    std::filesystem::create_directories(folder + "/_vti_pvt");
    std::ofstream structure(folder + "/_vti_pvt/structure.cnf");
    structure << "3.0.0.507\n"
              << 1000 + pages << "\n1000,index.htm,0,Home,0,1,1\n"
              << "vti_globalpage:BW|true\n";
    const std::string text(2000, 'x');
    for (int page = 0; page < pages; ++page) {
      if (page % kPagesInFolder == 0) {
        std::filesystem::create_directory(folder + "/" + Folder(page));
      }
      // Ten entries below each: eight levels hold a million.
      if (page > 0) {
        structure << 1000 + page << "," << Location(page) << ",0,Label of page " << page << ","
                  << 1000 + (page - 1) / 10 << ",1,0\n";
      }
      std::ofstream(folder + "/" + Location(page))
          << "<html>\n<head>\n<meta http-equiv=\"Content-Type\" content=\"text/html; "
          << "charset=windows-1252\">\n<title>Page " << page << "</title>\n<meta name=\"keywords\" "
          << "content=\"first,second;page " << page << "\">\n</head>\n<body>\n<h1>Page " << page
          << "</h1>\n<p>" << text << "</p>\n</body>\n</html>\n";
    }
  }

  std::map<int, std::string> folders_;
};

const std::string& WebOf(const benchmark::State& state) {
  static Webs webs;
  if (!TheServices().files) TheServices() = CreateSystemServices();
  return webs.WithPages(static_cast<int>(state.range(0)));
}

std::size_t ReadFolder(const std::string& folder) {
  Files& files = *TheServices().files;
  std::size_t size = 0;
  for (const FolderEntry& entry : files.List(folder)) {
    const std::string path = folder + "/" + entry.name;
    size += entry.is_folder ? ReadFolder(path) : ReadWholeFile(files, path).size();
  }
  return size;
}

void ReadFilesOnce(benchmark::State& state) {
  const std::string folder = WebOf(state);
  for (auto _ : state) benchmark::DoNotOptimize(ReadFolder(folder));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// What the writers ask of a web: its tree with labels and locations, all files with keywords.
std::size_t Enumerate(const std::string& folder, const DiskWebOptions& options) {
  WebProblemList report;
  const auto web = OpenDiskWeb(folder, options, report);
  std::size_t size = 0;
  for (const auto& node : AllNodes(*web)) {
    size += node->Label().size() + node->Children().size();
    if (const auto file = node->File()) size += file->Url().size();
  }
  for (const auto& file : AllFiles(*web)) {
    size += file->Url().size() + file->Property("keywords").size();
    const auto entry = file->NavigationEntry();
    size += entry ? entry->Label().size() : file->Title().size();
  }
  return size;
}

void EnumerateNavigation(benchmark::State& state) {
  const std::string folder = WebOf(state);
  for (auto _ : state) benchmark::DoNotOptimize(Enumerate(folder, {}));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void EnumerateFoldersWithHeadings(benchmark::State& state) {
  const std::string folder = WebOf(state);
  const DiskWebOptions options{
      ContentsChoice::kFolders,
      {IndexSource::kKeywords, IndexSource::kTitles, IndexSource::kHeadings}};
  for (auto _ : state) benchmark::DoNotOptimize(Enumerate(folder, options));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void TreeOnly(benchmark::State& state) {
  const std::string folder = WebOf(state);
  for (auto _ : state) {
    WebProblemList report;
    const auto web = OpenDiskWeb(folder, {}, report);
    benchmark::DoNotOptimize(AllNodes(*web).size());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

#define WEBS Unit(benchmark::kMillisecond)->Arg(10000)->Arg(100000)
BENCHMARK(ReadFilesOnce)->WEBS;
BENCHMARK(TreeOnly)->WEBS;
BENCHMARK(EnumerateNavigation)->WEBS;
BENCHMARK(EnumerateFoldersWithHeadings)->WEBS;

}  // namespace
}  // namespace scrivo
