#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class CallStack : public WithFakeServices {
 protected:
  CallStack() { handler.Init(ehaLogFile, "/e", true, false, trfLogFile, "/t"); }

  // The call stack section of a report made now.
  std::string Text() {
    files->files.erase("/e");
    handler.HandleError("x");
    const std::string record = files->files["/e"];
    const std::string heading = "The call stack is:\r\n";
    const std::size_t start = record.find(heading) + heading.size();
    return record.substr(start, record.size() - start - 2);
  }

  CErrorHandler handler;
};

TEST_F(CallStack, IsEmptyTextWhenNothingWasPushed) { EXPECT_EQ(Text(), ""); }

TEST_F(CallStack, ListsTheNewestFirstWithTwentySpacesAndItsData) {
  handler.CallStackPush("Kestrel.A.First", "");
  handler.CallStackPush("Kestrel.A.Second", "page 3");
  handler.CallStackPush("Kestrel.B.Third", "");
  EXPECT_EQ(Text(),
            "                    Kestrel.B.Third()\r\n"
            "                    Kestrel.A.Second(page 3)\r\n"
            "                    Kestrel.A.First()");
}

TEST_F(CallStack, PopTakesNameAndDataOfTheLast) {
  handler.CallStackPush("one", "1");
  handler.CallStackPush("two", "2");
  handler.CallStackPop();
  EXPECT_EQ(Text(), "                    one(1)");
}

TEST_F(CallStack, PopOfAnEmptyStackDoesNothing) {
  handler.CallStackPop();
  handler.CallStackPush("one", "");
  EXPECT_EQ(Text(), "                    one()");
}

TEST_F(CallStack, PushesAndPopsAlsoWhenItIsDisabled) {
  handler.CallStackEnabled(false);
  handler.CallStackPush("one", "");
  handler.CallStackPush("two", "");
  EXPECT_EQ(Text(), "                    two()\r\n                    one()");
  handler.CallStackPop();
  EXPECT_EQ(Text(), "                    one()");
}

TEST_F(CallStack, ClearEmptiesIt) {
  handler.CallStackPush("one", "");
  handler.CallStackPush("two", "");
  handler.CallStackClear();
  EXPECT_EQ(Text(), "");
}

TEST_F(CallStack, ClearDoesNothingWhileItIsDisabled) {
  handler.CallStackPush("one", "");
  handler.CallStackEnabled(false);
  handler.CallStackClear();
  EXPECT_EQ(Text(), "                    one()");
}

TEST_F(CallStack, KeepsEmptyNames) {
  handler.CallStackPush("", "");
  EXPECT_EQ(Text(), "                    ()");
}

TEST_F(CallStack, IsOnlyReadByAReport) {
  handler.CallStackPush("one", "");
  EXPECT_EQ(Text(), Text());
}

}  // namespace
}  // namespace scrivo
