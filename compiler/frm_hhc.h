#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "compiler/transcript.h"
#include "ui/form_views.h"

namespace scrivo {

class CSpawnConsoleApp;
class Steps;

// The run window: it runs the help compiler on a project, or the viewer that takes a compiled file
// apart, shows what the tool prints as it is printed, estimates the progress and at the end tells
// the compiler's messages. It speaks to whatever Globals().views makes for it. A caller loads the
// window, sets Decompile and FilesCount, calls Execute, which shows the window, and unloads it;
// a window that stays loaded is the user's to close.
class frmHHC {
 public:
  // The one run window; creates it, not yet shown, when it is not loaded.
  static frmHHC& Load();
  static bool IsLoaded();
  // Closes the window and makes the host show the files that the run has made. Nothing happens
  // when it is not loaded, or while a run lasts, which needs it.
  static void Unload();

  frmHHC();
  ~frmHHC();
  frmHHC(const frmHHC&) = delete;
  frmHHC& operator=(const frmHHC&) = delete;

  // True to take a compiled file apart, false (after loading) to compile a project.
  bool Decompile() const { return decompile_; }
  void Decompile(bool value) { decompile_ = value; }
  // A project path that callers may leave here; a run does not read it.
  std::string ProjectPath() const { return project_path_; }
  void ProjectPath(const std::string& value) { project_path_ = value; }
  // How many files the tool is expected to process; feeds the progress estimate only.
  std::int32_t FilesCount() const { return files_count_; }
  void FilesCount(std::int32_t value) { files_count_ = value; }

  // Runs the tool in `WorkingDirectory` with `Arguments` exactly as given (nothing is quoted).
  // Returns -1 when the compiler gave messages, else the tool's exit code; 0 also when no compiler
  // is installed, and nothing was run, or when the run did not come to an exit code.
  std::int32_t Execute(const std::string& WorkingDirectory, const std::string& Arguments);

  // What the tool has printed in the last run, framed by this window's own lines.
  const std::string& Transcript() const { return transcript_; }
  // Whether a runner is at work; it is made for one tool and goes when that has ended.
  bool HasRunner() const { return mHHC != nullptr; }

 private:
  void ShowStart(Steps& step);
  // Gives the user a window back whose run was left before its end.
  void ReleaseWindow();
  // The tool to run; `folder` is the compiler's.
  std::string ToolPath(const std::string& folder) const;
  // Leaves the exit code as it is when the run does not come to one.
  void RunTool(Steps& step, const std::string& command_line, const std::string& folder,
               std::int32_t* exit_code);
  void TellMessages(const std::vector<std::string>& messages);
  void ShowProgress(int percent);
  void AppendToTranscript(const std::string& text);

  void mHHC_OnProcessStarted();
  void mHHC_OnProcessOutputs(const std::string& Output);
  void mHHC_BeforeWaiting();

  bool decompile_ = false;
  std::string project_path_;
  std::int32_t files_count_ = 0;
  std::unique_ptr<CSpawnConsoleApp> mHHC;  // set while a tool runs

  std::unique_ptr<RunView> view_;
  bool running_ = false;
  std::string transcript_;
  LineCount lines_;  // of transcript_
};

}  // namespace scrivo
