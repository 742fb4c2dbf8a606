#pragma once

#include <string>

#include "system/system_services.h"

namespace scrivo {

// What Windows says about itself, and the module that contains this code: the library, when it is
// linked into one, whatever program loaded it.
class Win32System : public SystemServices {
 public:
  std::string DateText() override;
  std::string TimeText() override;
  bool PlatformId(std::uint32_t record_size, std::uint32_t* platform_id) override;
  void WriteErrorEvent(const std::string& source, const std::string& text) override;
  std::string ModuleName() override;
  std::string ModuleFolder() override;
  void HoldMutex(const std::string& name) override;
  int AnsiCodePage() override;
  void SetAnsiCodePage(int code_page) override { code_page_ = code_page; }
  std::string ToAnsi(std::string_view text) override;
  std::string FromAnsi(std::string_view ansi) override;

 private:
  int code_page_ = 0;  // chosen; 0: the system's own
};

}  // namespace scrivo
