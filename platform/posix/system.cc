#include <locale.h>
#include <syslog.h>
#include <time.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/globals.h"
#include "platform/paths.h"
#include "platform/posix/services.h"
#include "platform/posix/system_error.h"

namespace scrivo {
namespace {

// The present time in the user's regional form; `form` as for strftime.
std::string NowText(const char* form) {
  const time_t now = time(nullptr);
  tm parts = {};
  localtime_r(&now, &parts);
  char text[100];
  const locale_t user = newlocale(LC_TIME_MASK, "", nullptr);
  const std::size_t length = user ? strftime_l(text, sizeof text, form, &parts, user)
                                  : strftime(text, sizeof text, form, &parts);
  if (user) freelocale(user);
  return std::string(text, length);
}

std::string ModulePath() {
  char* const path = realpath("/proc/self/exe", nullptr);
  if (!path) throw SystemError(errno, "/proc/self/exe");
  const std::string text = path;
  std::free(path);
  return text;
}

}  // namespace

std::string PosixSystem::DateText() { return NowText("%x"); }

std::string PosixSystem::TimeText() { return NowText("%X"); }

bool PosixSystem::PlatformId(std::uint32_t, std::uint32_t*) { return false; }

void PosixSystem::WriteErrorEvent(const std::string& source, const std::string& text) {
  openlog(source.c_str(), LOG_PID, LOG_USER);
  syslog(LOG_ERR, "%s", text.c_str());
  closelog();
}

std::string PosixSystem::ModuleName() {
  const std::string name = GetFileName(ModulePath(), PathStyle::kPosix);
  const std::size_t point = name.rfind('.');
  return point == std::string::npos || point == 0 ? name : name.substr(0, point);
}

std::string PosixSystem::ModuleFolder() { return GetFolder(ModulePath(), PathStyle::kPosix); }

void PosixSystem::HoldMutex(const std::string& name) {
  throw Error(kObjectDoesNotSupportThis, "", name + ": this system has no named mutexes");
}

PathStyle SystemPathStyle() { return PathStyle::kPosix; }

}  // namespace scrivo
