#include "platform/seams/services.h"

namespace scrivo {

Services& TheServices() {
  static Services services;
  return services;
}

}  // namespace scrivo
