#include "cli/web_copy.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <unordered_set>
#include <vector>

#include "cli/disk_path.h"
#include "platform/paths.h"
#include "system/error.h"
#include "system/interruption.h"
#include "system/services.h"
#include "text/visible_text.h"
#include "webs/hidden_files.h"

namespace scrivo {
namespace {

class Copier {
 public:
  Copier(const SourceFiles& files, std::string web, std::string target, Console* console)
      : files_(files), web_(std::move(web)), target_(std::move(target)), console_(*console) {}

  void Run(SiteWeb& web) {
    FindListed(web);
    // Each folder adds those that the web does not list.
    for (std::size_t i = 0; i < folders_.size(); ++i) CopyFolder(std::string(folders_[i]));
  }

 private:
  // The web has seen to it that its own folders do not lead round in circles.
  void FindListed(SiteWeb& web) {
    SiteFolders listed = {web.BaseFolder()};
    for (std::size_t i = 0; i < listed.size(); ++i) {
      folders_.push_back(listed[i]->LocalPath());
      entered_.insert(Disk().RealPath(folders_.back()));
      const SiteFolders below = listed[i]->Folders();
      listed.insert(listed.end(), below.begin(), below.end());
    }
  }

  void CopyFolder(const std::string& folder) {
    if (!LeavesOutWhatIsTooLong(folder, [&] { Disk().MakeFolder(CopyOf(folder)); })) return;
    for (const SourceEntry& entry : files_.List(PortablePathOf(folder))) {
      if (entry.is_withheld || IsUnfinishedName(entry.name)) continue;
      const std::string path = JoinPath(folder, entry.name);
      if (!entry.is_folder) {
        LeavesOutWhatIsTooLong(path, [&] { CopyFile(path); });
      } else if (entered_.insert(Disk().RealPath(path)).second) {
        folders_.push_back(path);
      }
    }
  }

  void CopyFile(const std::string& path) {
    constexpr std::uint64_t kPiece = 1 << 20;
    std::error_code error;
    const auto source = files_.Open(PortablePathOf(path), &error);
    if (source == nullptr) return Tell(path, error.message());
    const std::string copy = CopyOf(path);
    const std::uint64_t size = source->Size();
    std::string piece;
    std::uint64_t at = 0;
    do {
      if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
      piece.resize(static_cast<std::size_t>(std::min(size - at, kPiece)));
      auto* const bytes = reinterpret_cast<std::uint8_t*>(piece.data());
      if (!source->ReadAt(at, std::span(bytes, piece.size()))) {
        Tell(path, "it cannot be read to its end");
        if (at > 0) Disk().Remove(copy, true);
        return;
      }
      if (at == 0) {
        Disk().Write(copy, piece);
      } else {
        Disk().Append(copy, piece);
      }
      at += piece.size();
    } while (at < size);
  }

  // Runs a statement that writes the copy of `path`. False when the system does not take its name.
  template <typename Statement>
  bool LeavesOutWhatIsTooLong(const std::string& path, Statement&& statement) {
    try {
      statement();
      return true;
    } catch (const Error& error) {
      if (error.number == kUserInterrupt) throw;
      if (error.number != kPathFileAccessError && error.number != kPathNotFound) {
        throw Error(error.number, "scrivo",
                    web_ + ": the web cannot be copied for the compiler: " + error.description);
      }
      Tell(path, error.description);
      return false;
    }
  }

  void Tell(const std::string& path, const std::string& reason) {
    console_.Warn(VisibleLine(NameText(path) + ": kept from the compiler: " + reason));
  }

  std::string CopyOf(const std::string& path) const { return target_ + path.substr(web_.size()); }

  const SourceFiles& files_;
  const std::string web_, target_;
  Console& console_;
  std::vector<std::string> folders_;
  std::unordered_set<std::string> entered_;  // where those really are
};

}  // namespace

void CopyWeb(SiteWeb& web, const SourceFiles& files, const std::string& target, Console* console) {
  Copier(files, web.BaseFolder()->LocalPath(), target, console).Run(web);
}

}  // namespace scrivo
