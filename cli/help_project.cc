#include "cli/help_project.h"

#include <unordered_set>

#include "errors/frame.h"
#include "platform/paths.h"
#include "platform/text_file.h"
#include "system/error.h"
#include "system/services.h"
#include "writers/contents.h"
#include "writers/derived_images.h"
#include "writers/index.h"
#include "writers/project.h"

namespace scrivo {
namespace {

// In the order in which a project is told.
constexpr const char* kProjectExtension = ".hhp";
constexpr const char* kContentsExtension = ".hhc";
constexpr const char* kIndexExtension = ".hhk";
constexpr const char* kDerivedExtension = ".tmp.htm";
constexpr const char* kExtensions[] = {kProjectExtension, kContentsExtension, kIndexExtension,
                                       kDerivedExtension};

std::string SmallLetters(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

// The pictures of bars and banners have it in their names: index.htm_cmp_blank000_hbtn.gif. One
// that a page still shows gets into the help file by that page.
bool IsBarPicture(const std::string& name) {
  return SmallLetters(name).find("_cmp_") != std::string::npos;
}

// A missing folder has no images.
std::string DerivedPageOf(const std::string& web_folder, bool without_bars) {
  Files& files = *TheServices().files;
  const std::string folder = JoinPath(web_folder, "_derived");
  std::vector<std::string> names;
  if (files.FolderExists(folder)) names = DerivedImageNames(files, folder);
  if (without_bars) std::erase_if(names, IsBarPicture);
  return DerivedImagesPage(names);
}

}  // namespace

HelpProject MakeHelpProject(SiteWeb& web, CompileJob job, const Locator& locate,
                            const std::string& base_name) {
  HelpProject project;
  project.folder = web.BaseFolder()->LocalPath();
  project.name = base_name + kProjectExtension;
  const SiteFiles files = AllFiles(web);
  const auto add = [&](const std::string& name, const std::string& text) {
    project.files[name] = text + "\r\n";
  };
  const SitemapPaths sitemaps = {base_name + kContentsExtension, base_name + kIndexExtension};
  const std::string derived = base_name + kDerivedExtension;
  if (job.use_index) {
    const std::string keywords = KeywordList(files, locate);
    project.has_index = job.use_index = !keywords.empty();
    if (job.use_index) add(sitemaps.index, IndexFile(keywords));
  }
  add(sitemaps.contents, ContentsFile(ContentsList(web.NavigationRoot(), locate)));
  add(derived, DerivedPageOf(project.folder, job.without_bars));
  add(project.name, ProjectSettings(job, sitemaps, locate) + ProjectPages(job, files, locate) +
                        ProjectDerivedPage(derived));
  return project;
}

std::string FreeProjectBaseName(const std::string& folder) {
  std::unordered_set<std::string> taken;
  for (const FolderEntry& entry : TheServices().files->List(folder)) {
    taken.insert(SmallLetters(entry.name));
  }
  for (int number = 1;; ++number) {
    std::string name = kProjectBaseName;
    if (number > 1) name += std::to_string(number);
    bool is_free = true;
    for (const char* extension : kExtensions) {
      if (taken.contains(SmallLetters(name) + extension)) is_free = false;
    }
    if (is_free) return name;
  }
}

WrittenProject::WrittenProject(const HelpProject& project) {
  const std::string base_name = project.name.substr(0, project.name.rfind('.'));
  try {
    for (const char* extension : kExtensions) {
      const auto file = project.files.find(base_name + extension);
      if (file == project.files.end()) continue;
      const std::string path = JoinPath(project.folder, file->first);
      TheServices().files->WriteWhole(path, file->second);
      paths_.push_back(path);
    }
  } catch (const Error& error) {
    Remove();
    if (error.number == kUserInterrupt) throw;
    throw Error(
        error.number, "scrivo",
        project.folder + ": the project files cannot be written here: " + error.description);
  }
}

WrittenProject::~WrittenProject() {
  if (!keeps_) Remove();
}

void WrittenProject::Remove() {
  for (const std::string& path : paths_) {
    IgnoringErrors([&] { TheServices().files->Remove(path, true); });
  }
}

}  // namespace scrivo
