// A web is only read: the system says of every file there whether it was opened for writing.

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <filesystem>

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class UntouchedWeb : public ScrivoRun {
 protected:
  UntouchedWeb() : watch_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}
  ~UntouchedWeb() override { close(watch_); }

  // Counts from here on what is done in the web except reading.
  void Watch() {
    Add(web.path());
    for (const auto& entry : std::filesystem::recursive_directory_iterator(web.path())) {
      if (entry.is_directory()) Add(entry.path());
    }
  }
  // Whether anything was; what was counted is forgotten.
  bool IsTouched() const {
    bool touched = false;
    std::array<char, 4096> events;
    while (read(watch_, events.data(), events.size()) > 0) touched = true;
    return touched;
  }

 private:
  void Add(const std::filesystem::path& folder) const {
    ASSERT_GE(inotify_add_watch(watch_, folder.c_str(),
                                IN_CLOSE_WRITE | IN_MODIFY | IN_ATTRIB | IN_CREATE | IN_DELETE |
                                    IN_DELETE_SELF | IN_MOVE | IN_MOVE_SELF),
              0);
  }

  const int watch_;
};

TEST_F(UntouchedWeb, IsOnlyReadByACompile) {
  Watch();
  EXPECT_EQ(Compile(), 0) << err;
  EXPECT_FALSE(IsTouched());
  EXPECT_EQ(Compile({"--contents", "folders", "--strict", "--without-bars"}), 0) << err;
  EXPECT_FALSE(IsTouched());
}

TEST_F(UntouchedWeb, IsOnlyReadForAnotherCompiler) {
  web.Write("behaviour.txt", "make");
  Watch();
  EXPECT_EQ(Compile({"--compiler", TestProgram("test_fake_hhc")}), 0) << err;
  EXPECT_FALSE(IsTouched());
}

TEST_F(UntouchedWeb, IsWrittenToWhereTheProjectIsKept) {
  Watch();
  EXPECT_EQ(Compile({"--keep-project"}), 0) << err;
  EXPECT_TRUE(IsTouched());
}

}  // namespace
}  // namespace scrivo
