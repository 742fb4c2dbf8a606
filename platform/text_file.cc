#include "platform/text_file.h"

#include "system/services.h"

namespace scrivo {

void WriteTextFile(const std::string& path, const std::string& text) {
  TheServices().files->Write(path, text + "\r\n");
}

}  // namespace scrivo
