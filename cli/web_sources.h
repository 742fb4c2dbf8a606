#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/help_project.h"
#include "project/source_files.h"
#include "ui/console/console.h"
#include "writers/compile_job.h"

namespace scrivo {

// Files that lie over those of one folder, in memory: the compiler finds both, and nothing is
// written. A file in memory hides one of its name, in any letter case, in the folder.
class OverlayFiles : public SourceFiles {
 public:
  // `folder` without a separator at its end; `files` are texts by name. `below` must outlive the
  // object.
  OverlayFiles(const SourceFiles& below, std::string folder,
               std::map<std::string, std::string> files);

  std::vector<SourceEntry> List(const std::string& folder) const override;
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override;

 private:
  const SourceFiles& below_;
  const std::string folder_;
  const std::map<std::string, std::string> files_;
};

// The files of a web's folder without those that are not for readers: nothing is found of them,
// whatever page links to it.
class WithheldFiles : public SourceFiles {
 public:
  // `folder`: the web's, without a separator at its end. `with_hidden`: they are wanted, and
  // nothing is withheld. `below` must outlive the object.
  WithheldFiles(const SourceFiles& below, std::string folder, bool with_hidden);

  std::vector<SourceEntry> List(const std::string& folder) const override;
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override;

 private:
  const SourceFiles& below_;
  const std::string folder_;
  const bool with_hidden_;
};

// The files of a web whose pages are read with a change made to them; nothing is written.
class ChangedPages : public SourceFiles {
 public:
  // Gives the changed page, or nothing when a page stays as it is. Called from several threads.
  using Change = std::function<std::optional<std::string>(std::string_view page)>;

  // What became of the pages read so far.
  struct Sum {
    std::size_t changed = 0;
    std::string
        first;  // path of the first changed page in the order of paths; "" when there is none
    // Of all pages read, changed or not.
    std::uint64_t bytes_before = 0, bytes_after = 0;
  };

  // `below` must outlive the object.
  ChangedPages(const SourceFiles& below, Change change)
      : below_(below), change_(std::move(change)) {}

  std::vector<SourceEntry> List(const std::string& folder) const override {
    return below_.List(folder);
  }
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override;

  Sum Total() const;

 private:
  struct Page {
    bool changed = false;
    std::uint64_t bytes_before = 0, bytes_after = 0;
  };

  const SourceFiles& below_;
  const Change change_;
  mutable std::mutex mutex_;  // guards what follows
  mutable std::map<std::string, Page> pages_;
};

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
