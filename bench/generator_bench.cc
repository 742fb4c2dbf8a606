// What the writers cost for each node or file, from ten thousand to a million, and for one deep
// chain of nodes. The time for each must stay the same: no level may copy the text of those below
// it, and no entry may look at the text before it.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "errors/error_handler.h"
#include "generator/frm_main.h"
#include "platform/globals.h"
#include "system/services.h"
#include "tests/doubles/fake_desktop.h"
#include "tests/doubles/fake_system.h"
#include "tests/doubles/memory_files.h"
#include "tests/doubles/memory_registry.h"
#include "tests/doubles/memory_site.h"

namespace scrivo {
namespace {

// A web in memory, open in the compile dialog.
class OpenedWeb {
 public:
  OpenedWeb() {
    const auto files = std::make_shared<MemoryFiles>();
    files->folders.insert("/srv/web");
    TheServices().files = files;
    TheServices().registry = std::make_shared<MemoryRegistry>();
    TheServices().desktop = std::make_shared<FakeDesktop>();
    TheServices().system = std::make_shared<FakeSystem>();
    Globals() = GlobalState(PathStyle::kPosix);
    Globals().HostApplication = site_.Host();
    site_.is_recording = false;
  }
  ~OpenedWeb() {
    frmMain::Unload();
    Globals() = GlobalState();
    TheServices() = {};
  }
  OpenedWeb(const OpenedWeb&) = delete;
  OpenedWeb& operator=(const OpenedWeb&) = delete;

  // A tree in which every node has up to ten children, each a page with two keywords.
  void AddPages(std::int64_t count) {
    std::vector<std::shared_ptr<SiteNode>> nodes{nullptr};
    for (std::int64_t i = 0; i < count; ++i) {
      const std::string name = std::to_string(i);
      const auto page = site_.AddPage("folder" + std::to_string(i % 100) + "/page" + name + ".htm",
                                      "Title " + name, "keyword " + name + ";another");
      const auto& parent = nodes[static_cast<std::size_t>(i / 10)];
      nodes.push_back(site_.AddNode(parent, "Label " + name, page));
    }
  }
  // `levels` nodes, each below the one before, each with nine pages beside it.
  void AddLevels(std::int64_t levels) {
    const auto page = site_.AddPage("page.htm", "Title");
    std::shared_ptr<SiteNode> node;
    for (std::int64_t i = 0; i < levels; ++i) {
      const auto parent = node;
      node = site_.AddNode(parent, "Level", page);
      for (int leaf = 0; leaf < 9; ++leaf) site_.AddNode(parent, "Leaf", page);
    }
  }
  std::shared_ptr<frmMain> Form() {
    if (!frmMain::IsLoaded()) frmMain::Load()->BuildUI();
    return frmMain::Load();
  }
  std::shared_ptr<SiteNode> Root() { return site_.Web()->NavigationRoot(); }

 private:
  MemorySite site_{"file:///srv/web", "/srv/web"};
};

void CountBytes(benchmark::State& state, const std::string& text, std::int64_t items) {
  if (text.empty()) state.SkipWithError("nothing was written");
  state.SetItemsProcessed(state.iterations() * items);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void ContentsOfManyNodes(benchmark::State& state) {
  OpenedWeb web;
  web.AddPages(state.range(0));
  const auto form = web.Form();
  std::string text;
  for (auto _ : state) text = form->EnumNodes(web.Root());
  CountBytes(state, text, state.range(0));
}

void ContentsOfManyLevels(benchmark::State& state) {
  OpenedWeb web;
  web.AddLevels(state.range(0));
  const auto form = web.Form();
  std::string text;
  for (auto _ : state) text = form->EnumNodes(web.Root());
  CountBytes(state, text, state.range(0) * 10);
}

void IndexOfManyPages(benchmark::State& state) {
  OpenedWeb web;
  web.AddPages(state.range(0));
  const auto form = web.Form();
  std::string text;
  for (auto _ : state) text = form->UseKeywords();
  CountBytes(state, text, state.range(0));
}

void ProjectOfManyPages(benchmark::State& state) {
  OpenedWeb web;
  web.AddPages(state.range(0));
  const auto form = web.Form();
  for (auto _ : state) {
    if (!form->BuildProjectFile()) state.SkipWithError("the project was not written");
  }
  CountBytes(state, ReadWholeFile(*TheServices().files, form->ProjectPath()), state.range(0));
}

void StartPageList(benchmark::State& state) {
  OpenedWeb web;
  web.AddPages(state.range(0));
  const auto form = web.Form();
  for (auto _ : state) {
    if (!form->BuildUI()) state.SkipWithError("the dialog was not filled");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

constexpr std::int64_t kFew = 10000, kSome = 100000, kMany = 1000000;

BENCHMARK(ContentsOfManyNodes)->Arg(kFew)->Arg(kSome)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(ContentsOfManyLevels)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(IndexOfManyPages)->Arg(kFew)->Arg(kSome)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(ProjectOfManyPages)->Arg(kFew)->Arg(kSome)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(StartPageList)->Arg(kFew)->Arg(kSome)->Arg(kMany)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace scrivo
