#pragma once

#include <string>

#include "com/win32/ole.h"

namespace scrivo {

// Raises the Error that stands for a failed HRESULT. Its number is the run-time error of the same
// meaning where there is one (an unknown member is kObjectDoesNotSupportThis), else the HRESULT;
// its description is the system's text and `subject`, what the failed call was about.
[[noreturn]] void RaiseComError(HRESULT result, const std::string& subject);

// The number of an error that an object has raised itself: codes that carry a run-time error
// number (0x800A….) give that number, all others stay.
std::int32_t ErrorNumberOf(HRESULT result);

}  // namespace scrivo
