#include "tests/addin/addin_test.h"

namespace scrivo {
namespace {

class CommandBarsTest : public AddinTest {
 protected:
  struct Expected {
    const char* caption;
    bool begins_group;
    std::int32_t face;
  };
  static constexpr Expected kButtons[] = {
      {"Compile", false, 2138},
      {"Decompile", false, 2138},
      {"Scrivo Builder Sample Web", true, 23},
      {"Help", false, 983},
      {"Scrivo Builder Web site", true, 1445},
  };

  void ExpectPopup(FakeControl& bar) {
    ASSERT_EQ(bar.children.size(), 1u);
    const FakeControl& popup = *bar.children[0];
    EXPECT_EQ(popup.type, 10);
    EXPECT_EQ(popup.temporary, std::optional<bool>(true));
    EXPECT_EQ(popup.caption, "Scrivo");
    ASSERT_EQ(popup.children.size(), std::size(kButtons));
    for (std::size_t i = 0; i < std::size(kButtons); ++i) {
      const FakeControl& button = *popup.children[i];
      EXPECT_EQ(button.type, 1);
      EXPECT_EQ(button.temporary, std::nullopt);
      EXPECT_EQ(button.caption, kButtons[i].caption);
      EXPECT_EQ(button.begins_group, kButtons[i].begins_group);
      EXPECT_EQ(button.face, kButtons[i].face);
      EXPECT_EQ(button.action, "!<Kestrel.Connect>");
      EXPECT_EQ(button.handlers.size(), 1u);
    }
  }
};

TEST_F(CommandBarsTest, BothBarsGetAPopupWithTheFiveButtons) {
  ConnectWith(0);
  ExpectPopup(Tools());
  ExpectPopup(Standard());
  EXPECT_EQ(instance->reads, 10) << "the identifier is read once for every button";
}

TEST_F(CommandBarsTest, TheSeparatorComesBeforeTheCaption) {
  ConnectWith(0);
  const std::vector<std::string> with_separator = {"BeginGroup", "Caption", "OnAction", "FaceId"};
  const std::vector<std::string> without = {"Caption", "OnAction", "FaceId"};
  for (FakeControl* bar : {&Tools(), &Standard()}) {
    EXPECT_EQ(Button(*bar, "Compile").set, without);
    EXPECT_EQ(Button(*bar, "Decompile").set, without);
    EXPECT_EQ(Button(*bar, "Scrivo Builder Sample Web").set, with_separator);
    EXPECT_EQ(Button(*bar, "Help").set, without);
    EXPECT_EQ(Button(*bar, "Scrivo Builder Web site").set, with_separator);
  }
}

TEST_F(CommandBarsTest, TheMenuIsMadeBeforeTheToolbarAndEachPopupIsNamedBeforeItsButtons) {
  ConnectWith(0);
  std::vector<std::string> made;
  for (const std::string& entry : host->log) {
    if (entry == "set Caption" && made.back() != "add 10") continue;  // a button's
    if (!entry.starts_with("set") || entry == "set Caption") made.push_back(entry);
  }
  const std::vector<std::string> popup = {"add 10", "set Caption", "add 1", "add 1",
                                          "add 1",  "add 1",       "add 1"};
  std::vector<std::string> expected = {"bar Tools", "bar Tools"};
  expected.insert(expected.end(), popup.begin(), popup.end());
  expected.push_back("bar Standard");
  expected.insert(expected.end(), popup.begin(), popup.end());
  EXPECT_EQ(made, expected);
}

TEST_F(CommandBarsTest, AButtonsReferenceIsStoredBeforeItsPropertiesAreSet) {
  const Connect::ButtonReferences& buttons = connect->Buttons();
  const std::shared_ptr<CommandBarControl>* const in_order[] = {
      &buttons.cbBtnKestrel,        &buttons.cbBtnDecompile,
      &buttons.cbBtnOpenSample,     &buttons.cbBtnHelp,
      &buttons.cbBtnHome,           &buttons.cbBtnPanelKestrel,
      &buttons.cbBtnPanelDecompile, &buttons.cbBtnPanelOpenSample,
      &buttons.cbBtnPanelHelp,      &buttons.cbBtnPanelHome};
  std::size_t added = 0;
  host->on_note = [&] {
    if (host->log.back() == "add 1") ++added;
    if (host->log.back().starts_with("set") && added > 0) {
      EXPECT_NE(*in_order[added - 1], nullptr) << host->log.back() << " of button " << added;
    }
  };
  // The popup on the toolbar has its caption set while the menu's last button is there already.
  ConnectWith(0);
  EXPECT_EQ(added, std::size(in_order));
}

TEST_F(CommandBarsTest, AButtonThatIsNoneIsPassedOverInTheMenu) {
  host->missing_control = 3;  // behind the popup and "Compile"
  ConnectWith(0);
  std::vector<std::string> captions;
  for (const auto& button : Tools().Child("Scrivo")->children) captions.push_back(button->caption);
  EXPECT_EQ(captions, (std::vector<std::string>{"Compile", "Scrivo Builder Sample Web", "Help",
                                                "Scrivo Builder Web site"}));
  EXPECT_EQ(connect->Buttons().cbBtnDecompile, nullptr);
  EXPECT_NE(connect->Buttons().cbBtnHome, nullptr);
  ExpectPopup(Standard());
}

TEST_F(CommandBarsTest, AButtonThatIsNoneEndsTheToolbarsPopup) {
  host->missing_control = 9;  // behind the menu's six, the popup and "Compile"
  ConnectWith(0);
  ExpectPopup(Tools());
  const auto& buttons = Standard().Child("Scrivo")->children;
  ASSERT_EQ(buttons.size(), 1u);
  EXPECT_EQ(buttons[0]->caption, "Compile");
  EXPECT_NE(connect->Buttons().cbBtnPanelKestrel, nullptr);
  EXPECT_EQ(connect->Buttons().cbBtnPanelOpenSample, nullptr);
}

TEST_F(CommandBarsTest, WithoutAToolsBarTheToolbarStillGetsItsPopup) {
  host->bars.erase("Tools");
  ConnectWith(0);
  ExpectPopup(Standard());
  EXPECT_EQ(connect->Buttons().cbBtnKestrel, nullptr);
}

TEST_F(CommandBarsTest, WithoutAToolbarTheMenuStillGetsItsPopup) {
  host->bars.erase("Standard");
  ConnectWith(0);
  ExpectPopup(Tools());
  EXPECT_EQ(connect->Buttons().cbBtnPanelKestrel, nullptr);
}

TEST_F(CommandBarsTest, AVisiblePopupLeftInTheMenuIsTakenForTheMenu) {
  auto left_over = std::make_shared<FakeControl>();
  left_over->caption = "Scrivo";
  Tools().children.push_back(left_over);
  ConnectWith(0);
  EXPECT_EQ(Tools().children.size(), 1u);
  EXPECT_TRUE(left_over->children.empty());
  EXPECT_EQ(connect->Buttons().cbBtnKestrel, nullptr);
  ExpectPopup(Standard());
}

TEST_F(CommandBarsTest, AHiddenPopupLeftInTheMenuGetsASecondOneBesideIt) {
  auto left_over = std::make_shared<FakeControl>();
  left_over->caption = "Scrivo";
  left_over->visible = false;
  Tools().children.push_back(left_over);
  ConnectWith(0);
  ASSERT_EQ(Tools().children.size(), 2u);
  EXPECT_EQ(Tools().children[1]->children.size(), 5u);
}

TEST_F(CommandBarsTest, ASecondConnectionAddsAnotherPopupToTheToolbarOnly) {
  ConnectWith(0);
  ConnectWith(0);
  EXPECT_EQ(Tools().children.size(), 1u);
  EXPECT_EQ(Standard().children.size(), 2u);
}

TEST_F(CommandBarsTest, AFailureInTheMiddleKeepsTheButtonsMadeSoFarAndAddsNoMore) {
  ConnectWith(0);
  const int calls_of_both = host->calls;
  for (int n = 2; n < calls_of_both; ++n) {
    auto failing = std::make_shared<FakeAddinHost>();
    failing->bars = {{"Tools", std::make_shared<FakeControl>()},
                     {"Standard", std::make_shared<FakeControl>()}};
    failing->fail_every = n;
    Connect second;
    second.AddinInstance_OnConnection(failing, 0, instance);
    for (auto& [name, bar] : failing->bars) {
      if (bar->children.empty()) continue;
      const auto& buttons = bar->children[0]->children;
      for (std::size_t i = 0; i + 1 < buttons.size(); ++i) {
        EXPECT_EQ(buttons[i]->caption, kButtons[i].caption) << name << ", failing at " << n;
        EXPECT_EQ(buttons[i]->face, kButtons[i].face) << name << ", failing at " << n;
      }
    }
  }
}

}  // namespace
}  // namespace scrivo
