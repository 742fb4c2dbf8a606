#include "ui/item_panel.h"

#include <gtest/gtest.h>

#include "system/error.h"

namespace scrivo {
namespace {

TEST(ItemPanelTest, RowsAreFoundByKeyAndKeepTheirOrder) {
  ItemPanel panel({{.key = "B", .caption = "", .kind = ItemKind::kSeparator},
                   {.key = "A", .caption = "Title:", .kind = ItemKind::kText}});
  panel["A"].text = "typed";
  ASSERT_EQ(panel.Rows().size(), 2U);
  EXPECT_EQ(panel.Rows()[0].key, "B");
  EXPECT_EQ(panel.Rows()[1].text, "typed");
}

TEST(ItemPanelTest, AnUnknownKeyIsAnErrorThatNamesIt) {
  ItemPanel panel({{.key = "A", .caption = "", .kind = ItemKind::kText}});
  try {
    panel["a"];
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.number, kInvalidProcedureCall);
    EXPECT_EQ(error.description, "There is no item \"a\"");
  }
}

}  // namespace
}  // namespace scrivo
