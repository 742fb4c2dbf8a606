#include "cli/chmcmd_run.h"

#include <sstream>

#include "cli/chmcmd_project.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class Chmcmd : public WithFakeServices {
 protected:
  Chmcmd() {
    Globals() = GlobalState(PathStyle::kPosix);
    files->folders = {"/web", "/out"};
    for (const char* name : {"/web/a.hhc", "/web/a.hhk", "/web/index.htm", "/web/d/b.htm"}) {
      files->files[name] = "";
    }
  }
  ~Chmcmd() override { Globals() = GlobalState(); }

  // The rewritten lines of a section's text, without the section's own line.
  std::string Rewritten(const std::string& section, const std::string& lines) {
    prepared = PrepareForChmcmd(section + "\r\n" + lines, "/web", *files);
    return prepared.text.substr(section.size() + 2);
  }
  int Compile(const std::string& project) {
    files->files["/web/p.hhp"] = project;
    return CompileWithChmcmd("/web/p.hhp", out);
  }
  bool Printed(const std::string& line) { return out.str().find(line + "\n") != std::string::npos; }

  ChmcmdProject prepared;
  std::ostringstream out;
  static constexpr const char* kProject = "[OPTIONS]\r\nCompiled file=/out/a.chm\r\n";
};

TEST_F(Chmcmd, WritesOptionsTightly) {
  EXPECT_EQ(Rewritten("[OPTIONS]", "Auto Index = Yes\r\nTitle= A = B \r\nodd\r\n"),
            "Auto Index=Yes\r\nTitle=A = B\r\nodd\r\n");
}

TEST_F(Chmcmd, MakesPathsInTheProjectsFolderRelative) {
  EXPECT_EQ(Rewritten("[OPTIONS]", "Contents file=/web/a.hhc\nIndex File = /web/a.hhk\n"),
            "Contents file=a.hhc\r\nIndex File=a.hhk\r\n");
  EXPECT_EQ(Rewritten("[FILES]", "\n/web/index.htm\nd/b.htm"), "\r\nindex.htm\r\nd/b.htm\r\n");
}

TEST_F(Chmcmd, LeavesMissingFilesOutAndNamesThem) {
  EXPECT_EQ(Rewritten("[FILES]", "index.htm\ngone.htm\n/web/gone too.htm\n"), "index.htm\r\n");
  EXPECT_EQ(prepared.missing, (std::vector<std::string>{"gone.htm", "/web/gone too.htm"}));
  EXPECT_EQ(Rewritten("[OPTIONS]", "Contents file=no.hhc\n"), "");
  EXPECT_EQ(prepared.missing, std::vector<std::string>{"no.hhc"});
}

TEST_F(Chmcmd, LeavesOutAWindowThatEndsInAComma) {
  EXPECT_EQ(Rewritten("[WINDOWS]", "\ndefault=,\"a.hhc\",\ndefault=,\"a.hhc\",,0\n"),
            "\r\ndefault=,\"a.hhc\",,0\r\n");
}

TEST_F(Chmcmd, KnowsSectionsAndOptionsInAnyCase) {
  EXPECT_EQ(Rewritten("[Options]", "COMPILED FILE=b.chm\n"), "COMPILED FILE=/web/b.chm\r\n");
  EXPECT_EQ(prepared.output, "/web/b.chm");
}

TEST_F(Chmcmd, KnowsFullPathsOfWindows) {
  Globals() = GlobalState(PathStyle::kWindows);
  files->files["C:\\web\\a.htm"] = "";
  const ChmcmdProject project = PrepareForChmcmd(
      "[OPTIONS]\r\nCompiled file=D:\\a.chm\r\n[FILES]\r\nC:\\web\\a.htm\r\n", "C:\\web", *files);
  EXPECT_EQ(project.output, "D:\\a.chm");
  EXPECT_EQ(project.text, "[OPTIONS]\r\nCompiled file=D:\\a.chm\r\n[FILES]\r\na.htm\r\n");
}

// chmcmd as far as the file system sees it.
class MakingProcesses : public FakeProcesses {
 public:
  MakingProcesses(MemoryFiles& files, std::string bytes)
      : files_(files), bytes_(std::move(bytes)) {}
  bool Start(const StartRequest& request, StartedProcess* started) override {
    files_.files["/out/a.chm"] = bytes_;
    const std::string name = request.command_line.substr(request.command_line.find(' ') + 1);
    given = files_.files.at("/web/" + name);
    return FakeProcesses::Start(request, started);
  }
  std::string given;  // the project file that it was given

 private:
  MemoryFiles& files_;
  std::string bytes_;
};

TEST_F(Chmcmd, MakesTheFileAndTellsItsSize) {
  auto chmcmd = std::make_shared<MakingProcesses>(*files, std::string(1234567, 'x'));
  TheServices().processes = chmcmd;
  chmcmd->outputs = {"Warning: a\nNote: ", "b\nError: last"};
  EXPECT_EQ(Compile(kProject), 1);
  EXPECT_EQ(chmcmd->given, kProject);
  EXPECT_EQ(chmcmd->requests[0].folder, "/web");
  EXPECT_TRUE(chmcmd->requests[0].command_line.starts_with("\"chmcmd\" Scr")) << "a bare name";
  EXPECT_TRUE(Printed("Compiling /out/a.chm"));
  EXPECT_TRUE(Printed("HHC3001: Warning: a"));
  EXPECT_TRUE(Printed("Note: b"));
  EXPECT_TRUE(Printed("HHC5001: Error: last"));
  EXPECT_TRUE(Printed("Created /out/a.chm, 1,234,567 bytes"));
  EXPECT_TRUE(chmcmd->open_handles.empty());
}

TEST_F(Chmcmd, LeavesNothingBehindInTheProjectsFolder) {
  TheServices().processes = std::make_shared<MakingProcesses>(*files, "x");
  Compile(kProject);
  for (const auto& [path, bytes] : files->files) EXPECT_EQ(path.find("/web/Scr"), path.npos);
}

TEST_F(Chmcmd, RemovesTheEmptyFileThatACrashLeaves) {
  auto chmcmd = std::make_shared<MakingProcesses>(*files, "");
  TheServices().processes = chmcmd;
  EXPECT_EQ(Compile(kProject), 0);
  EXPECT_FALSE(files->FileExists("/out/a.chm"));
}

TEST_F(Chmcmd, TakesAFailureForNoFileWhateverIsThere) {
  auto chmcmd = std::make_shared<MakingProcesses>(*files, "half a file");
  chmcmd->exit_code = 217;
  TheServices().processes = chmcmd;
  EXPECT_EQ(Compile(kProject), 0);
  EXPECT_FALSE(files->FileExists("/out/a.chm"));
}

TEST_F(Chmcmd, MakesTheRestOfAProjectWithMissingFiles) {
  TheServices().processes = std::make_shared<MakingProcesses>(*files, "x");
  EXPECT_EQ(Compile(std::string(kProject) + "[FILES]\r\ngone.htm\r\n"), 1);
  EXPECT_TRUE(Printed("HHC5003: Error: Compilation failed while compiling gone.htm."));
  EXPECT_TRUE(Printed("The following files were not compiled:\ngone.htm"));
}

TEST_F(Chmcmd, DoesNotTouchAnOutputThatIsInUse) {
  files->files["/out/a.chm"] = "old";
  files->locked.insert("/out/a.chm");
  EXPECT_EQ(Compile(kProject), 0);
  EXPECT_TRUE(Printed("HHC5010: Error: Cannot open \"/out/a.chm\". Compilation stopped."));
  EXPECT_TRUE(processes->requests.empty());
  EXPECT_EQ(files->files["/out/a.chm"], "old");
}

TEST_F(Chmcmd, SaysWhatIsWrongWithAProjectThatCannotBeCompiled) {
  EXPECT_EQ(CompileWithChmcmd("/web/none.hhp", out), 0);
  EXPECT_NE(out.str().find("HHC5002: Error: "), std::string::npos);
  EXPECT_NE(out.str().find("/web/none.hhp"), std::string::npos);
  EXPECT_EQ(Compile("[OPTIONS]\r\n"), 0);
  EXPECT_TRUE(Printed("HHC5000: Error: /web/p.hhp names no compiled file."));
}

TEST_F(Chmcmd, SaysWhereChmcmdComesFromWhenItIsMissing) {
  processes->starts = false;
  processes->error = 2;
  EXPECT_EQ(Compile(kProject), 0);
  EXPECT_TRUE(
      Printed("HHC7001: Error: chmcmd could not be started (error 2); it comes with "
              "Debian's package fp-utils"));
  EXPECT_TRUE(processes->open_handles.empty());
}

}  // namespace
}  // namespace scrivo
