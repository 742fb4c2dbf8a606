#include "tests/bytes/output_file_test.h"

#include <thread>
#include <vector>

namespace scrivo {
namespace {

namespace fs = std::filesystem;

TEST_F(OutputFileTest, AppearsUnderItsNameWhenCommitted) {
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("help")));
    EXPECT_FALSE(fs::exists(target_));
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_EQ(Content(target_), "help");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputFileTest, ReplacesAnEarlierFileOnlyWhenCommitted) {
  Put(target_, "earlier and longer");
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_EQ(Content(target_), "earlier and longer");
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_EQ(Content(target_), "new");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputFileTest, LeavesTheEarlierFileWhenGivenUp) {
  Put(target_, "earlier");
  { EXPECT_TRUE(Create()->WriteAt(0, ToBytes("new"))); }
  EXPECT_EQ(Content(target_), "earlier");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputFileTest, LeavesNothingWhenGivenUpWithoutAnEarlierFile) {
  { EXPECT_TRUE(Create()->WriteAt(0, ToBytes("new"))); }
  EXPECT_EQ(FilesInFolder(), 0u);
}

TEST_F(OutputFileTest, TouchesNoOtherNameInTheFolder) {
  const fs::path users = fs::path(target_).concat(".tmp");
  Put(users, "the user's own");
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("help")));
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_EQ(Content(users), "the user's own");
  EXPECT_EQ(FilesInFolder(), 2u);
}

TEST_F(OutputFileTest, RemovesWhatAnEndedWriterLeft) {
  Put(NameBesideTarget(target_, 1), "half of a help file");
  Put(NameBesideTarget(target_, 3), "half of another");
  { EXPECT_NE(Create(), nullptr); }
  EXPECT_EQ(FilesInFolder(), 0u);
}

TEST_F(OutputFileTest, LeavesAFolderOfARecognisableNameAlone) {
  fs::create_directories(NameBesideTarget(target_, 1) / "inside");
  Put(target_, "earlier");
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_EQ(Content(target_), "new");
  EXPECT_TRUE(fs::exists(NameBesideTarget(target_, 1) / "inside"));
}

TEST_F(OutputFileTest, LetsTheLastOfTwoWritersWin) {
  Put(target_, "earlier");
  {
    const auto first = Create();
    const auto second = Create();
    EXPECT_TRUE(first->WriteAt(0, ToBytes("first")));
    EXPECT_TRUE(second->WriteAt(0, ToBytes("second")));
    EXPECT_TRUE(second->Commit());
    EXPECT_EQ(Content(target_), "second");
    EXPECT_TRUE(first->Commit());
  }
  EXPECT_EQ(Content(target_), "first");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputFileTest, LetsTheLastOfTwoWritersWinWhereNothingWas) {
  {
    const auto first = Create();
    const auto second = Create();
    EXPECT_TRUE(first->WriteAt(0, ToBytes("first")));
    EXPECT_TRUE(second->WriteAt(0, ToBytes("second")));
    EXPECT_TRUE(second->Commit());
    EXPECT_TRUE(first->Commit());
  }
  EXPECT_EQ(Content(target_), "first");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputFileTest, StaysWholeUnderManyWriters) {
  constexpr int kWriters = 4;
  constexpr int kRounds = 25;
  const std::string page(20000, 'x');
  std::vector<std::thread> writers;
  std::vector<int> made(kWriters, 0);
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.emplace_back([&, writer] {
      for (int round = 0; round < kRounds; ++round) {
        std::error_code error;
        const auto file = OutputFile::Create(target_, &error);
        if (file && file->WriteAt(0, ToBytes(page)) && file->Commit()) ++made[writer];
      }
    });
  }
  for (std::thread& writer : writers) writer.join();
  for (const int rounds : made) EXPECT_EQ(rounds, kRounds);
  EXPECT_EQ(Content(target_), page);
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputFileTest, ReadsBackAndWritesAnywhere) {
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("0123456789")));
    std::vector<std::uint8_t> part(4);
    EXPECT_TRUE(file->ReadAt(3, part));
    EXPECT_EQ(part, ToBytes("3456"));
    EXPECT_TRUE(file->WriteAt(12, part));
    EXPECT_TRUE(file->WriteAt(1, ToBytes("ab")));
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_EQ(Content(target_), std::string("0ab3456789\0\0003456", 16));
}

TEST_F(OutputFileTest, TellsWhyItCannotBeMade) {
  EXPECT_EQ(Refusal(folder_ / "missing" / "help.chm"), std::errc::no_such_file_or_directory);
}

TEST_F(OutputFileTest, RefusesAFolder) { EXPECT_EQ(Refusal(folder_), std::errc::is_a_directory); }

TEST_F(OutputFileTest, FailsWhenAFolderHasTakenTheTargetsName) {
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("help")));
    fs::create_directories(target_ / "inside");
    EXPECT_FALSE(file->Commit());
    EXPECT_TRUE(file->Reason());
  }
  EXPECT_TRUE(fs::is_directory(target_ / "inside"));
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputFileTest, KeepsTheFirstFailure) {
  Put(target_, "earlier");
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("help")));
    std::vector<std::uint8_t> too_much(10);
    EXPECT_FALSE(file->ReadAt(0, too_much));
    const std::error_code reason = file->Reason();
    EXPECT_TRUE(reason);
    EXPECT_FALSE(file->WriteAt(0, ToBytes("x")));
    EXPECT_FALSE(file->Commit());
    EXPECT_EQ(file->Reason(), reason);
  }
  EXPECT_EQ(Content(target_), "earlier");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputFileTest, TakesTheLongestNameThatTheSystemTakes) {
  const fs::path target = folder_ / (std::string(251, 'n') + ".chm");
  Put(target, "earlier");
  {
    const auto file = Create(target);
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_EQ(Content(target), "new");
  EXPECT_EQ(FilesInFolder(), 1u);
}

}  // namespace
}  // namespace scrivo
