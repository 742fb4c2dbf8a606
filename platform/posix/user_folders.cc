#include "platform/posix/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace scrivo {

std::string HomeFolder() {
  const char* const home = std::getenv("HOME");
  if (home && home[0] != '\0') return home;
  const passwd* const user = getpwuid(getuid());
  return user && user->pw_dir ? user->pw_dir : "/";
}

std::string ConfigurationFolder() {
  const char* const folder = std::getenv("XDG_CONFIG_HOME");
  // A relative path in this variable is to be ignored (XDG Base Directory).
  return folder && folder[0] == '/' ? folder : HomeFolder() + "/.config";
}

}  // namespace scrivo
