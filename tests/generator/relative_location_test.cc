#include "generator/relative_location.h"

#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

constexpr char kPage[] = "file:///C:/Webs/site/docs/a.htm";

class RelativeLocationTest : public GeneratorTest {};

TEST_F(RelativeLocationTest, IsThePlaceInTheWebThatIsOpenInTheHost) {
  EXPECT_EQ(RelativeLocation(kPage), "docs/a.htm");
  EXPECT_EQ(site.calls,
            (std::vector<std::string>{"CurrentWeb", std::string("RelativeLocation ") + kPage}));
}

TEST_F(RelativeLocationTest, IsEmptyWhenTheHostCannotTell) {
  site.Fail(std::string("RelativeLocation ") + kPage, 1);
  EXPECT_EQ(RelativeLocation(kPage), "");
  site.Fail("CurrentWeb", 1);
  EXPECT_EQ(RelativeLocation(kPage), "");
  EXPECT_EQ(Reports(), 0);
}

TEST_F(RelativeLocationTest, IsEmptyWithoutAWebOrAHost) {
  site.is_open = false;
  EXPECT_EQ(RelativeLocation(kPage), "");
  Globals().HostApplication = nullptr;
  EXPECT_EQ(RelativeLocation(kPage), "");
  EXPECT_EQ(Reports(), 0);
}

}  // namespace
}  // namespace scrivo
