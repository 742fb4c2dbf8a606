#pragma once

#include <atomic>
#include <functional>
#include <thread>

#include "platform/win32/windows.h"

namespace scrivo {

// A user in a thread of its own: waits until this process shows a dialog, then answers it. The
// dialog must be shown by the thread that made this object, which also destroys it afterwards.
class DialogAnswer {
 public:
  // `answer` is called once, in the other thread, with the dialog's window.
  explicit DialogAnswer(std::function<void(HWND)> answer);
  ~DialogAnswer();
  DialogAnswer(const DialogAnswer&) = delete;
  DialogAnswer& operator=(const DialogAnswer&) = delete;

 private:
  std::atomic<bool> given_up_ = false;
  std::thread thread_;
};

// Presses a dialog's button without waiting for what it does.
void Press(HWND dialog, int button);

}  // namespace scrivo
