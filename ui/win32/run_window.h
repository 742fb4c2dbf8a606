#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ui/form_views.h"
#include "ui/win32/form_window.h"
#include "ui/win32/native_window.h"

namespace scrivo {

// A panel whose caption shows progress as text and whose fill shows it as an area from the left.
class ProgressPanel : public NativeWindow {
 public:
  explicit ProgressPanel(HWND parent);

  // False when it shows just that already.
  bool Set(const std::string& caption, int flood_percent);
  // Not owned; must live as long as the panel uses it.
  void SetFont(HFONT font);

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void Paint();
  void PaintPart(HDC device, const RECT& part, const RECT& whole, int background, int text) const;

  std::string caption_;
  int flood_percent_ = 0;
  HFONT font_ = nullptr;
};

// The compiler run as a real window: the transcript, the progress panel and the Close button.
// Modeless.
class RunWindow : public FormWindow, public RunView {
 public:
  // `on_close` is called when the user asks to close the window (button, Escape or title bar) and
  // may; it unloads the form, which destroys this object.
  explicit RunWindow(std::function<void()> on_close);
  ~RunWindow() override;

  void ShowModeless() override;
  void ShowBusy(bool busy) override;
  void EnableClose(bool enabled) override;
  void SetProgress(const std::string& caption, int flood_percent) override;
  void ReplaceTranscript(const std::string& text) override;
  void AppendTranscript(const std::string& text) override;
  void ShowHeldBack() override;
  void Repaint() override;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void UseFont(HFONT font) override;
  void LayOut() override;
  SIZE SmallestSize() override;
  HWND FirstFocus() override;
  void OnEscape() override;

 private:
  // Shows what was appended since the last time.
  void ShowNew();
  // Shows the whole transcript, or as much of its end as the control can take.
  void ShowEnd();

  FormKeys keys_;
  std::function<void()> on_close_;
  HWND transcript_ = nullptr;
  HWND close_ = nullptr;
  std::unique_ptr<ProgressPanel> progress_;
  int line_height_ = 0;  // of the font, in pixels
  bool busy_ = false;
  bool has_news_ = true;  // since the last Repaint
  bool may_close_ = true;

  std::string text_;            // the whole transcript
  std::size_t shown_from_ = 0;  // where in it the edit control's text begins
  std::size_t shown_to_ = 0;    // and ends
  LONGLONG show_credit_ = 0;    // how long showing may take, in microseconds
  LONGLONG counted_at_ = 0;     // when that was counted last
};

}  // namespace scrivo
