#pragma once

#include <string>
#include <vector>

#include "system/system_services.h"

namespace scrivo {

// A system whose clock stands still and whose answers a test chooses.
class FakeSystem : public SystemServices {
 public:
  std::string date = "21.11.2026";
  std::string time = "14:05:09";
  bool answers_extended_record = true;
  bool answers_basic_record = true;
  std::uint32_t platform_id = 2;
  std::vector<std::uint32_t> asked_record_sizes;
  std::vector<std::string> events;  // source and text, joined by ": "
  std::vector<std::string> mutexes;
  std::string module_name = "Scrivo";
  std::string module_folder = "/addin";
  int code_page = 1252;

  std::string DateText() override { return date; }
  std::string TimeText() override { return time; }
  bool PlatformId(std::uint32_t record_size, std::uint32_t* id) override {
    asked_record_sizes.push_back(record_size);
    *id = platform_id;
    return record_size == 156 ? answers_extended_record : answers_basic_record;
  }
  void WriteErrorEvent(const std::string& source, const std::string& text) override {
    events.push_back(source + ": " + text);
  }
  std::string ModuleName() override { return module_name; }
  std::string ModuleFolder() override { return module_folder; }
  void HoldMutex(const std::string& name) override { mutexes.push_back(name); }
  int AnsiCodePage() override { return code_page; }
  void SetAnsiCodePage(int value) override { code_page = value; }
};

}  // namespace scrivo
