#include "system/files.h"

#include "system/services.h"

namespace scrivo {

std::string ReadWholeFile(Files& files, const std::string& path) {
  constexpr std::size_t kBlock = 64 * 1024;
  std::unique_ptr<FileReader> reader = files.OpenForReading(path);
  std::string text;
  for (;;) {
    const std::size_t size = text.size();
    text.resize(size + kBlock);
    const std::size_t got = reader->Read(text.data() + size, kBlock);
    text.resize(size + got);
    if (got == 0) return text;
  }
}

void WriteTextFile(const std::string& path, const std::string& text) {
  TheServices().files->Write(path, text + "\r\n");
}

}  // namespace scrivo
