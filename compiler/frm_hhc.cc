#include "compiler/frm_hhc.h"

#include <exception>

#include "compiler/spawn_console_app.h"
#include "compiler/transcript.h"
#include "errors/error_handler.h"
#include "errors/frame.h"
#include "platform/globals.h"
#include "platform/registry.h"
#include "site/site.h"
#include "system/services.h"
#include "ui/form_views.h"

namespace scrivo {
namespace {

constexpr const char* kLineBreak = "\r\n";

std::unique_ptr<frmHHC>& DefaultInstance() {
  static std::unique_ptr<frmHHC> form;
  return form;
}

// Where the registry says that the compiler is; "" when it says nothing, or no text.
std::string InstallFolder() {
  CRegistry registry;
  registry.Init(kHkeyCurrentUser);
  const RegistryValue value =
      registry.GetValue("Software\\Microsoft\\HTML Help Workshop", "InstallDir", std::string());
  const std::string* text = std::get_if<std::string>(&value);
  return text ? *text : "";
}

// Makes the host show the files that a run has written.
void RefreshHost() {
  if (!Globals().HostApplication) return;
  const std::shared_ptr<SiteWeb> web = Globals().HostApplication->CurrentWeb();
  if (web) web->Refresh();
}

}  // namespace

frmHHC& frmHHC::Load() {
  if (!DefaultInstance()) DefaultInstance() = std::make_unique<frmHHC>();
  return *DefaultInstance();
}

bool frmHHC::IsLoaded() { return DefaultInstance() != nullptr; }

void frmHHC::Unload() {
  if (!IsLoaded() || DefaultInstance()->running_) return;
  IgnoringErrors([] { RefreshHost(); });
  DefaultInstance().reset();
}

frmHHC::frmHHC() : view_(Globals().views->MakeRunView()), lines_(Globals().path_style) {}

frmHHC::~frmHHC() = default;

std::int32_t frmHHC::Execute(const std::string& WorkingDirectory, const std::string& Arguments) {
  // However the run is left, also before its first statement.
  struct Guard {
    frmHHC& form;
    ~Guard() {
      if (form.running_) form.ReleaseWindow();
    }
  } const guard{*this};
  running_ = true;
  const auto run = [&](Steps& step, std::int32_t& result) {
    step([&] { view_->SetProgress("", 0); });
    ShowStart(step);
    const std::string folder = step([] { return InstallFolder(); });
    if (folder.empty() && !decompile_) {
      step([] {
        TheServices().desktop->ShowMessage("Microsoft HTML Help WorkShop must be installed",
                                           kOkOnly, kComponentTitle);
      });
    } else {
      const std::string tool = step([&] { return ToolPath(folder); });
      const std::string line = step([&] { return "\"" + tool + "\" " + Arguments; });
      RunTool(step, line, WorkingDirectory, &result);
      step([&] { AppendToTranscript(std::string(kLineBreak) + "Done!"); });
      const auto messages = step([&] { return ScanForMessages(transcript_); });
      if (!messages.empty()) {
        step([&] { TellMessages(messages); });
        result = -1;
      }
      step([&] { ShowProgress(100); });
    }
    step([&] { view_->EnableClose(true); });
    step([&] { view_->ShowBusy(false); });
    running_ = false;
  };
  return Procedure<std::int32_t>("Kestrel.frmHHC.Execute", run);
}

void frmHHC::ShowStart(Steps& step) {
  step([&] { view_->ShowBusy(true); });
  step([&] { view_->ShowModeless(); });
  step([&] { view_->EnableClose(false); });
  step([&] { view_->Repaint(); });
  step([] { TheServices().desktop->ProcessMessages(); });
}

void frmHHC::ReleaseWindow() {
  IgnoringErrors([&] { view_->EnableClose(true); });
  IgnoringErrors([&] { view_->ShowBusy(false); });
  running_ = false;
}

std::string frmHHC::ToolPath(const std::string& folder) const {
  // The system finds the decompiler, through its search path; it needs no folder.
  if (decompile_) return Globals().decompiler_file_name;
  return folder + Separator(Globals().path_style) + Globals().compiler_file_name;
}

void frmHHC::RunTool(Steps& step, const std::string& command_line, const std::string& folder,
                     std::int32_t* exit_code) {
  std::exception_ptr failure;
  try {
    mHHC = std::make_unique<CSpawnConsoleApp>();
    mHHC->OnProcessStarted = [this] { mHHC_OnProcessStarted(); };
    mHHC->OnProcessOutputs = [this](const std::string& Output) { mHHC_OnProcessOutputs(Output); };
    mHHC->BeforeWaiting = [this] { mHHC_BeforeWaiting(); };
    *exit_code = mHHC->ExecuteApp(command_line, folder);
  } catch (...) {
    failure = std::current_exception();
  }
  mHHC.reset();
  if (!failure) return;
  step([&] { AppendToTranscript(kLineBreak + ("Error: " + ErrorFrom(failure).description)); });
}

void frmHHC::TellMessages(const std::vector<std::string>& messages) {
  std::string text = "There are errors and warnings while compiling.";
  for (const std::string& message : messages) text += kLineBreak + message;
  TheServices().desktop->ShowMessage(text, kInformation, kComponentTitle);
}

void frmHHC::ShowProgress(int percent) {
  view_->SetProgress(std::to_string(percent) + " %", percent);
}

void frmHHC::AppendToTranscript(const std::string& text) {
  transcript_ += text;
  lines_.Add(text);
  view_->AppendTranscript(text);
}

void frmHHC::mHHC_OnProcessStarted() {
  ShowProgress(5);
  // The same words whichever tool runs, on purpose.
  transcript_ = std::string("Starting Microsoft HTML Help Workshop compiler") + kLineBreak;
  lines_ = LineCount(Globals().path_style);
  lines_.Add(transcript_);
  view_->ReplaceTranscript(transcript_);
  view_->Repaint();
}

void frmHHC::mHHC_OnProcessOutputs(const std::string& Output) {
  IgnoringErrors([&] { ShowProgress(EstimateProgress(lines_.Breaks(), files_count_)); });
  IgnoringErrors([&] { AppendToTranscript(Output); });
  IgnoringErrors([&] { view_->Repaint(); });
  IgnoringErrors([&] { TheServices().desktop->ProcessMessages(); });
}

void frmHHC::mHHC_BeforeWaiting() {
  IgnoringErrors([&] { view_->ShowHeldBack(); });
  IgnoringErrors([&] { view_->Repaint(); });
}

}  // namespace scrivo
