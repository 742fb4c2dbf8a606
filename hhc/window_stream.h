#pragma once

// #WINDOWS: the window definitions of a project.

#include <cstdint>
#include <string>
#include <vector>

#include "hhc/strings_table.h"
#include "project/project.h"

namespace scrivo {

// Positions in the argument list of a [WINDOWS] line.
namespace window_argument {
enum : std::size_t {
  kTitle,
  kContentsFile,
  kIndexFile,
  kDefaultFile,
  kHomeFile,
  kJump1Target,
  kJump1Text,
  kJump2Target,
  kJump2Text,
  kPaneStyle,
  kPaneWidth,
  kButtons,
  kPosition,
  kStyle,
  kExtendedStyle,
  kShowState,
  kPaneClosed,
  kDefaultPane,
  kTabPosition,
  kNotifyId,
};
}  // namespace window_argument

// The argument at `position`, empty when the line is shorter.
std::string WindowArgument(const ProjectWindow& window, std::size_t position);

// The stream for `windows`, whose texts are in the project's code page; their strings go to
// `*strings`, equal ones once. `old_format`: the shorter entries of Compatibility=1.0.
std::vector<std::uint8_t> WriteWindows(const std::vector<ProjectWindow>& windows, bool old_format,
                                       StringsTable* strings);

}  // namespace scrivo
