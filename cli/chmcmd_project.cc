#include "cli/chmcmd_project.h"

#include <algorithm>
#include <string_view>

#include "platform/globals.h"

namespace scrivo {
namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool EqualIgnoringCase(std::string_view a, std::string_view lower_case) {
  if (a.size() != lower_case.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const char c = a[i] >= 'A' && a[i] <= 'Z' ? static_cast<char>(a[i] - 'A' + 'a') : a[i];
    if (c != lower_case[i]) return false;
  }
  return true;
}

bool IsAbsolute(std::string_view path, PathStyle style) {
  if (!path.empty() && path[0] == Separator(style)) return true;
  return style == PathStyle::kWindows && path.size() > 1 && path[1] == ':';
}

class ProjectRewriter {
 public:
  ProjectRewriter(std::string folder, Files& files)
      : folder_(folder + Separator(Globals().path_style)), files_(files) {}

  void Line(std::string_view line) {
    if (line.starts_with("[")) {
      section_ = line;
      Put(line);
    } else if (EqualIgnoringCase(section_, "[options]")) {
      Option(line);
    } else if (EqualIgnoringCase(section_, "[files]")) {
      File(line);
    } else if (!EqualIgnoringCase(section_, "[windows]") || !line.ends_with(",")) {
      Put(line);
    }
  }

  ChmcmdProject Result() && { return std::move(result_); }

 private:
  void Put(std::string_view line) { result_.text.append(line).append("\r\n"); }

  void Option(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return Put(line);
    const std::string_view key = Trim(line.substr(0, equals));
    const std::string_view value = Trim(line.substr(equals + 1));
    std::string written(value);
    if (EqualIgnoringCase(key, "compiled file")) {
      written = result_.output = FullPath(value);
    } else if (EqualIgnoringCase(key, "contents file") || EqualIgnoringCase(key, "index file")) {
      if (IsMissing(value)) return;
      written = RelativePath(value);
    }
    Put(std::string(key) + "=" + written);
  }

  void File(std::string_view line) {
    if (!line.empty() && IsMissing(line)) return;
    Put(RelativePath(line));
  }

  // Notes a file that is not there.
  bool IsMissing(std::string_view path) {
    if (files_.FileExists(FullPath(path))) return false;
    result_.missing.emplace_back(path);
    return true;
  }

  std::string FullPath(std::string_view path) const {
    return IsAbsolute(path, Globals().path_style) ? std::string(path) : folder_ + std::string(path);
  }

  std::string RelativePath(std::string_view path) const {
    return std::string(path.starts_with(folder_) ? path.substr(folder_.size()) : path);
  }

  std::string folder_;  // with a separator at its end
  Files& files_;
  std::string section_;
  ChmcmdProject result_;
};

}  // namespace

ChmcmdProject PrepareForChmcmd(const std::string& text, const std::string& folder, Files& files) {
  ProjectRewriter rewriter(folder, files);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    rewriter.Line(Trim(std::string_view(text).substr(at, end - at)));
    at = end + 1;
  }
  return std::move(rewriter).Result();
}

}  // namespace scrivo
