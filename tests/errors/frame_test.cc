#include "errors/frame.h"

#include <deque>

#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

// A user who answers the error dialog from a list: ABORT once it is used up.
class Answers : public ErrorDialog {
 public:
  std::deque<std::string> keys;
  std::vector<std::string> reports;

  std::string Ask(const std::string& report, const std::string&) override {
    reports.push_back(report);
    if (keys.empty()) return "ABORT";
    const std::string key = keys.front();
    keys.pop_front();
    return key;
  }
};

class Frame : public WithFakeServices {
 protected:
  Frame() {
    ErrorHandler().Init(ehaErrorDialog, "/e", true, true, trfLogFile, "/t");
    ErrorHandler().Dialog(answers);
  }

  static void Fail() { throw Error(5, "", "bad"); }

  // The trace without its times: "+A" for an entry, "-A" for an exit, joined by blanks.
  std::string Traced() {
    std::string text;
    const std::string log = files->files["/t"];
    for (std::size_t at = 0; (at = log.find(" --- ", at)) != std::string::npos;) {
      at += 5;
      const std::size_t name = log.find(": ", at) + 2;
      if (!text.empty()) text += " ";
      text += log[at] == 'E' && log[at + 1] == 'n' ? "+" : "-";
      text += log.substr(name, log.find("\r\n", name) - name);
    }
    return text;
  }

  // How many entries the call stack holds; empties it.
  int Depth() {
    ErrorHandler().TracingEnabled(true);
    ErrorHandler().CallStackEnabled(true);
    files->files["/t"] = "";
    files->failures.clear();
    int depth = 0;
    for (std::size_t size = 0;; ++depth) {
      ErrorHandler().CallStackPop();
      if (files->files["/t"].size() == size) return depth;
      size = files->files["/t"].size();
    }
  }

  std::shared_ptr<Answers> answers = std::make_shared<Answers>();
};

TEST_F(Frame, PushesItsNameFirstAndPopsItLast) {
  std::string inside;
  Procedure("A", [&](Steps& step) { step([&] { inside = Traced(); }); });
  EXPECT_EQ(inside, "+A");
  EXPECT_EQ(Traced(), "+A -A");
  EXPECT_EQ(Depth(), 0);
}

TEST_F(Frame, PushesEmptyData) {
  Procedure("A", [&](Steps& step) { step(Fail); });
  ASSERT_EQ(answers->reports.size(), 1u);
  EXPECT_NE(answers->reports[0].find("\r\n                    A()"), std::string::npos);
}

TEST_F(Frame, RetryRunsTheFailedStepAgain) {
  answers->keys = {"RETRY", "RETRY"};
  std::string done;
  int tries = 0;
  Procedure("A", [&](Steps& step) {
    step([&] { done += "1"; });
    step([&] {
      done += "2";
      if (++tries < 3) Fail();
    });
    step([&] { done += "3"; });
  });
  EXPECT_EQ(done, "12223");
  EXPECT_EQ(Traced(), "+A -A");
}

TEST_F(Frame, IgnoreGoesOnWithTheNextStep) {
  answers->keys = {"IGNORE"};
  std::string done;
  Procedure("A", [&](Steps& step) {
    step([&] {
      done += "1";
      Fail();
      done += "x";
    });
    step([&] { done += "2"; });
  });
  EXPECT_EQ(done, "12");
  EXPECT_EQ(Traced(), "+A -A");
}

TEST_F(Frame, AbortLeavesTheProcedureAndClearsTheStackWithoutAnError) {
  int result = 0;
  bool later = false;
  Procedure("Outer", [&](Steps& outer) {
    outer([&] {
      Procedure("Inner", [&](Steps& step) {
        result = 7;
        step(Fail);
        later = true;
      });
    });
    outer([&] { result += 1; });
  });
  EXPECT_FALSE(later);
  EXPECT_EQ(result, 8);                    // the caller goes on with what was reached
  EXPECT_EQ(Traced(), "+Outer +Inner");    // no exit line: the stack was cleared
  EXPECT_EQ(answers->reports.size(), 1u);  // and the caller heard of no error
  EXPECT_EQ(Depth(), 0);
}

TEST_F(Frame, AbortWithADisabledStackLeavesStaleNamesOnIt) {
  ErrorHandler().CallStackEnabled(false);
  Procedure("Outer", [&](Steps& outer) {
    outer([&] { Procedure("Inner", [&](Steps& step) { step(Fail); }); });
  });
  // Outer's pop took the aborted Inner off, on purpose, and left Outer.
  EXPECT_EQ(Traced(), "+Outer +Inner -Inner");
  EXPECT_EQ(Depth(), 1);
}

TEST_F(Frame, ReportsNameTheProcedureOnTop) {
  answers->keys = {"IGNORE", "IGNORE"};
  Procedure("Outer", [&](Steps& outer) {
    outer([&] { Procedure("Inner", [&](Steps& step) { step(Fail); }); });
    outer(Fail);
  });
  ASSERT_EQ(answers->reports.size(), 2u);
  EXPECT_NE(answers->reports[0].find("\tin Inner at line 0"), std::string::npos);
  EXPECT_NE(answers->reports[1].find("\tin Outer at line 0"), std::string::npos);
}

TEST_F(Frame, AnAnswerConcernsTheInnermostStep) {
  answers->keys = {"RETRY", "IGNORE"};
  std::string done;
  Procedure("A", [&](Steps& step) {
    step([&] {
      done += "o";
      step([&] {
        done += "i";
        Fail();
      });
      done += "p";
    });
  });
  EXPECT_EQ(done, "oiip");
}

TEST_F(Frame, AbortInANestedStepLeavesAllOfThem) {
  std::string done;
  Procedure("A", [&](Steps& step) {
    step([&] {
      done += "o";
      step(Fail);
      done += "x";
    });
    done += "y";
  });
  EXPECT_EQ(done, "o");
  EXPECT_EQ(answers->reports.size(), 1u);
}

TEST_F(Frame, StepsWorkInLoops) {
  answers->keys = {"IGNORE", "RETRY"};
  std::string done;
  int failures = 0;
  Procedure("A", [&](Steps& step) {
    for (int i = 0; i < 4; ++i) {
      step([&] {
        if (i % 2 == 1 && ++failures <= 2) Fail();
        done += std::to_string(i);
      });
    }
  });
  EXPECT_EQ(done, "023");
}

TEST_F(Frame, ProceduresMayCallThemselves) {
  std::string done;
  const std::function<void(int)> countdown = [&](int n) {
    Procedure("Countdown", [&](Steps& step) {
      done += std::to_string(n);
      if (n > 0) step([&] { countdown(n - 1); });
      step([&] {
        if (n == 2) Fail();
      });
      done += "!";
    });
  };
  countdown(3);
  EXPECT_EQ(done, "3210!!!");  // the second from the end aborted, its caller went on
}

TEST_F(Frame, AResultSurvivesAnAbort) {
  const auto build = [&] {
    bool built = false;
    Procedure("Build", [&](Steps& step) {
      step(Fail);
      built = true;
    });
    return built;
  };
  EXPECT_FALSE(build());
}

TEST_F(Frame, ReturningFromTheBodyPops) {
  Procedure("A", [&](Steps&) { return; });
  EXPECT_EQ(Traced(), "+A -A");
}

TEST_F(Frame, AnErrorBetweenTheStepsLeavesTheProcedureWhateverTheAnswer) {
  for (const char* const key : {"ABORT", "RETRY", "IGNORE"}) {
    answers->keys = {key};
    std::string done;
    Procedure("A", [&](Steps& step) {
      step([&] { done += "1"; });
      Fail();
      done += "x";
    });
    EXPECT_EQ(done, "1") << key;
    EXPECT_EQ(Depth(), 0) << key;
  }
  EXPECT_EQ(answers->reports.size(), 3u);
}

TEST_F(Frame, AFailingPushIsAskedAbout) {
  files->failures.emplace("append /t", Error(kPathNotFound, "", "Path not found"));
  bool ran = false;
  Procedure("A", [&](Steps&) { ran = true; });
  EXPECT_FALSE(ran);  // aborted before its work
  ASSERT_EQ(answers->reports.size(), 1u);
  EXPECT_NE(answers->reports[0].find("(CErrorHandler component failure)"), std::string::npos);
  EXPECT_EQ(Depth(), 0);
}

TEST_F(Frame, AfterAnIgnoredPushTheWorkIsDone) {
  answers->keys = {"IGNORE"};
  files->failures.emplace("append /t", Error(kPathNotFound, "", "Path not found"));
  bool ran = false;
  Procedure("A", [&](Steps&) {
    ran = true;
    files->failures.clear();
  });
  EXPECT_TRUE(ran);
  EXPECT_EQ(Traced(), "-A");
}

TEST_F(Frame, ARetriedPushPushesAgain) {
  answers->keys = {"RETRY"};
  files->failures.emplace("append /t", Error(kPathNotFound, "", "Path not found"));
  // The first attempt had put the name on the stack before its trace failed.
  answers->reports.clear();
  struct Repair : ErrorDialog {
    MemoryFiles* files;
    std::string Ask(const std::string&, const std::string&) override {
      files->failures.clear();
      return "RETRY";
    }
  };
  const auto repair = std::make_shared<Repair>();
  repair->files = files.get();
  ErrorHandler().Dialog(repair);
  Procedure("A", [](Steps&) {});
  EXPECT_EQ(Traced(), "+A -A");
  EXPECT_EQ(Depth(), 1);
}

TEST_F(Frame, AFailingPopIsAskedAbout) {
  answers->keys = {"IGNORE"};
  Procedure("A", [&](Steps&) {
    files->failures.emplace("append /t", Error(kPathNotFound, "", "Path not found"));
  });
  EXPECT_EQ(answers->reports.size(), 1u);
  EXPECT_EQ(Depth(), 1);  // what could not be traced was not popped
}

TEST_F(Frame, AFailingErrorHandlerReachesTheCaller) {
  ErrorHandler().ErrorHandlerActions(ehaLogFile);
  files->failures.emplace("append /e", Error(kDiskFull, "", "Disk full"));
  bool later = false;
  ExpectError(
      [&] {
        Procedure("Outer", [&](Steps& outer) {
          outer([&] {
            Procedure("Inner", [&](Steps& step) {
              step([&] { step(Fail); });
              later = true;
            });
          });
          later = true;
        });
      },
      kComponentErrorBase + 17404, "Scrivo.CErrorHandler", "CErrorHandler component failure");
  EXPECT_FALSE(later);
}

TEST_F(Frame, AFailingErrorHandlerReachesTheCallerAlsoFromBetweenTheSteps) {
  ErrorHandler().ErrorHandlerActions(ehaLogFile);
  files->failures.emplace("append /e", Error(kDiskFull, "", "Disk full"));
  ExpectError([&] { Procedure("A", [&](Steps&) { Fail(); }); }, CErrorHandler::kComponentFailure,
              "Scrivo.CErrorHandler", "CErrorHandler component failure");
}

TEST_F(Frame, ACallerHandlesTheFailureOfTheErrorHandlerBelowIt) {
  answers->keys = {"IGNORE"};
  bool went_on = false;
  Procedure("Outer", [&](Steps& outer) {
    outer([&] {
      ErrorHandler().ErrorHandlerActions(ehaLogFile);
      files->failures.emplace("append /e", Error(kDiskFull, "", "Disk full"));
      struct Restore {
        ~Restore() { ErrorHandler().ErrorHandlerActions(ehaErrorDialog); }
      } restore;
      Procedure("Inner", [&](Steps& step) { step(Fail); });
    });
    outer([&] { went_on = true; });
  });
  EXPECT_TRUE(went_on);
  ASSERT_EQ(answers->reports.size(), 1u);
  EXPECT_NE(answers->reports[0].find("\tError: -2147204100, (CErrorHandler component failure)"),
            std::string::npos);
}

}  // namespace
}  // namespace scrivo
