#include "writers/compile_job.h"

#include <algorithm>

namespace scrivo {

std::string StartPageLocation(const CompileJob& job, const Locator& locate) {
  return job.default_page.empty() ? "" : locate(job.default_page);
}

std::string DefaultTitle(SiteWeb& web) {
  const std::shared_ptr<SiteNode> home = web.HomeNode();
  if (home) return home->Label();
  const std::string address = web.Url();
  return address.substr(address.rfind('/') + 1);
}

std::string DefaultOutputName(std::string title) {
  std::replace(title.begin(), title.end(), '/', '_');
  std::replace(title.begin(), title.end(), ':', '_');
  return title + ".CHM";
}

}  // namespace scrivo
