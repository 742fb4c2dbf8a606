// Each call of the system that the error handler makes is made to fail once.

#include <functional>
#include <string>
#include <vector>

#include "tests/doubles/faulty_services.h"

namespace scrivo {
namespace {

// The channels that were reached, then "error " and a number when the member failed.
using Outcome = std::string;

class HandlerFaultTable : public WithFakeServices {
 protected:
  struct Row {
    const char* member;
    std::function<void()> call;
    Outcome undisturbed;
    // The calls in their order, with the outcome when each of them throws.
    std::vector<std::pair<const char*, Outcome>> faults;
  };

  // An error dialog whose showing is a call that can fail.
  class FaultyDialog : public ErrorDialog {
   public:
    FaultyDialog(Fault* fault, Outcome* reached) : fault_(*fault), reached_(*reached) {}
    std::string Ask(const std::string&, const std::string&) override {
      fault_.Throw("Ask");
      reached_ += "dialog ";
      return "IGNORE";
    }

   private:
    Fault& fault_;
    Outcome& reached_;
  };

  // A handler that uses every channel and traces.
  static void Prepare(CErrorHandler* handler) {
    handler->Init(15, "/errors", true, true, trfLogFile, "/trace");
  }

  Outcome Run(const std::function<void()>& call, int at) {
    fault = {};
    reached.clear();
    auto faulty_files = std::make_shared<FaultyFiles>(&fault);
    auto faulty_system = std::make_shared<FaultySystem>(&fault);
    auto faulty_desktop = std::make_shared<FaultyDesktop>(&fault);
    faulty_files->files = {{"/errors", ""}, {"/trace", ""}};
    TheServices().files = faulty_files;
    TheServices().system = faulty_system;
    TheServices().desktop = faulty_desktop;
    handler.Dialog(std::make_shared<FaultyDialog>(&fault, &reached));
    fault.at = at;
    fault.throws = true;
    std::string error;
    try {
      call();
    } catch (const Error& failure) {
      error = "error " + std::to_string(failure.number) + " " + failure.source;
    }
    if (faulty_files->files["/errors"] != "") reached += "log ";
    if (!faulty_system->events.empty()) reached += "events ";
    if (!faulty_desktop->messages.empty()) reached += "box ";
    return reached + error;
  }

  void Check(const Row& row) {
    SCOPED_TRACE(row.member);
    EXPECT_EQ(Run(row.call, -1), row.undisturbed);
    EXPECT_EQ(static_cast<std::size_t>(fault.calls), row.faults.size());
    for (std::size_t at = 0; at < row.faults.size(); ++at) {
      SCOPED_TRACE("call " + std::to_string(at) + ", " + row.faults[at].first);
      EXPECT_EQ(Run(row.call, static_cast<int>(at)), row.faults[at].second);
      EXPECT_EQ(fault.name, row.faults[at].first);
    }
  }

  const Outcome failure = "error -2147204100 Scrivo.CErrorHandler";
  Fault fault;
  Outcome reached;
  CErrorHandler handler;
};

TEST_F(HandlerFaultTable, OfItsCreation) {
  Check({"CErrorHandler", [] { CErrorHandler(); }, "", {{"PlatformId", failure}}});
}

TEST_F(HandlerFaultTable, OfHandlingAnErrorSkipsTheChannelsBehindTheFailingOne) {
  Prepare(&handler);
  Check({"HandleError",
         [&] { handler.HandleError("P"); },
         "dialog log events box ",
         {{"DateText", failure},
          {"TimeText", failure},
          {"Append", failure},
          {"WriteErrorEvent", "log " + failure},
          {"ShowMessage", "log events " + failure},
          {"Ask", "log events box " + failure}}});
}

TEST_F(HandlerFaultTable, OfTheTrace) {
  Prepare(&handler);
  const std::vector<std::pair<const char*, Outcome>> faults = {
      {"DateText", failure}, {"TimeText", failure}, {"Append", failure}};
  Check({"CallStackPush", [&] { handler.CallStackPush("P", ""); }, "", faults});
  Check({"CallStackPop", [&] { handler.CallStackPop(); }, "", faults});
}

TEST_F(HandlerFaultTable, OfClearingIsSilent) {
  Prepare(&handler);
  Check({"Clear", [&] { handler.Clear(true, true); }, "", {{"Remove", ""}, {"Remove", ""}}});
}

}  // namespace
}  // namespace scrivo
