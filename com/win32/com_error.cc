#include "com/win32/com_error.h"

#include "platform/win32/wide.h"
#include "system/error.h"

namespace scrivo {
namespace {

struct Meaning {
  HRESULT result;
  std::int32_t number;
};

const Meaning kMeanings[] = {
    {DISP_E_UNKNOWNNAME, kObjectDoesNotSupportThis},
    {DISP_E_MEMBERNOTFOUND, kObjectDoesNotSupportThis},
    {DISP_E_TYPEMISMATCH, kTypeMismatch},
    {DISP_E_OVERFLOW, kOverflow},
    {E_OUTOFMEMORY, kOutOfMemory},
};

// The system's text for a code, without its line end and point; "" when it has none.
std::string SystemText(HRESULT result) {
  wchar_t text[512] = L"";
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                static_cast<DWORD>(result), 0, text, 512, nullptr);
  while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.')) --length;
  return Narrow(std::wstring_view(text, length));
}

}  // namespace

std::int32_t ErrorNumberOf(HRESULT result) {
  constexpr auto kRunTimeErrors = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 0);
  const bool is_run_time_error = (result & ~0xFFFF) == kRunTimeErrors;
  return static_cast<std::int32_t>(is_run_time_error ? result & 0xFFFF : result);
}

void RaiseComError(HRESULT result, const std::string& subject) {
  std::int32_t number = ErrorNumberOf(result);
  for (const Meaning& meaning : kMeanings) {
    if (meaning.result == result) number = meaning.number;
  }
  std::string text = SystemText(result);
  if (text.empty()) text = "Automation error";
  text.append(": ").append(subject);
  throw Error(number, "Automation", text);
}

}  // namespace scrivo
