#include "errors/log_file.h"

#include "system/ansi_text.h"
#include "system/services.h"

namespace scrivo {

void AppendLogRecord(const std::string& path, const std::string& record) {
  TheServices().files->Append(path, ToAnsi(record) + "\r\n");
}

std::string LogTimeText() {
  SystemServices& system = *TheServices().system;
  const std::string date = system.DateText();
  return date + " - " + system.TimeText();
}

}  // namespace scrivo
