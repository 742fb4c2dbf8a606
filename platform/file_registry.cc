#include "platform/file_registry.h"

#include "errors/frame.h"
#include "platform/paths.h"
#include "platform/registry_text.h"
#include "system/error.h"

namespace scrivo {

FileRegistry::FileRegistry(std::shared_ptr<Files> files, const std::string& folder,
                           const std::string& file_name)
    : files_(std::move(files)), folder_(folder), path_(JoinPath(folder, file_name)) {}

void FileRegistry::Load() {
  std::string text;
  try {
    text = ReadWholeFile(*files_, path_);
  } catch (const Error& error) {
    if (error.number != kFileNotFound && error.number != kPathNotFound) throw;
    memory_.tree.clear();
    text_.clear();
    return;
  }
  if (text == text_ && !text.empty()) return;
  memory_.tree = ParseRegistry(text, path_);
  text_ = text;
}

void FileRegistry::MakeFolder(const std::string& folder) {
  if (folder.empty() || files_->FolderExists(folder)) return;
  MakeFolder(GetFolder(folder));
  files_->MakeFolder(folder);
}

void FileRegistry::Save() {
  const std::string text = FormatRegistry(memory_.tree);
  if (text == text_) return;
  MakeFolder(folder_);
  const std::string unfinished = path_ + ".new";
  try {
    files_->Write(unfinished, text);
    files_->Replace(unfinished, path_);
  } catch (...) {
    IgnoringErrors([&] { files_->Remove(unfinished, true); });
    throw;
  }
  text_ = text;
}

template <typename Operation>
RegistryStatus FileRegistry::Change(Operation operation) {
  Load();
  const RegistryStatus status = operation();
  if (status != kRegistrySuccess) return status;
  try {
    Save();
    return kRegistrySuccess;
  } catch (const Error& error) {
    text_.clear();  // the next operation reads the file as it still is
    return error.number == kPermissionDenied ? kRegistryAccessDenied : kRegistryCannotWrite;
  }
}

RegistryStatus FileRegistry::OpenKey(RegistryHandle parent, const std::string& path,
                                     std::uint32_t rights, RegistryHandle* key) {
  Load();
  return memory_.OpenKey(parent, path, rights, key);
}

RegistryStatus FileRegistry::CreateKey(RegistryHandle parent, const std::string& path,
                                       std::uint32_t rights, RegistryHandle* key) {
  if (path.find_first_of("\r\n") != std::string::npos) return kRegistryInvalidParameter;
  RegistryHandle created = 0;
  const RegistryStatus status =
      Change([&] { return memory_.CreateKey(parent, path, rights, &created); });
  if (status == kRegistrySuccess) {
    *key = created;
  } else if (created != 0) {
    memory_.CloseKey(created);
  }
  return status;
}

RegistryStatus FileRegistry::DeleteKey(RegistryHandle parent, const std::string& path) {
  return Change([&] { return memory_.DeleteKey(parent, path); });
}

RegistryStatus FileRegistry::DeleteValue(RegistryHandle key, const std::string& name) {
  return Change([&] { return memory_.DeleteValue(key, name); });
}

RegistryStatus FileRegistry::QueryValue(RegistryHandle key, const std::string& name,
                                        std::uint32_t* type, std::uint8_t* data,
                                        std::uint32_t* size) {
  Load();
  return memory_.QueryValue(key, name, type, data, size);
}

RegistryStatus FileRegistry::SetValue(RegistryHandle key, const std::string& name,
                                      std::uint32_t type, const std::uint8_t* data,
                                      std::uint32_t size) {
  return Change([&] { return memory_.SetValue(key, name, type, data, size); });
}

RegistryStatus FileRegistry::EnumKey(RegistryHandle key, std::uint32_t index, char* buffer,
                                     std::uint32_t length) {
  Load();
  return memory_.EnumKey(key, index, buffer, length);
}

RegistryStatus FileRegistry::EnumValue(RegistryHandle key, std::uint32_t index, char* name,
                                       std::uint32_t* length) {
  Load();
  return memory_.EnumValue(key, index, name, length);
}

RegistryStatus FileRegistry::LongestValueName(RegistryHandle key, std::uint32_t* length) {
  Load();
  return memory_.LongestValueName(key, length);
}

RegistryStatus FileRegistry::CloseKey(RegistryHandle key) { return memory_.CloseKey(key); }

std::uint32_t FileRegistry::ExpandEnvironment(const std::string& source, char* buffer,
                                              std::uint32_t size) {
  return memory_.ExpandEnvironment(source, buffer, size);
}

}  // namespace scrivo
