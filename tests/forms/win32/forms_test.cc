#include "tests/forms/win32/forms_test.h"

#include <cctype>
#include <set>

namespace scrivo {
namespace {

std::vector<HWND> AllControls(HWND window) {
  std::vector<HWND> controls;
  for (const char* kind : {"EDIT", "COMBOBOX", "BUTTON", "STATIC"}) {
    for (HWND control : ControlsOf(window, kind)) controls.push_back(control);
  }
  return controls;
}

// The width of a caption without its access key mark.
int CaptionWidth(HWND control) {
  std::string caption = TextOf(control);
  std::erase(caption, '&');
  const auto font = reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0));
  return TextSize(control, font, caption).cx;
}

}  // namespace

void FormsTest::ExpectTidy(const std::string& title) {
  const RECT inside = PlaceOf(Window(title));
  const std::vector<HWND> controls = AllControls(Window(title));
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const RECT place = PlaceOf(controls[i]);
    const std::string text = TextOf(controls[i]).substr(0, 40);
    RECT common;
    IntersectRect(&common, &place, &inside);
    EXPECT_TRUE(EqualRect(&common, &place)) << text << " lies outside";
    EXPECT_FALSE(IsRectEmpty(&place)) << text << " has no place";
    for (std::size_t k = i + 1; k < controls.size(); ++k) {
      const RECT other = PlaceOf(controls[k]);
      EXPECT_FALSE(IntersectRect(&common, &place, &other))
          << text << " covers " << TextOf(controls[k]);
    }
  }
  for (const char* kind : {"BUTTON", "STATIC"}) {
    for (HWND control : ControlsOf(Window(title), kind)) {
      if (TextOf(control) == "...") continue;  // drawn to fit
      EXPECT_LE(CaptionWidth(control), WidthOf(control)) << TextOf(control) << " is cut off";
    }
  }
}

void FormsTest::ExpectTabOrder(const std::string& title, const std::vector<HWND>& order) {
  HWND window = Window(title);
  for (std::size_t i = 0; i < order.size(); ++i) {
    HWND next = order[(i + 1) % order.size()];
    ASSERT_NE(order[i], nullptr) << i;
    EXPECT_EQ(GetNextDlgTabItem(window, order[i], FALSE), next) << i;
    EXPECT_EQ(GetNextDlgTabItem(window, next, TRUE), order[i]) << i;
  }
}

void FormsTest::ExpectAccessKeys(const std::string& title, int count) {
  std::set<int> keys;
  for (const char* kind : {"BUTTON", "STATIC"}) {
    for (HWND control : ControlsOf(Window(title), kind)) {
      const std::string text = TextOf(control);
      const std::size_t mark = text.find('&');
      if (mark == std::string::npos) continue;
      ASSERT_LT(mark + 1, text.size()) << text;
      EXPECT_TRUE(keys.insert(std::tolower(text[mark + 1])).second) << text;
    }
  }
  EXPECT_EQ(static_cast<int>(keys.size()), count);
}

}  // namespace scrivo
