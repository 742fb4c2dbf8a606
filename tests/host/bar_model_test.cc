#include "host/bar_model.h"

#include <gtest/gtest.h>

namespace scrivo::host {
namespace {

class BarModelTest : public ::testing::Test {
 protected:
  std::shared_ptr<BarControl> Add(Bar* bar, BarControlType type, const std::string& caption) {
    const auto control = bar->Add(type);
    control->caption = caption;
    return control;
  }
  // A menu as text: "-" for a separator, a popup's lines in brackets.
  static std::string Drawn(const std::vector<MenuLine>& lines) {
    std::string text;
    for (const MenuLine& line : lines) {
      text += line.control ? line.control->caption : "-";
      if (line.control && line.control->bar) text += "[" + Drawn(line.lines) + "]";
      text += " ";
    }
    return text;
  }

  BarModel model;
  std::shared_ptr<Bar> bar = model.AddBuiltIn("Tools");
};

TEST_F(BarModelTest, FindsBarsWhateverTheirCase) {
  EXPECT_EQ(model.Find("TOOLS"), bar);
  EXPECT_EQ(model.Find("Standard"), nullptr);
}

TEST_F(BarModelTest, FindsTheFirstControlWithACaptionWithoutItsMarks) {
  const auto first = Add(bar.get(), kBarButton, "&Find && go");
  Add(bar.get(), kBarButton, "Find & go");
  EXPECT_EQ(bar->Find("find && GO"), first);
  EXPECT_EQ(bar->Find("F&ind && go"), first);
  EXPECT_EQ(bar->Find("Find"), nullptr);
  EXPECT_EQ(bar->Find(""), nullptr);
}

TEST_F(BarModelTest, AddsAtAPlaceOrAtTheEnd) {
  Add(bar.get(), kBarButton, "a");
  Add(bar.get(), kBarButton, "b");
  bar->Add(kBarButton, 1)->caption = "between";
  bar->Add(kBarButton, 99)->caption = "last";
  EXPECT_EQ(Drawn(MenuOf(*bar)), "a between b last ");
}

TEST_F(BarModelTest, OnlyPopupsHaveAMenuOfTheirOwn) {
  EXPECT_NE(bar->Add(kBarPopup)->bar, nullptr);
  EXPECT_EQ(bar->Add(kBarButton)->bar, nullptr);
}

TEST_F(BarModelTest, ARemovedControlStandsNowhere) {
  const auto control = Add(bar.get(), kBarButton, "a");
  Remove(control.get());
  EXPECT_TRUE(bar->controls.empty());
  EXPECT_EQ(control->owner.lock(), nullptr);
  Remove(control.get());
}

TEST_F(BarModelTest, TemporaryControlsAreDroppedOthersStay) {
  int changes = 0;
  Add(bar.get(), kBarPopup, "goes")->temporary = true;
  Add(bar.get(), kBarButton, "stays");
  model.on_change = [&] { ++changes; };
  model.DropTemporaries();
  EXPECT_EQ(Drawn(MenuOf(*bar)), "stays ");
  EXPECT_EQ(changes, 1);
}

TEST_F(BarModelTest, AMenuShowsVisibleControlsAndTheSeparatorsBetweenThem) {
  Add(bar.get(), kBarButton, "first")->begin_group = true;
  const auto popup = Add(bar.get(), kBarPopup, "popup");
  Add(popup->bar.get(), kBarButton, "hidden")->visible = false;
  Add(popup->bar.get(), kBarButton, "x")->begin_group = true;
  Add(popup->bar.get(), kBarButton, "y")->begin_group = true;
  const auto unseen = Add(bar.get(), kBarButton, "unseen");
  unseen->begin_group = true;
  unseen->visible = false;
  EXPECT_EQ(Drawn(MenuOf(*bar)), "first popup[x - y ] ");
}

TEST_F(BarModelTest, ACommandIsBuiltIn) {
  int runs = 0;
  const auto command = BarModel::AddCommand(bar.get(), 459, "Refresh", 459, [&] { ++runs; });
  EXPECT_TRUE(command->IsBuiltIn());
  EXPECT_FALSE(Add(bar.get(), kBarButton, "own")->IsBuiltIn());
  command->command();
  EXPECT_EQ(runs, 1);
}

TEST_F(BarModelTest, AnActionNamesItsAddInBetweenItsMarks) {
  EXPECT_EQ(AddinOfAction("!<Kestrel.Connect>"), "Kestrel.Connect");
  for (const char* other : {"", "!<>", "Macro", "<Kestrel.Connect>", "!<Kestrel.Connect", "!<"}) {
    EXPECT_EQ(AddinOfAction(other), "") << other;
  }
}

}  // namespace
}  // namespace scrivo::host
