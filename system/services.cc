#include "system/services.h"

namespace scrivo {

Services& TheServices() {
  static Services services;
  return services;
}

}  // namespace scrivo
