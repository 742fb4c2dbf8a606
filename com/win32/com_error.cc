#include "com/win32/com_error.h"

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
  char text[512] = "";
  DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                static_cast<DWORD>(result), 0, text, sizeof text, nullptr);
  while (length > 0 &&
         (static_cast<unsigned char>(text[length - 1]) <= ' ' || text[length - 1] == '.')) {
    --length;
  }
  return std::string(text, length);
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
