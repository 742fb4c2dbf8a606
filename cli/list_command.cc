#include "cli/list_command.h"

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <ostream>

#include "chm/problem.h"
#include "cli/help_file.h"
#include "text/visible_text.h"

namespace scrivo {

int RunList(const std::string& path, bool internal, std::ostream& out, std::ostream& err) {
  const HelpFile file = OpenHelpFile(path);
  for (const std::string& complaint : file.complaints)
    err << "scrivo: error: " << complaint << '\n';
  if (file.reader == nullptr) return 1;

  int status = file.complaints.empty() ? 0 : 1;
  std::uint64_t total = 0;
  std::size_t count = 0;
  for (const Entry& entry : file.reader->Entries()) {
    const EntryKind kind = KindOf(entry.name);
    const bool shown = kind == EntryKind::kUser ||
                       (internal && kind == EntryKind::kInternal && !entry.name.ends_with('/'));
    if (!shown) continue;
    out << std::setw(12) << entry.length << "  " << PrintableName(entry.name) << '\n';
    if (const auto problem = file.reader->Check(entry)) {
      err << "scrivo: error: " << Describe({*problem, entry.section, 0, std::string(entry.name)})
          << '\n';
      status = 1;
      continue;
    }
    ++count;
    total += entry.length;
  }
  out << std::setw(12) << total << "  in " << count << (count == 1 ? " file" : " files") << '\n';
  return status;
}

}  // namespace scrivo
