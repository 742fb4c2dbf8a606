#include "html/page_kind.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(PageKind, IsToldByTheExtensionInAnyCase) {
  EXPECT_EQ(KindOfPage("a.htm"), PageKind::kPlain);
  EXPECT_EQ(KindOfPage("docs/A.HTML"), PageKind::kPlain);
  for (const char* name : {"a.xhtml", "a.xhtm", "a.shtml", "a.shtm", "a.stm"}) {
    EXPECT_EQ(KindOfPage(name), PageKind::kVariant) << name;
  }
  for (const char* name : {"a.asp", "a.aspx", "a.php"}) {
    EXPECT_EQ(KindOfPage(name), PageKind::kByServer) << name;
  }
  for (const char* name : {"", "htm", "a.htm.bak", "a.htmx", "a.gif", "a.htm/b", "a."}) {
    EXPECT_EQ(KindOfPage(name), PageKind::kNone) << name;
  }
}

TEST(PageKind, TakesAnExtensionByItself) {
  EXPECT_EQ(KindOfExtension("Htm"), PageKind::kPlain);
  EXPECT_EQ(KindOfExtension(".htm"), PageKind::kNone);
  EXPECT_EQ(KindOfExtension(""), PageKind::kNone);
}

}  // namespace
}  // namespace scrivo
