#include "system/error.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "errors/error_handler.h"
#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

TEST(ErrorFrom, KeepsAnErrorAsItIs) {
  Error thrown(70, "source", "text");
  thrown.line = 12;
  const Error error = ErrorFrom(std::make_exception_ptr(thrown));
  EXPECT_EQ(error.number, 70);
  EXPECT_EQ(error.source, "source");
  EXPECT_EQ(error.description, "text");
  EXPECT_EQ(error.line, 12);
}

TEST(ErrorFrom, TurnsTheLanguagesFailuresIntoErrors) {
  EXPECT_EQ(ErrorFrom(std::make_exception_ptr(std::bad_alloc())).number, kOutOfMemory);
  const Error odd = ErrorFrom(std::make_exception_ptr(std::logic_error("odd")));
  EXPECT_EQ(odd.number, kInternalError);
  EXPECT_EQ(odd.description, "odd");
  EXPECT_EQ(ErrorFrom(std::make_exception_ptr(7)).description, "Internal error");
}

class ComponentErrors : public WithFakeServices {};

TEST_F(ComponentErrors, CarryTheModuleAndTheClass) {
  ExpectError([] { RaiseComponentError("CThing", kComponentErrorBase + 1, "text"); },
              kComponentErrorBase + 1, "Scrivo.CThing", "text");
}

TEST_F(ComponentErrors, StandForWhateverFailsInAMember) {
  const auto fail = [](auto failure) { OrComponentFailure("CThing", 18, [&] { throw failure; }); };
  const std::string text = "CThing component failure";
  ExpectError([&] { fail(Error(70, "", "x")); }, 18, "Scrivo.CThing", text);
  ExpectError([&] { fail(std::runtime_error("x")); }, 18, "Scrivo.CThing", text);
  ExpectError([&] { fail(1); }, 18, "Scrivo.CThing", text);
  EXPECT_EQ(OrComponentFailure("CThing", 18, [] { return 5; }), 5);
}

}  // namespace
}  // namespace scrivo
