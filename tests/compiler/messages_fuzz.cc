// Any bytes as what a compiler prints: the messages in them hold no line end, and are the same
// whether the text is one or each line comes by itself.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "compiler/transcript.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const std::string& message : ScanForMessages(text)) {
    if (message.empty() || message.find_first_of("\r\n") != std::string::npos) std::abort();
    if (text.find(message) == std::string_view::npos) std::abort();
  }
  for (const PathStyle style : {PathStyle::kPosix, PathStyle::kWindows}) {
    LineCount whole(style), parts(style);
    whole.Add(text);
    for (std::size_t at = 0; at < size; at += 2) parts.Add(text.substr(at, 2));
    if (whole.Breaks() != parts.Breaks()) std::abort();
    const int percent = EstimateProgress(whole.Breaks(), static_cast<std::int32_t>(size));
    if (percent < 0 || percent > 100) std::abort();
  }
  return 0;
}
