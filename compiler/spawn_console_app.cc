#include "compiler/spawn_console_app.h"

#include "errors/frame.h"
#include "system/services.h"
#include "system/system_services.h"
#include "text/text_pieces.h"

namespace scrivo {
namespace {

// Small on purpose: the reader's window shows what a slow program prints almost as it is printed.
constexpr std::uint32_t kReadSize = 16;

struct Pipe {
  SystemHandle read_end = 0;
  SystemHandle write_end = 0;
};

Pipe OpenPipe(Processes& processes) {
  Pipe pipe;
  if (!processes.OpenPipe(&pipe.read_end, &pipe.write_end)) {
    throw Error(CSpawnConsoleApp::kCreatePipeFailed, "CSpawnConsoleApp",
                "CreatePipe failed. Error: " + std::to_string(processes.LastError()));
  }
  return pipe;
}

StartedProcess StartHidden(Processes& processes, const std::string& command_line,
                           const std::string& folder, SystemHandle output) {
  StartRequest request;
  request.command_line = command_line;
  request.folder = folder;
  request.start_flags = kStartUseShowWindow | kStartUseStandardHandles;
  request.show_window = kShowWindowHidden;
  request.creation_flags = kNormalPriorityClass;
  request.inherit_handles = true;
  request.standard_output = output;
  request.standard_error = output;
  StartedProcess child;
  if (!processes.Start(request, &child)) {
    // The source is misspelled on purpose: users and logs know it that way. The pipe stays open.
    throw Error(CSpawnConsoleApp::kCreateProcessFailed, "CSpawnColsoleApp",
                "CreateProcess failed. Error: " + std::to_string(processes.LastError()));
  }
  return child;
}

}  // namespace

std::int32_t CSpawnConsoleApp::ExecuteApp(const std::string& CommandLine,
                                          const std::string& WorkingDirectory) {
  const auto run = [&](Steps& step, std::int32_t& exit_code) {
    Processes& processes = *TheServices().processes;
    const Pipe pipe = step([&] { return OpenPipe(processes); });
    const StartedProcess child =
        step([&] { return StartHidden(processes, CommandLine, WorkingDirectory, pipe.write_end); });
    // Only the child may hold a write end, or the last read would never end.
    step([&] { processes.Close(pipe.write_end); });
    step([&] {
      if (OnProcessStarted) OnProcessStarted();
    });
    bool has_read = false;
    TextPieces text(PipeCodePage());
    do {
      char buffer[kReadSize];
      std::uint32_t got = 0;
      step([&] {
        if (BeforeWaiting && processes.ReadWouldWait(pipe.read_end)) BeforeWaiting();
      });
      has_read = step([&] { return processes.Read(pipe.read_end, buffer, kReadSize, &got); });
      std::string output = text.Take(std::string_view(buffer, got));
      if (!has_read) output += text.TakeRest();
      step([&] {
        if (OnProcessOutputs) OnProcessOutputs(output);
      });
      step([&] { TheServices().desktop->ProcessMessages(); });
    } while (has_read);
    exit_code = step([&] { return static_cast<std::int32_t>(processes.ExitCode(child.process)); });
    step([&] { processes.Close(child.process); });
    step([&] { processes.Close(child.thread); });
    step([&] { processes.Close(pipe.read_end); });
  };
  return Procedure<std::int32_t>("Kestrel.CSpawnConsoleApp.ExecuteApp", run);
}

}  // namespace scrivo
