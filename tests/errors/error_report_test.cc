#include <stdexcept>

#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class ErrorReport : public WithFakeServices {
 protected:
  ErrorReport() { handler.Init(ehaLogFile, "/e", true, false, trfLogFile, "/t"); }

  template <typename Failure>
  std::string RecordOf(const Failure& failure, const std::string& procedure = "") {
    try {
      throw failure;
    } catch (...) {
      handler.HandleError(procedure);
    }
    return files->files["/e"];
  }

  CErrorHandler handler;
};

TEST_F(ErrorReport, IsWrittenByteForByte) {
  handler.CallStackPush("Kestrel.frmMain.Generate", "");
  handler.CallStackPush("Kestrel.frmMain.BuildContentFile", "");
  EXPECT_EQ(RecordOf(Error(70, "Files", "Permission denied: C:\\x.hhc")),
            "21.11.2026 - 14:05:09\r\n"
            "\tError: 70, (Permission denied: C:\\x.hhc)\r\n"
            "\tin Kestrel.frmMain.BuildContentFile at line 0\r\n"
            "\r\n"
            "The call stack is:\r\n"
            "                    Kestrel.frmMain.BuildContentFile()\r\n"
            "                    Kestrel.frmMain.Generate()\r\n");
}

TEST_F(ErrorReport, EndsWithItsHeadingWhenTheStackIsEmpty) {
  const std::string record = RecordOf(Error(5, "", "bad"));
  EXPECT_EQ(record,
            "21.11.2026 - 14:05:09\r\n\tError: 5, (bad)\r\n\tin Unknown at line 0\r\n\r\n"
            "The call stack is:\r\n\r\n");
}

TEST_F(ErrorReport, GivesNegativeNumbersAndLinesInDecimal) {
  Error error(CErrorHandler::kComponentFailure, "", "failure");
  error.line = 230;
  const std::string record = RecordOf(error);
  EXPECT_NE(record.find("\tError: -2147204100, (failure)\r\n"), std::string::npos) << record;
  EXPECT_NE(record.find(" at line 230\r\n"), std::string::npos) << record;
}

TEST_F(ErrorReport, LeavesTheErrorInTheProperties) {
  Error error(53, "", "File not found");
  error.line = 40;
  RecordOf(error);
  EXPECT_EQ(handler.ErrorNumber(), 53);
  EXPECT_EQ(handler.ErrorDescription(), "File not found");
  EXPECT_EQ(handler.ErrorLine(), 40);
}

TEST_F(ErrorReport, NamesTheGivenProcedureWhateverTheStackHolds) {
  handler.CallStackPush("Kestrel.A.B", "");
  EXPECT_NE(RecordOf(Error(1, "", "x"), "Mine").find("\r\n\tin Mine at line 0\r\n"),
            std::string::npos);
}

TEST_F(ErrorReport, NamesTheTopOfTheEnabledStack) {
  handler.CallStackPush("Kestrel.A.B", "");
  handler.CallStackPush("Kestrel.A.C", "");
  EXPECT_NE(RecordOf(Error(1, "", "x")).find("\tin Kestrel.A.C at line 0"), std::string::npos);
}

TEST_F(ErrorReport, SaysUnknownWithADisabledStackButStillListsIt) {
  handler.CallStackEnabled(false);
  handler.CallStackPush("Kestrel.A.B", "");
  const std::string record = RecordOf(Error(1, "", "x"));
  EXPECT_NE(record.find("\tin Unknown at line 0\r\n"), std::string::npos) << record;
  EXPECT_NE(record.find("\r\n                    Kestrel.A.B()\r\n"), std::string::npos) << record;
}

TEST_F(ErrorReport, KeepsLineBreaksOfADescription) {
  EXPECT_NE(RecordOf(Error(1, "", "one\r\ntwo")).find("\tError: 1, (one\r\ntwo)\r\n"),
            std::string::npos);
}

TEST_F(ErrorReport, TellsTheFailuresOfTheLanguage) {
  EXPECT_NE(RecordOf(std::bad_alloc()).find("\tError: 7, (Out of memory)"), std::string::npos);
  files->files.clear();
  EXPECT_NE(RecordOf(std::runtime_error("odd")).find("\tError: 51, (odd)"), std::string::npos);
  files->files.clear();
  EXPECT_NE(RecordOf(42).find("\tError: 51, (Internal error)"), std::string::npos);
}

TEST_F(ErrorReport, IsThatOfNoErrorOutsideOfAFailure) {
  EXPECT_EQ(handler.HandleError("Mine"), ehrAbort);
  EXPECT_NE(files->files["/e"].find("\tError: 0, ()\r\n\tin Mine at line 0"), std::string::npos);
}

TEST_F(ErrorReport, RecordsFollowEachOtherWithoutASeparator) {
  const std::string one = RecordOf(Error(1, "", "x"));
  const std::string two = RecordOf(Error(1, "", "x"));
  EXPECT_EQ(two, one + one);
  EXPECT_EQ(one.substr(one.size() - 4), "\r\n\r\n");  // an empty stack, then the record's own end
}

}  // namespace
}  // namespace scrivo
