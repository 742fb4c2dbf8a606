// What one piece of compiler output costs in the run window, from a short transcript to one of 100
// MB. The time for each byte must stay the same: nothing may look at the whole transcript again
// when a piece arrives.

#include <benchmark/benchmark.h>

#include "compiler/frm_hhc.h"
#include "errors/error_handler.h"
#include "platform/globals.h"
#include "platform/registry.h"
#include "system/services.h"
#include "tests/doubles/fake_desktop.h"
#include "tests/doubles/fake_system.h"
#include "tests/doubles/memory_registry.h"
#include "tests/doubles/printing_processes.h"
#include "ui/form_views.h"

namespace scrivo {
namespace {

// A window that shows nothing: what is measured is the form.
class BlindRunView : public RunView {
 public:
  void ShowModeless() override {}
  void ShowBusy(bool) override {}
  void EnableClose(bool) override {}
  void SetProgress(const std::string&, int) override {}
  void ReplaceTranscript(const std::string&) override {}
  void AppendTranscript(const std::string&) override {}
  void ShowHeldBack() override {}
  void Repaint() override {}
};

class BlindViews : public FormViews {
 public:
  std::unique_ptr<RunView> MakeRunView() override { return std::make_unique<BlindRunView>(); }
};

void ShowTranscript(benchmark::State& state) {
  const std::uint64_t bytes = static_cast<std::uint64_t>(state.range(0)) << 20;
  for (auto _ : state) {
    TheServices().desktop = std::make_shared<FakeDesktop>();
    TheServices().system = std::make_shared<FakeSystem>();
    TheServices().registry = std::make_shared<MemoryRegistry>();
    TheServices().processes = std::make_shared<PrintingProcesses>(bytes);
    CRegistry registry;
    registry.Init(kHkeyCurrentUser);
    registry.SetValue("Software\\Microsoft\\HTML Help Workshop", "InstallDir", std::string("/bin"),
                      kRegSz);
    Globals().views = std::make_shared<BlindViews>();
    frmHHC::Load().FilesCount(1000);
    if (frmHHC::Load().Execute("/", "a.hhp") != -1) state.SkipWithError("the messages are missing");
    frmHHC::Unload();
  }
  TheServices() = {};
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}
BENCHMARK(ShowTranscript)->ArgName("MB")->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace scrivo
