#include "platform/text_file.h"

#include "platform/seams/services.h"

namespace scrivo {

void WriteTextFile(const std::string& path, const std::string& text) {
  TheServices().files->Write(path, text + "\r\n");
}

}  // namespace scrivo
