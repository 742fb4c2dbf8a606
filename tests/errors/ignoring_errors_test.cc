#include <stdexcept>

#include "errors/frame.h"
#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class Ignoring : public WithFakeServices {};

TEST_F(Ignoring, SkipsAFailingStatementSilently) {
  EXPECT_FALSE(IgnoringErrors([] { throw Error(70, "", "x"); }));
  EXPECT_FALSE(IgnoringErrors([] { throw std::runtime_error("x"); }));
  EXPECT_FALSE(IgnoringErrors([] { throw 1; }));
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(Ignoring, RunsTheOthers) {
  int done = 0;
  EXPECT_TRUE(IgnoringErrors([&] { ++done; }));
  EXPECT_EQ(done, 1);
}

TEST_F(Ignoring, HidesAFailureOfTheErrorHandlerToo) {
  files->failures.emplace("append /log/errors.txt", Error(kDiskFull, "", "Disk full"));
  EXPECT_FALSE(IgnoringErrors(
      [] { Procedure("A", [](Steps& step) { step([] { throw Error(5, "", "bad"); }); }); }));
}

TEST_F(Ignoring, LetsAnAbortedStepInsideLeaveItsProcedure) {
  bool later = false;
  Procedure("A", [&](Steps& step) {
    IgnoringErrors([&] { step([] { throw Error(5, "", "bad"); }); });
    later = true;
  });
  EXPECT_FALSE(later);
}

TEST_F(Ignoring, IgnoresNothingAfterItsStretch) {
  Procedure("A", [&](Steps& step) {
    IgnoringErrors([] { throw Error(1, "", "first"); });
    step([] { throw Error(2, "", "second"); });
  });
  EXPECT_EQ(ErrorLog().find("first"), std::string::npos);
  EXPECT_NE(ErrorLog().find("\tError: 2, (second)"), std::string::npos);
}

}  // namespace
}  // namespace scrivo
