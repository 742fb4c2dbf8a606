#include "cli/help_project.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "errors/frame.h"
#include "platform/paths.h"
#include "project/project_lines.h"
#include "system/error.h"
#include "system/files.h"
#include "system/services.h"
#include "text/visible_text.h"
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

// A location as an address in contents and index, where some characters would part it or be cut
// off.
std::string AsAddress(const std::string& location) {
  constexpr std::string_view kParting = "#?:\\\"";
  const bool is_plain = location.find_first_of(kParting) == std::string::npos &&
                        !location.starts_with(' ') && !location.ends_with(' ');
  if (is_plain) return location;
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string address;
  for (const char c : location) {
    if (c != '%' && c != ' ' && kParting.find(c) == std::string_view::npos) {
      address += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      address.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
    }
  }
  return address;
}

// Gives the files of the web that need it such an address instead of their location.
Locator AddressesOf(const SiteFiles& files, const Locator& locate) {
  std::unordered_map<std::string, std::string> addresses;
  for (const std::shared_ptr<SiteFile>& file : files) {
    const std::string location = locate(file->Url());
    std::string address = AsAddress(location);
    if (address != location) addresses.emplace(file->Url(), std::move(address));
  }
  return [=](const std::string& url) {
    const auto found = addresses.find(url);
    return found == addresses.end() ? locate(url) : found->second;
  };
}

// Takes the pages out of `files` that no line of a project can name; their locations.
std::vector<std::string> TakeUnlisted(SiteFiles* files, const Locator& locate) {
  std::vector<std::string> unlisted;
  std::erase_if(*files, [&](const std::shared_ptr<SiteFile>& file) {
    if (!IsProjectPage(*file)) return false;
    std::string location = locate(file->Url());
    if (FitsFileLine(location)) return false;
    unlisted.push_back(std::move(location));
    return true;
  });
  return unlisted;
}

// Whether all entries of the contents are called as their pages are.
bool LabelsAreTitles(SiteWeb& web) {
  const SiteNodes nodes = AllNodes(web);
  return std::all_of(nodes.begin(), nodes.end(), [](const std::shared_ptr<SiteNode>& node) {
    const std::shared_ptr<SiteFile> file = node->File();
    return !file || file->Title() == node->Label();
  });
}

}  // namespace

HelpProject MakeHelpProject(SiteWeb& web, CompileJob job, const Locator& locate,
                            const std::string& base_name, ProjectUse use) {
  HelpProject project;
  project.folder = web.BaseFolder()->LocalPath();
  project.name = base_name + kProjectExtension;
  const SiteFiles files = AllFiles(web);
  SiteFiles listed = files;
  project.unlisted = TakeUnlisted(&listed, locate);
  // Of other readers it is not known which addresses they take apart.
  const bool in_process = use == ProjectUse::kInProcess;
  const bool is_kept = use == ProjectUse::kToKeep;
  job.binary_contents = is_kept || LabelsAreTitles(web);
  const Locator address = in_process ? AddressesOf(files, locate) : locate;
  const auto add = [&](const std::string& name, const std::string& text) {
    project.files[name] = text + "\r\n";
  };
  const SitemapPaths sitemaps = {base_name + kContentsExtension, base_name + kIndexExtension};
  const std::string derived = base_name + kDerivedExtension;
  if (job.use_index) {
    const std::string keywords = KeywordList(in_process ? files : listed, address);
    project.has_index = job.use_index = !keywords.empty();
    if (job.use_index) add(sitemaps.index, IndexFile(keywords));
  }
  add(sitemaps.contents, ContentsFile(ContentsList(web.NavigationRoot(), address)));
  add(derived, DerivedPageOf(project.folder, !is_kept && job.without_bars));
  add(project.name, ProjectSettings(job, sitemaps, address) + ProjectPages(job, listed, locate) +
                        ProjectDerivedPage(derived));
  return project;
}

void TellUnlisted(const HelpProject& project, Console& console) {
  for (const std::string& location : project.unlisted) {
    console.Warn(VisibleLine(NameText(location)) +
                 ": left out of the project, where a line of this name would mean something else");
  }
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
