#pragma once

#include <memory>

#include "cli/compile_options.h"
#include "cli/message_limit.h"
#include "cli/web_language.h"
#include "ui/console/console.h"
#include "webs/disk_web.h"
#include "writers/compile_job.h"

namespace scrivo {

// Warns of what is wrong with a web: "FILE:LINE: reason". Of each kind the first are shown; Sum
// tells how many there were more.
class WebWarnings : public WebReport {
 public:
  WebWarnings(Console& console, bool all_messages) : console_(console), limit_(all_messages) {}
  void Problem(const WebProblem& problem) override;
  void Sum();

 private:
  Console& console_;
  MessageLimit limit_;
};

// Opens the web that the options name, and chooses the code page of ANSI text for it. The warnings
// must outlive the web. `language`, unless null, tells what the help file's texts are to be in.
// Throws Error with a text for the user.
std::shared_ptr<DiskWeb> OpenWebOf(const CompileOptions& options, WebReport& warnings,
                                   WebLanguage* language = nullptr);

// Tells where the pages of the web lie in it.
Locator LocatorFor(const std::shared_ptr<DiskWeb>& web);

// `path` as it is on its own, whatever folder is current: the file that the system means by it,
// also where ".." follows a link to a folder.
std::string AbsolutePath(const std::string& path);

}  // namespace scrivo
