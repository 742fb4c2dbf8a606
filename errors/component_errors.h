#pragma once

#include <cstdint>
#include <string>

namespace scrivo {

// Raises an error of one of the component's classes: its source is the module's name, a point and
// `class_name`; `number` is kComponentErrorBase plus the class's offset.
[[noreturn]] void RaiseComponentError(const std::string& class_name, std::int32_t number,
                                      const std::string& description);

// Runs the work of a class's member and gives its result; whatever fails in it reaches the caller
// as the class's own failure `number`, described as "<class_name> component failure".
template <typename Work>
auto OrComponentFailure(const std::string& class_name, std::int32_t number, Work work) {
  try {
    return work();
  } catch (...) {
    RaiseComponentError(class_name, number, class_name + " component failure");
  }
}

}  // namespace scrivo
