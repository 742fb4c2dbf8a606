#include "exporter/site_names.h"

#include <algorithm>

#include "exporter/script_text.h"
#include "project/project_tree.h"
#include "text/ascii_text.h"
#include "text/fold_case.h"
#include "unpack/safe_path.h"

namespace scrivo {
namespace {

// Extensions that servers run, or keep to themselves.
bool IsServersOwn(std::string_view extension) {
  constexpr std::string_view kExtensions[] = {
      "asa",  "asax",   "ascx",  "ashx", "asmx", "asp", "aspx", "cer",    "cfm",   "cgi", "config",
      "cs",   "csproj", "do",    "idc",  "inc",  "jsp", "jspx", "master", "mdb",   "php", "php3",
      "php4", "php5",   "phtml", "pl",   "py",   "rb",  "resx", "shtm",   "shtml", "stm", "vb"};
  return std::find(std::begin(kExtensions), std::end(kExtensions), extension) !=
         std::end(kExtensions);
}

// Folders that a widely used server keeps to itself.
bool IsServersFolder(std::string_view name) {
  const std::string lowered = AsciiLowered(name);
  return lowered == "bin" || lowered == "cgi-bin" || lowered.starts_with("app_");
}

// The place for a path that is safe already: what servers refuse or understand differently becomes
// "_".
std::string ServableName(std::string_view path, bool is_page) {
  std::string place;
  while (true) {
    const std::size_t slash = path.find('/');
    const std::string_view part = path.substr(0, slash);
    const std::size_t start = place.size();
    if (part.starts_with('.')) place.push_back('_');
    for (const char c : part) {
      place.push_back(std::string_view("#?%+&*:<>|\"\\^`").find(c) == std::string_view::npos ? c
                                                                                             : '_');
    }
    if (slash == std::string_view::npos) break;
    if (IsServersFolder(std::string_view(place).substr(start))) place.push_back('_');
    place.push_back('/');
    path.remove_prefix(slash + 1);
  }
  const std::size_t name = place.rfind('/') == std::string::npos ? 0 : place.rfind('/') + 1;
  const std::size_t dot = place.rfind('.');
  const bool has_extension = dot != std::string::npos && dot >= name;
  const std::string extension = has_extension ? AsciiLowered(place.substr(dot + 1)) : "";
  const bool is_html =
      extension == "htm" || extension == "html" || extension == "xhtml" || extension == "xht";
  if (is_page && !is_html) {
    place += ".html";
  } else if (IsServersOwn(extension)) {
    place += ".txt";
  }
  return place;
}

// The address as browsers take it: without blanks around it, and without line ends and tabs inside.
std::string_view Cleaned(std::string_view address, std::string* buffer) {
  while (!address.empty() && static_cast<unsigned char>(address.front()) <= ' ') {
    address.remove_prefix(1);
  }
  while (!address.empty() && static_cast<unsigned char>(address.back()) <= ' ') {
    address.remove_suffix(1);
  }
  if (address.find_first_of("\r\n\t") == std::string_view::npos) return address;
  for (const char c : address) {
    if (c != '\r' && c != '\n' && c != '\t') buffer->push_back(c);
  }
  return *buffer;
}

// The letters before the ":" of an absolute address, in small ones; empty for a relative one.
std::string SchemeOf(std::string_view address) {
  std::size_t end = 0;
  while (end < address.size() &&
         (IsAsciiLetter(address[end]) ||
          (end > 0 && ((address[end] >= '0' && address[end] <= '9') || address[end] == '+' ||
                       address[end] == '-' || address[end] == '.')))) {
    ++end;
  }
  if (end == 0 || end >= address.size() || address[end] != ':') return "";
  return AsciiLowered(address.substr(0, end));
}

// "/a/b/../c" and the like in their shortest form; the root's parent is the root.
std::string Normalized(std::string_view path) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t slash = path.find('/');
    const std::string_view part = path.substr(0, slash);
    if (part == "..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!part.empty() && part != ".") {
      parts.push_back(part);
    }
    if (slash == std::string_view::npos) break;
    path.remove_prefix(slash + 1);
  }
  std::string normalized;
  for (const std::string_view part : parts) {
    normalized += '/';
    normalized += part;
  }
  return normalized;
}

std::string_view BaseName(std::string_view path) {
  const std::size_t slash = path.find_last_of("/\\");
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

}  // namespace

std::string SiteNames::Add(std::string_view name, bool is_page) {
  const SafePath safe =
      MakeSafePath(name.starts_with('/') ? name.substr(1) : name, NameRules::kWindows);
  if (safe.path.empty()) return "";
  const std::string wanted = ServableName(safe.path, is_page);
  std::string place = wanted;
  for (unsigned number = 2; !taken_.emplace(FoldCase(place), 0).second; ++number) {
    place = NumberedPath(wanted, number);
  }
  places_.emplace(AsciiLowered(name), place);
  return place;
}

void SiteNames::AddPlace(const std::string& place) {
  places_.emplace(AsciiLowered("/" + place), place);
}

const std::string* SiteNames::Find(std::string_view name) const {
  const auto found = places_.find(AsciiLowered(name));
  return found == places_.end() ? nullptr : &found->second;
}

LinkTarget ResolveLink(const SiteNames& names, std::string_view address, std::string_view from) {
  LinkTarget target;
  std::string buffer;
  address = Cleaned(address, &buffer);
  if (address.empty() || address[0] == '#') {
    target.kind = LinkTarget::Kind::kSamePage;
    return target;
  }
  std::string scheme = SchemeOf(address);
  if (scheme.ends_with(".chm")) scheme.clear();  // a help file's name before "::"
  bool in_help_file = false, is_outside = false;
  if (scheme == "javascript" || scheme == "vbscript" || scheme == "livescript") {
    target.kind = LinkTarget::Kind::kScript;
    return target;
  }
  if (scheme == "data") {
    const std::string start = AsciiLowered(address.substr(0, 11));
    target.kind = start == "data:image/" ? LinkTarget::Kind::kOutside : LinkTarget::Kind::kScript;
    return target;
  }
  std::string_view path = address;
  if (scheme == "ms-its" || scheme == "its" || scheme == "mk") {
    // mk:@MSITStore:C:\folder\guide.chm::/page.htm
    path.remove_prefix(scheme.size() + 1);
    if (scheme == "mk") path.remove_prefix(std::min(path.size(), path.find(':') + 1));
    const std::size_t separator = path.find("::");
    if (separator != std::string_view::npos) {
      const std::string help_file = PercentDecoded(BaseName(path.substr(0, separator)));
      path.remove_prefix(separator + 2);
      if (!help_file.empty() && AsciiLowered(help_file) != AsciiLowered(names.FileName())) {
        target.kind = LinkTarget::Kind::kOtherHelp;
        target.help_file = help_file;
        target.place = PercentDecoded(path.substr(0, path.find('#')));
        return target;
      }
    }
    in_help_file = true;
  } else if (address.starts_with("//")) {
    target.kind = LinkTarget::Kind::kOutside;
    return target;
  } else if (!scheme.empty()) {
    is_outside = true;  // unless it is a name with a ":" in it
  } else if (const std::size_t separator = address.find("::/");
             separator != std::string_view::npos) {
    // The same without a scheme, as contents files have it.
    const std::string_view file = address.substr(0, separator);
    if (AsciiLowered(file).ends_with(".chm")) {
      const std::string help_file = PercentDecoded(BaseName(file));
      path = address.substr(separator + 2);
      if (AsciiLowered(help_file) != AsciiLowered(names.FileName())) {
        target.kind = LinkTarget::Kind::kOtherHelp;
        target.help_file = help_file;
        target.place = PercentDecoded(path.substr(0, path.find('#')));
        return target;
      }
      in_help_file = true;
    }
  }
  const auto lead_to = [&](std::string name, std::string_view rest) {
    std::replace(name.begin(), name.end(), '\\', '/');
    if (!name.starts_with('/') && !in_help_file) {
      name.insert(0, from.substr(0, from.rfind('/') + 1));
    }
    const std::string* place = names.Find(Normalized(name));
    if (place == nullptr) return false;
    target.kind = LinkTarget::Kind::kPage;
    target.place = *place;
    target.rest = rest;
    return true;
  };
  const std::size_t end = std::min(path.find_first_of("?#"), path.size());
  const std::string_view name = path.substr(0, end), rest = path.substr(end);
  if (lead_to(PercentDecoded(name), rest)) return target;
  // A "#", a "?" or a "%" may belong to a name.
  if (!rest.empty() && lead_to(PercentDecoded(path), "")) return target;
  if (name.find('%') != std::string_view::npos && lead_to(std::string(name), rest)) return target;
  if (is_outside) target.kind = LinkTarget::Kind::kOutside;
  return target;
}

bool LeadsThere(std::string_view address, std::string_view from, std::string_view to) {
  address = address.substr(0, address.find_first_of("?#"));
  if (address.empty() || address[0] == '/' || address[0] <= ' ' || address.back() <= ' ' ||
      address.find('\\') != std::string_view::npos || address.find(':') != std::string_view::npos) {
    return false;
  }
  const std::string path = PercentDecoded(address);
  // From the root no way leads up.
  std::ptrdiff_t depth = std::count(from.begin(), from.end(), '/');
  for (std::string_view rest = path; !rest.empty();) {
    const std::size_t slash = std::min(rest.find('/'), rest.size());
    if (rest.substr(0, slash) == ".." && --depth < 0) return false;
    rest.remove_prefix(std::min(rest.size(), slash + 1));
  }
  const std::string folder(from.substr(0, from.rfind('/') + 1));
  const std::string reached = Normalized(folder + path);
  return reached.size() == to.size() + 1 && reached.ends_with(to);
}

std::string RelativeAddress(std::string_view from, std::string_view to) {
  std::size_t same = 0;
  for (std::size_t i = 0; i < from.size() && i < to.size() && from[i] == to[i]; ++i) {
    if (from[i] == '/') same = i + 1;
  }
  std::string address;
  const std::string_view left = from.substr(same);
  for (std::ptrdiff_t up = std::count(left.begin(), left.end(), '/'); up > 0; --up) {
    address += "../";
  }
  AppendAddress(to.substr(same), &address);
  return address;
}

std::string UpFrom(std::string_view place) {
  std::string up;
  for (const char c : place) {
    if (c == '/') up += "../";
  }
  return up;
}

}  // namespace scrivo
