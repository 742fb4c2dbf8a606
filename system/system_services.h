#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivo {

// What the system says about itself and this program.
class SystemServices {
 public:
  virtual ~SystemServices() = default;

  // Today's date and the time of day in the user's regional short forms.
  virtual std::string DateText() = 0;
  virtual std::string TimeText() = 0;

  // The platform identifier (2: the NT family), asked with a version record of `record_size` bytes
  // (156 or 148); false when the system does not answer.
  virtual bool PlatformId(std::uint32_t record_size, std::uint32_t* platform_id) = 0;

  // Writes one entry of type error to the Application event log. Throws Error when that fails.
  virtual void WriteErrorEvent(const std::string& source, const std::string& text) = 0;

  // The file name of the running library or program, without folder and extension.
  virtual std::string ModuleName() = 0;
  // The folder of the running library or program, without a separator at its end.
  virtual std::string ModuleFolder() = 0;

  // Creates or opens a named mutex and keeps it until the process ends.
  virtual void HoldMutex(const std::string& name) = 0;

  // The code page of ANSI text, such as 1252: the system's own until another was chosen.
  virtual int AnsiCodePage() = 0;
  virtual void SetAnsiCodePage(int code_page) = 0;
  // Text in that code page: what ToAnsi and FromAnsi below give.
  virtual std::string ToAnsi(std::string_view text);
  virtual std::string FromAnsi(std::string_view ansi);
  // The code page of the text that console programs print: the ANSI code page unless overridden.
  virtual int PipeCodePage();
};

// Text inside is UTF-8. Here it becomes the bytes of the ANSI code page, at the edges that need
// them (the files that the add-in writes, the registry, calls that take ANSI text), and comes back
// from there. Lengths and cuts at these edges are of such bytes.

// Text for people. What the code page lacks becomes "?", or on Windows a letter that looks like it.
std::string ToAnsi(std::string_view text);
std::string FromAnsi(std::string_view ansi);

// The code page of the text that console programs print: on Windows the ANSI code page, UTF-8
// elsewhere.
int PipeCodePage();

}  // namespace scrivo
