// Names that are not UTF-8: to a POSIX system, any bytes are a name.

#include "tests/cli/any_name.h"

namespace scrivo {
namespace {

TEST_F(AnyNameRun, APageNamedInLatin1IsCompiled) {
  Put("caf\xE9.htm", "<title>Coffee</title>");
  Put("_vti_pvt/structure.cnf", "3.0.0.507\r\n2000\r\n1000,caf\xE9.htm,0,Caf\xC3\xA9,0,1,0\r\n");
  EXPECT_EQ(Compile(), 0) << err;
  EXPECT_EQ(err.find("error"), std::string::npos) << err;
  Unpack();
  EXPECT_TRUE(output.Has("un packed/caf\xE9.htm") || output.Has("un packed/caf\xC3\xA9.htm"));
  EXPECT_NE(output.Read("un packed/Scrivo.hhc").find("VALUE=\"Caf\xE9\">"), std::string::npos);
  EXPECT_NE(output.Read("un packed/Scrivo.hhc").find("VALUE=\"caf\xE9.htm\">"), std::string::npos);
}

// As Windows' names with half a surrogate pair are kept inside; disks there may refuse them.
TEST_F(AnyNameRun, APageNamedInBytesThatNoCodePageExplainsIsCompiled) {
  const std::string name = "a\xED\xA0\xB4\x81.htm";
  Put(name, "<title>Alone</title>");
  EXPECT_EQ(Compile(), 0) << err;
  EXPECT_EQ(err.find("error"), std::string::npos) << err;
  Unpack();
  EXPECT_TRUE(output.Has("un packed/" + name));
}

}  // namespace
}  // namespace scrivo
