#include "platform/temp_files.h"

#include <algorithm>

#include "errors/frame.h"
#include "platform/paths.h"
#include "system/services.h"

namespace scrivo {
namespace {

// Room of the buffers that the Windows calls fill, in ANSI bytes.
constexpr std::size_t kTempNameRoom = 127;
constexpr std::size_t kShortPathRoom = 260;

}  // namespace

std::string GetTempFile(const std::string& folder, const std::string& prefix, PathStyle style) {
  std::string name;
  IgnoringErrors([&] {
    name = TheServices().files->MakeUniqueFile(folder, prefix);
    name.erase(std::min(name.find('\0'), name.size()));
  });
  IgnoringErrors([&] {
    if (!name.empty()) TheServices().files->Remove(name, true);
  });
  // A longer name would come back cut, and its callers would write to a file of another name.
  return style == PathStyle::kWindows && NameToAnsi(name, style).size() > kTempNameRoom ? "" : name;
}

std::string GetShortPath(const std::string& path, PathStyle style) {
  std::string form;
  IgnoringErrors([&] { form = TheServices().files->ShortForm(path); });
  return style == PathStyle::kWindows && NameToAnsi(form, style).size() >= kShortPathRoom ? ""
                                                                                          : form;
}

}  // namespace scrivo
