#include "host/meta_tags.h"

#include <algorithm>

#include "errors/frame.h"
#include "system/services.h"
#include "webs/page_head.h"

namespace scrivo::host {

std::vector<std::string> MetaTagNames(const std::string& path) {
  std::vector<std::string> names;
  IgnoringErrors([&] {
    Services& services = TheServices();
    const std::string page = ReadWhole(*services.files->OpenForReading(path));
    const auto ansi = [&] { return services.system->AnsiCodePage(); };
    for (const MetaTag& tag : FindPageHead(page, Headings::kNo, ansi).metas) {
      if (std::find(names.begin(), names.end(), tag.name) == names.end()) names.push_back(tag.name);
    }
  });
  return names;
}

}  // namespace scrivo::host
