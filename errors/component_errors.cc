#include "errors/component_errors.h"

#include "system/error.h"
#include "system/services.h"

namespace scrivo {

void RaiseComponentError(const std::string& class_name, std::int32_t number,
                         const std::string& description) {
  throw Error(number, TheServices().system->ModuleName() + "." + class_name, description);
}

}  // namespace scrivo
