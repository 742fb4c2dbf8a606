// Junctions that lie in the output folder already.

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "bytes/win32/windows_api.h"
#include "tests/doubles/temp_folder.h"
#include "tests/platform/win32/eventually.h"
#include "unpack/output_folder.h"

// After the system's header, which it needs.
#include <winioctl.h>

namespace scrivo {
namespace {

namespace fs = std::filesystem;

// What the system keeps in a folder that is a junction: a reparse point of the mount point kind.
std::vector<char> JunctionTo(const fs::path& target) {
  const std::wstring shown = target.wstring();
  const std::wstring real = LR"(\??\)" + shown;
  const std::wstring texts = real + L'\0' + shown + L'\0';
  const auto bytes = [](const std::wstring& text) {
    return static_cast<WORD>(text.size() * sizeof(wchar_t));
  };
  const DWORD tag = IO_REPARSE_TAG_MOUNT_POINT;
  // The size of the rest, a reserved field, then offset and length of each text.
  const WORD fields[] = {static_cast<WORD>(8 + bytes(texts)), 0,           0, bytes(real),
                         static_cast<WORD>(bytes(real) + 2),  bytes(shown)};
  std::vector<char> record(sizeof tag + sizeof fields + bytes(texts));
  std::memcpy(record.data(), &tag, sizeof tag);
  std::memcpy(record.data() + sizeof tag, fields, sizeof fields);
  std::memcpy(record.data() + sizeof tag + sizeof fields, texts.data(), bytes(texts));
  return record;
}

// A link from one folder to another that goes with this object: a junction, or, on an emulated
// Windows that has none, a link of the system below it, which programs see as a junction.
class FolderLink {
 public:
  FolderLink(const fs::path& link, const fs::path& target) : link_(link) {
    is_junction_ = MakeJunction(target);
    if (is_junction_) return;
    StartBelow("ln -s " + NameBelow(target), link);
    Eventually([&] { return is_there(); });
  }
  FolderLink(const FolderLink&) = delete;
  FolderLink& operator=(const FolderLink&) = delete;
  ~FolderLink() {
    if (is_junction_) {
      RemoveDirectoryW(link_.c_str());
    } else {
      StartBelow("rm", link_);
      Eventually([&] { return GetFileAttributesW(link_.c_str()) == INVALID_FILE_ATTRIBUTES; });
    }
  }

  bool is_there() const {
    const DWORD attributes = GetFileAttributesW(link_.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
  }

 private:
  bool MakeJunction(const fs::path& target) const {
    CreateDirectoryW(link_.c_str(), nullptr);
    const HANDLE folder =
        CreateFileW(link_.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                    FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    std::vector<char> record = JunctionTo(target);
    DWORD count = 0;
    const bool is_made =
        DeviceIoControl(folder, FSCTL_SET_REPARSE_POINT, record.data(),
                        static_cast<DWORD>(record.size()), nullptr, 0, &count, nullptr) != FALSE;
    CloseHandle(folder);
    if (!is_made) RemoveDirectoryW(link_.c_str());
    return is_made;
  }

  // The name that the system below an emulated Windows has for a path, in quotes.
  static std::string NameBelow(const fs::path& path) {
    const auto name_of = reinterpret_cast<char*(CDECL*)(LPCWSTR)>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32"), "wine_get_unix_file_name")));
    char* const name = name_of ? name_of(path.c_str()) : nullptr;
    const std::string quoted = name ? '"' + std::string(name) + '"' : "";
    if (name) HeapFree(GetProcessHeap(), 0, name);
    return quoted;
  }
  // Starts a command on the link there, which cannot be waited for. (The link's folder is turned
  // into a name, since the link itself may be followed.)
  static void StartBelow(const std::string& command, const fs::path& link) {
    std::string line = R"(\\?\unix\bin\)" + command + " " + NameBelow(link.parent_path());
    line.insert(line.size() - 1, "/" + link.filename().string());
    STARTUPINFOA start_up{};
    start_up.cb = sizeof start_up;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &start_up, &process)) {
      return;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }

  fs::path link_;
  bool is_junction_ = false;
};

class OutputJunctionsTest : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(outside_);
    folder_ = Open(root_ / "folder");
    ASSERT_NE(folder_, nullptr);
  }
  static std::unique_ptr<OutputFolder> Open(const fs::path& path) {
    std::error_code error;
    return OpenOutputFolder(path, &error);
  }
  WriteOutcome Create(const std::string& path) {
    const std::uint8_t content[] = {'n', 'e', 'w'};
    return folder_->Create(path, content).outcome;
  }

  const TempFolder temporary_;
  const fs::path root_ = temporary_.path();
  const fs::path outside_ = root_ / "outside";
  std::unique_ptr<OutputFolder> folder_;
};

TEST_F(OutputJunctionsTest, AreNotFollowed) {
  const FolderLink link(root_ / "folder" / "link", outside_);
  ASSERT_TRUE(link.is_there());
  EXPECT_EQ(Create("link/a.htm"), WriteOutcome::kLinkInTheWay);
  EXPECT_EQ(Create("link/b/a.htm"), WriteOutcome::kLinkInTheWay);
  EXPECT_EQ(Create("link"), WriteOutcome::kLinkInTheWay);
  EXPECT_TRUE(fs::is_empty(outside_));
  EXPECT_EQ(Create("a.htm"), WriteOutcome::kDone);
}

TEST_F(OutputJunctionsTest, AreNotFollowedByLaterPartsAndRemovals) {
  std::ofstream(outside_ / "a.htm") << "kept";
  const FolderLink link(root_ / "folder" / "link", outside_);
  ASSERT_TRUE(link.is_there());
  const std::uint8_t content[] = {'x'};
  EXPECT_NE(folder_->WritePart("link/a.htm", 0, content).outcome, WriteOutcome::kDone);
  folder_->GiveUp("link/a.htm");
  std::string kept;
  std::ifstream(outside_ / "a.htm") >> kept;
  EXPECT_EQ(kept, "kept");
}

TEST_F(OutputJunctionsTest, MayLeadToTheFolderItself) {
  const FolderLink link(root_ / "link", outside_);
  ASSERT_TRUE(link.is_there());
  folder_ = Open(root_ / "link");
  ASSERT_NE(folder_, nullptr);
  EXPECT_EQ(Create("b/a.htm"), WriteOutcome::kDone);
  EXPECT_TRUE(fs::exists(outside_ / "b" / "a.htm"));
}

}  // namespace
}  // namespace scrivo
