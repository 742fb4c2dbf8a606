#include "webs/service_notes.h"

#include <gtest/gtest.h>

#include "tests/webs/memory_web.h"

namespace scrivo {
namespace {

constexpr char kFile[] = "/web/_vti_pvt/service.cnf";

TEST(ServiceNotes, TellCharsetAndLanguage) {
  const ServiceNotes notes = ParseServiceNotes(
      "vti_encoding:SR|utf8-nl\r\nvti_defaultlanguage:SR|zh-tw\r\nno line of this kind\n"
      "vti_defaultcharset:SR|big5\r\n");
  EXPECT_EQ(notes.charset, "big5");
  EXPECT_EQ(notes.language, "zh-tw");
}

TEST(ServiceNotes, MaySayNothing) {
  const ServiceNotes notes = ParseServiceNotes("vti_defaultcharset\nvti_defaultcharset:SR\n:|");
  EXPECT_EQ(notes.charset + notes.language, "");
}

class ServiceNotesOnDisk : public WithMemoryWeb {};

TEST_F(ServiceNotesOnDisk, AreNoneWhereTheFileIsMissingOrUnreadable) {
  EXPECT_EQ(ReadServiceNotes(*disk, "/web", PathStyle::kPosix).charset, "");
  Put("_vti_pvt/service.cnf", "vti_defaultcharset:SR|gb2312\n");
  EXPECT_EQ(ReadServiceNotes(*disk, "/web", PathStyle::kPosix).charset, "gb2312");
  disk->failures.insert({std::string("open ") + kFile, Error(kPermissionDenied, "", "no")});
  EXPECT_EQ(ReadServiceNotes(*disk, "/web", PathStyle::kPosix).charset, "");
}

}  // namespace
}  // namespace scrivo
