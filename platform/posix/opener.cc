#include "platform/posix/opener.h"

#include "platform/posix/spawn.h"

namespace scrivo {

int OpenWithDesktop(const std::string& target) {
  SpawnRequest request;
  request.arguments = {"xdg-open", target};
  request.detached = true;
  return Spawn(request).error;
}

}  // namespace scrivo
