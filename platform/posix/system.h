#pragma once

#include <cstdint>
#include <string>

#include "system/system_services.h"
#include "text/code_page.h"

namespace scrivo {

// What a POSIX system tells. It has no Windows platform, so PlatformId never answers; error events
// go to the system log. Its ANSI code page is 1252 until another is set. HoldMutex raises Error
// (kObjectDoesNotSupportThis).
class PosixSystem : public SystemServices {
 public:
  std::string DateText() override;
  std::string TimeText() override;
  bool PlatformId(std::uint32_t record_size, std::uint32_t* platform_id) override;
  void WriteErrorEvent(const std::string& source, const std::string& text) override;
  std::string ModuleName() override;
  std::string ModuleFolder() override;
  void HoldMutex(const std::string& name) override;
  int AnsiCodePage() override { return code_page_; }
  void SetAnsiCodePage(int code_page) override { code_page_ = code_page; }
  int PipeCodePage() override { return kUtf8CodePage; }

 private:
  int code_page_ = 1252;
};

}  // namespace scrivo
