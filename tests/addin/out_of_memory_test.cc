// A connection that runs out of memory once, at each place where it asks for some.

#include <set>
#include <utility>

#include "tests/addin/addin_test.h"
#include "tests/doubles/failing_new.h"

namespace scrivo {
namespace {

class OutOfMemory : public AddinTest {
 protected:
  // Connects while allocation `at` fails; false when there are not so many.
  bool Connects(long at) {
    connect = std::make_unique<Connect>();
    host = std::make_shared<FakeAddinHost>();
    host->bars = {{"Tools", std::make_shared<FakeControl>()},
                  {"Standard", std::make_shared<FakeControl>()}};
    Globals().HostApplication = nullptr;
    system = std::make_shared<FakeSystem>();
    TheServices().system = system;
    CErrorHandler& handler = ErrorHandler();
    handler.SupportMail("");
    handler.ErrorHandlerActions(ehaLogFile);
    allocations_before_failure = at;
    EXPECT_NO_THROW(ConnectWith(0)) << at;
    return std::exchange(allocations_before_failure, -1) < 0;
  }
  // What the connection was to bring and did not.
  std::vector<std::string> Missing() {
    std::vector<std::string> missing;
    if (system->mutexes.empty()) missing.push_back("mutex");
    if (Globals().HostApplication != host) missing.push_back("host");
    if (ErrorHandler().ErrorHandlerActions() != 8) missing.push_back("actions");
    if (ErrorHandler().SupportMail().empty()) missing.push_back("support mail");
    for (const auto& [name, bar] : host->bars) {
      const FakeControl* popup = bar->Child("Scrivo");
      const bool is_whole =
          popup && popup->children.size() == 5 && popup->children.back()->face == 1445;
      if (!is_whole) missing.push_back("popup on " + name);
    }
    return missing;
  }
};

TEST_F(OutOfMemory, CostsTheConnectionNoMoreThanTheStepThatNeededIt) {
  std::set<std::string> missed;
  long at = 0;
  for (; Connects(at); ++at) {
    const std::vector<std::string> missing = Missing();
    EXPECT_LE(missing.size(), 1u) << "allocation " << at << ": " << missing.front();
    missed.insert(missing.begin(), missing.end());
  }
  EXPECT_TRUE(Missing().empty()) << "no allocation failed this time";
  EXPECT_EQ(missed, (std::set<std::string>{"mutex", "support mail", "popup on Standard",
                                           "popup on Tools"}));
}

}  // namespace
}  // namespace scrivo
