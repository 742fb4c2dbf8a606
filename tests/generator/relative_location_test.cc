#include "generator/relative_location.h"

#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

constexpr char kPageAddress[] = "file:///C:/Webs/site/docs/a.htm";

class RelativeLocationTest : public GeneratorTest {};

TEST_F(RelativeLocationTest, IsThePlaceInTheWebThatIsOpenInTheHost) {
  EXPECT_EQ(RelativeLocation(kPageAddress), "docs/a.htm");
  EXPECT_EQ(site.calls, (std::vector<std::string>{
                            "CurrentWeb", std::string("RelativeLocation ") + kPageAddress}));
}

TEST_F(RelativeLocationTest, IsEmptyWhenTheHostCannotTell) {
  site.Fail(std::string("RelativeLocation ") + kPageAddress, 1);
  EXPECT_EQ(RelativeLocation(kPageAddress), "");
  site.Fail("CurrentWeb", 1);
  EXPECT_EQ(RelativeLocation(kPageAddress), "");
  EXPECT_EQ(Reports(), 0);
}

TEST_F(RelativeLocationTest, IsEmptyWithoutAWebOrAHost) {
  site.is_open = false;
  EXPECT_EQ(RelativeLocation(kPageAddress), "");
  Globals().HostApplication = nullptr;
  EXPECT_EQ(RelativeLocation(kPageAddress), "");
  EXPECT_EQ(Reports(), 0);
}

}  // namespace
}  // namespace scrivo
