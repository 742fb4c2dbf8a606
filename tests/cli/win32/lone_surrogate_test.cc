// Names that are not text: to Windows, any UTF-16 units are a name.

#include "system/error.h"
#include "tests/cli/any_name.h"

namespace scrivo {
namespace {

TEST_F(AnyNameRun, APageNamedWithALoneSurrogateIsCompiled) {
  const std::string name = "a\xED\xA0\xB4.htm";  // U+D834
  try {
    Put(name, "<title>Alone</title>");
  } catch (const Error& error) {
    GTEST_SKIP() << "no such name can be on this disk: " << error.description;
  }
  EXPECT_EQ(Run({"tree", WebPath()}), 0) << err;
  EXPECT_NE(out.find("Alone [" + name + "]"), std::string::npos) << out;
  EXPECT_EQ(Compile(), 0) << err;
  EXPECT_EQ(err.find("error"), std::string::npos) << err;
  EXPECT_TRUE(out.starts_with("Made ")) << out;
  EXPECT_NE(out.find(": 3 pages, "), std::string::npos) << out;
}

}  // namespace
}  // namespace scrivo
