#include "webs/disk_web.h"

#include "tests/webs/memory_web.h"

namespace scrivo {
namespace {

class DiskWebTest : public WithMemoryWeb {};

TEST_F(DiskWebTest, ShowsTheNavigationStructureByParent) {
  PutPage("index.htm", "Home");
  PutPage("a.htm", "A");
  PutPage("docs/b.htm", "B");
  PutStructure(
      "1000,index.htm,0,Home,0,1,1\r\nvti_globalpage:BW|true\r\n"
      "1001,a.htm,0,First,1000,1,0\r\n"
      "1002,docs/b.htm,0,Second,1000,1,0\r\n"
      "1003,docs/b.htm,0,Below,1001,1,0");
  const auto web = Open();
  EXPECT_EQ(Drawn(*web),
            "Home: index.htm\n-First: a.htm\n--Below: docs/b.htm\n-Second: docs/b.htm\n");
  EXPECT_EQ(Reported(), "");
}

}  // namespace
}  // namespace scrivo
