#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/changed_pages.h"
#include "cli/help_project.h"
#include "cli/overlay_files.h"
#include "cli/withheld_files.h"
#include "project/source_files.h"
#include "ui/console/console.h"
#include "writers/compile_job.h"

namespace scrivo {

// The files of a web as a compile takes them: without those that are not for readers unless the
// job takes them in, without the navigation bars when the job leaves them out, with pages that
// declare the charset they are in unless the job keeps theirs, and with the files of the web's
// project laid over its folder.
class WebSources : public SourceFiles {
 public:
  WebSources(const HelpProject& project, const CompileJob& job);

  std::vector<SourceEntry> List(const std::string& folder) const override {
    return all_.List(folder);
  }
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override {
    return all_.Open(path, error);
  }

  // Tells how the pages read so far were changed: how much was left out as bars, if any are to be,
  // and how many declarations were corrected.
  void TellChanges(Console& console) const;

 private:
  void TellBars(Console& console) const;
  void TellCharsets(Console& console) const;

  const std::string folder_;
  const bool without_bars_, keep_charsets_;
  const DiskFiles disk_;
  const WithheldFiles taken_;
  const ChangedPages bare_, declared_;
  const OverlayFiles all_;
};

}  // namespace scrivo
