// A connection that runs out of memory once, at each place where it asks for some.

#include <cstdlib>
#include <new>
#include <set>
#include <utility>

#include "tests/addin/addin_test.h"

namespace {

// How many allocations of this program succeed before one fails; negative when none is to fail.
long allocations_before_failure = -1;

}  // namespace

void* operator new(std::size_t size) {
  if (allocations_before_failure >= 0 && allocations_before_failure-- == 0) throw std::bad_alloc();
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

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
