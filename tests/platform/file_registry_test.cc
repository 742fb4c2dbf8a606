#include "platform/file_registry.h"

#include "platform/registry.h"
#include "platform/settings.h"
#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class RegistryFile : public WithFakeServices {
 protected:
  RegistryFile() {
    Globals().path_style = PathStyle::kPosix;
    store = Make();
  }

  std::shared_ptr<FileRegistry> Make() {
    return std::make_shared<FileRegistry>(files, "/home/me/.config/scrivo", "registry.reg");
  }
  RegistryStatus CreateKey(const std::string& name) {
    RegistryHandle key = 0;
    const RegistryStatus status = store->CreateKey(kHkeyCurrentUser, name, kRightAllAccess, &key);
    if (status == kRegistrySuccess) store->CloseKey(key);
    return status;
  }
  bool HasKey(const std::string& name) {
    RegistryHandle key = 0;
    return store->OpenKey(kHkeyCurrentUser, name, kRightAllAccess, &key) == kRegistrySuccess;
  }

  const std::string path = "/home/me/.config/scrivo/registry.reg";
  std::shared_ptr<FileRegistry> store;
};

TEST_F(RegistryFile, IsMadeByTheFirstChangeWithItsFolders) {
  files->folders = {"/home", "/home/me"};
  EXPECT_FALSE(HasKey("a"));
  EXPECT_EQ(files->files.count(path), 0u);
  EXPECT_EQ(CreateKey("a"), kRegistrySuccess);
  EXPECT_EQ(files->files[path], "REGEDIT4\n\n[HKEY_CURRENT_USER\\a]\n");
  EXPECT_TRUE(files->FolderExists("/home/me/.config"));
  EXPECT_TRUE(files->FolderExists("/home/me/.config/scrivo"));
}

TEST_F(RegistryFile, OutlivesTheProgram) {
  CreateKey("a\\b");
  store = Make();
  EXPECT_TRUE(HasKey("A\\B"));
}

TEST_F(RegistryFile, IsPutInPlaceWhole) {
  CreateKey("a");
  files->log.clear();
  CreateKey("b");
  EXPECT_EQ(files->log, (std::vector<std::string>{"open " + path, "write " + path + ".new",
                                                  "replace " + path}));
}

TEST_F(RegistryFile, IsNotWrittenWhenNothingChanges) {
  CreateKey("a");
  files->log.clear();
  EXPECT_EQ(CreateKey("A"), kRegistrySuccess);
  EXPECT_EQ(files->log, std::vector<std::string>{"open " + path});
}

TEST_F(RegistryFile, ShowsWhatOthersWrote) {
  CreateKey("a");
  Make()->DeleteKey(kHkeyCurrentUser, "a");
  EXPECT_FALSE(HasKey("a"));
  files->files[path] = "REGEDIT4\n[HKEY_CURRENT_USER\\theirs]\n";
  EXPECT_TRUE(HasKey("theirs"));
  CreateKey("ours");
  EXPECT_TRUE(HasKey("theirs"));
  files->files.erase(path);
  EXPECT_FALSE(HasKey("ours"));
}

TEST_F(RegistryFile, IsNeverOverwrittenWhenItIsDamaged) {
  const std::string damaged = "REGEDIT4\n[HKEY_CURRENT_USER\\a]\n\"v\"=oops\n";
  files->files[path] = damaged;
  const std::string text =
      path +
      ", line 3: this is not a registry file, or it is damaged. Repair the line or move the file "
      "away; until then it is left as it is";
  RegistryHandle key = 0;
  std::uint32_t number = 0;
  char name[10];
  const std::vector<std::function<void()>> operations = {
      [&] { store->OpenKey(kHkeyCurrentUser, "a", kRightAllAccess, &key); },
      [&] { CreateKey("b"); },
      [&] { store->DeleteKey(kHkeyCurrentUser, "a"); },
      [&] { store->DeleteValue(kHkeyCurrentUser, "v"); },
      [&] { store->SetValue(kHkeyCurrentUser, "v", kRegSz, nullptr, 0); },
      [&] { store->QueryValue(kHkeyCurrentUser, "v", &number, nullptr, &number); },
      [&] { store->EnumKey(kHkeyCurrentUser, 0, name, sizeof name); },
      [&] { store->EnumValue(kHkeyCurrentUser, 0, name, &number); },
      [&] { store->LongestValueName(kHkeyCurrentUser, &number); },
  };
  for (const auto& operation : operations) {
    ExpectError(operation, kPathFileAccessError, "Registry", text);
  }
  EXPECT_EQ(files->files[path], damaged);
  files->files[path] = "REGEDIT4\n[HKEY_CURRENT_USER\\a]\n";
  EXPECT_TRUE(HasKey("a"));  // repaired while the program ran
}

TEST_F(RegistryFile, AnEmptyFileIsDamagedToo) {
  files->files[path] = "";
  EXPECT_THROW(CreateKey("a"), Error);
  EXPECT_EQ(files->files[path], "");
}

TEST_F(RegistryFile, ThatCannotBeReadIsReportedAndLeft) {
  CreateKey("a");
  const std::string before = files->files[path];
  files->failures.emplace("open " + path,
                          Error(kPermissionDenied, "", "Permission denied: " + path));
  ExpectError([&] { CreateKey("b"); }, kPermissionDenied, "", "Permission denied: " + path);
  EXPECT_EQ(files->files[path], before);
}

TEST_F(RegistryFile, ThatCannotBeWrittenKeepsWhatItHad) {
  CreateKey("a");
  const std::string before = files->files[path];
  const std::pair<std::int32_t, RegistryStatus> failures[] = {
      {kPermissionDenied, kRegistryAccessDenied}, {kDiskFull, kRegistryCannotWrite}};
  for (const std::string& operation : {"write " + path + ".new", "replace " + path}) {
    for (const auto& [number, status] : failures) {
      files->failures.clear();
      files->failures.emplace(operation, Error(number, "", "no"));
      EXPECT_EQ(CreateKey("b"), status) << operation;
      EXPECT_EQ(files->files[path], before);
      EXPECT_EQ(files->files.count(path + ".new"), 0u) << operation;
      EXPECT_FALSE(HasKey("b"));
      EXPECT_TRUE(HasKey("a"));
    }
  }
}

TEST_F(RegistryFile, WithoutAFolderNothingIsStored) {
  files->failures.emplace("make /home", Error(kPermissionDenied, "", "no"));
  EXPECT_EQ(CreateKey("a"), kRegistryAccessDenied);
  EXPECT_FALSE(HasKey("a"));
}

TEST_F(RegistryFile, RefusesLineEndsInKeyNames) {
  EXPECT_EQ(CreateKey("a\nb"), kRegistryInvalidParameter);
  EXPECT_EQ(CreateKey("a\rb"), kRegistryInvalidParameter);
  EXPECT_EQ(files->files.count(path), 0u);
}

TEST_F(RegistryFile, ACRegistryOverADamagedFileFailsAsAComponent) {
  files->files[path] = "garbage";
  TheServices().registry = store;
  ExpectError([&] { CRegistry().KeyExists("a"); }, CRegistry::kComponentFailure, "Scrivo.CRegistry",
              "CRegistry component failure");
}

TEST_F(RegistryFile, KeepsSettings) {
  TheServices().registry = store;
  SaveSetting("Scrivo", "file:///C:/Webs/site", "TITLE", "My \"title\"");
  TheServices().registry = Make();
  EXPECT_EQ(GetSetting("Scrivo", "file:///C:/Webs/site", "TITLE"), "My \"title\"");
  EXPECT_EQ(files->files[path],
            "REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Scrivo\\"
            "file:///C:/Webs/site]\n\"TITLE\"=\"My \\\"title\\\"\"\n");
}

}  // namespace
}  // namespace scrivo
