// Reads any bytes as a project file and as the files that a project includes.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "hhc/strings_table.h"
#include "hhc/window_stream.h"
#include "project/project.h"
#include "project/project_lines.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const Project project = ReadProject(text);
  StringsTable strings;
  const auto windows = WriteWindows(project.windows, project.compatibility_1_0, &strings);
  if (windows.size() < 8) std::abort();
  ReadMapHeader(text);
  ReadAliasFile(text);
  return 0;
}
