#include "cli/error_text.h"

namespace scrivo {
namespace {

std::string Advice(std::int32_t number) {
  switch (number) {
    case kDiskFull:
      return ". Free some space and try again.";
    case kPermissionDenied:
      return ". Check that you have permission to read and write there.";
    case kOutOfMemory:
      return ". Close other programs and try again.";
    default:
      return "";
  }
}

}  // namespace

std::string ErrorText(const Error& error) {
  // A text that ends as a sentence says what to do itself.
  const bool has_advice = error.description.ends_with('.') || error.description.ends_with('?');
  return has_advice ? error.description : error.description + Advice(error.number);
}

}  // namespace scrivo
