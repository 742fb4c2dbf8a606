// Connect's popups and buttons on the host's command bars.

#include "addin/connect.h"
#include "errors/frame.h"

namespace scrivo {

// One button of both popups.
struct Connect::ButtonRow {
  using Reference = std::shared_ptr<CommandBarControl> ButtonReferences::*;
  using Handler = void (Connect::*)(CommandBarControl&, bool&);

  const char* caption;
  bool begins_group;
  std::int32_t face;
  Reference on_tools;
  Handler tools_click;
  Reference on_standard;
  Handler standard_click;
};

// "Compile" and "Decompile" share a face on purpose.
const Connect::ButtonRow Connect::kButtonRows[] = {
    {"Compile", false, 2138, &ButtonReferences::cbBtnKestrel, &Connect::cbBtnKestrel_Click,
     &ButtonReferences::cbBtnPanelKestrel, &Connect::cbBtnPanelKestrel_Click},
    {"Decompile", false, 2138, &ButtonReferences::cbBtnDecompile, &Connect::cbBtnDecompile_Click,
     &ButtonReferences::cbBtnPanelDecompile, &Connect::cbBtnPanelDecompile_Click},
    {"Scrivo Builder Sample Web", true, 23, &ButtonReferences::cbBtnOpenSample,
     &Connect::cbBtnOpenSample_Click, &ButtonReferences::cbBtnPanelOpenSample,
     &Connect::cbBtnPanelOpenSample_Click},
    {"Help", false, 983, &ButtonReferences::cbBtnHelp, &Connect::cbBtnHelp_Click,
     &ButtonReferences::cbBtnPanelHelp, &Connect::cbBtnPanelHelp_Click},
    {"Scrivo Builder Web site", true, 1445, &ButtonReferences::cbBtnHome, &Connect::cbBtnHome_Click,
     &ButtonReferences::cbBtnPanelHome, &Connect::cbBtnPanelHome_Click},
};

namespace {

constexpr const char* kPopupCaption = "Scrivo";

std::shared_ptr<CommandBarControls> AddPopup(CommandBar& bar) {
  const std::shared_ptr<CommandBarControl> popup = Needed(bar.Controls()).Add(kControlPopup, true);
  Needed(popup).Caption(kPopupCaption);
  return popup->Controls();
}

// The host loads the add-in that this names when a click finds it unloaded.
std::string ActionOf(AddInInstance& instance) { return "!<" + instance.ProgId() + ">"; }

}  // namespace

void Connect::CreateToolsMenu(AddInInstance& AddInInst) {
  bool is_there = false;
  IgnoringErrors([&] {
    const std::shared_ptr<CommandBar> tools = Host().Bar("Tools");
    is_there = Needed(Needed(Needed(tools).Controls()).Item(kPopupCaption)).Visible();
  });
  if (is_there) return;
  std::shared_ptr<CommandBar> bar;
  IgnoringErrors([&] { bar = Host().Bar("Tools"); });
  if (!bar) return;
  const std::shared_ptr<CommandBarControls> controls = AddPopup(*bar);
  for (const ButtonRow& row : kButtonRows) {
    std::shared_ptr<CommandBarControl>& button = buttons_.*row.on_tools;
    button = Needed(controls).Add(kControlButton, std::nullopt);
    if (!button) continue;
    button->OnClick([this, &row](CommandBarControl& Ctrl, bool& CancelDefault) {
      (this->*row.tools_click)(Ctrl, CancelDefault);
    });
    if (row.begins_group) button->BeginGroup(true);
    button->Caption(row.caption);
    button->OnAction(ActionOf(AddInInst));
    button->FaceId(row.face);
  }
}

void Connect::CreateStandardToolbarPopup(AddInInstance& AddInInst) {
  std::shared_ptr<CommandBar> bar;
  IgnoringErrors([&] { bar = Host().Bar("Standard"); });
  // There is no look for an older popup here: each connection adds one more.
  const std::shared_ptr<CommandBarControls> controls = AddPopup(Needed(bar));
  for (const ButtonRow& row : kButtonRows) {
    std::shared_ptr<CommandBarControl>& button = buttons_.*row.on_standard;
    button = Needed(controls).Add(kControlButton, std::nullopt);
    Needed(button).OnClick([this, &row](CommandBarControl& Ctrl, bool& CancelDefault) {
      (this->*row.standard_click)(Ctrl, CancelDefault);
    });
    if (row.begins_group) button->BeginGroup(true);
    button->Caption(row.caption);
    button->OnAction(ActionOf(AddInInst));
    button->FaceId(row.face);
  }
}

}  // namespace scrivo
