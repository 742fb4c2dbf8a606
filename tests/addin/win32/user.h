#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/win32/windows.h"

namespace scrivo {

// A user in a thread of its own, who says yes to every message box of this process and closes
// every form as soon as it is shown, and remembers them.
class User {
 public:
  User();
  ~User();
  User(const User&) = delete;
  User& operator=(const User&) = delete;

  // What was shown so far, in order: the text of a message box behind "message: ", the title of a
  // form behind "form: ".
  std::vector<std::string> Seen();
  // What to do with a form instead of closing it; called in the user's thread. Set before anything
  // is shown.
  std::function<void(HWND form)> on_form;

 private:
  void Look();
  void Meet(HWND window);

  std::atomic<bool> is_gone_ = false;
  std::mutex mutex_;
  std::vector<std::string> seen_;
  std::vector<HWND> met_;
  std::thread thread_;
};

}  // namespace scrivo
