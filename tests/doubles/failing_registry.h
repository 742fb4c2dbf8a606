#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "system/registry_store.h"

namespace scrivo {

// Another registry with one call that fails: the one called `call` ("OpenKey", "QueryValue", …),
// the `skip`-th time after the first.
class FailingRegistry : public RegistryStore {
 public:
  std::string call;
  int skip = 0;
  RegistryStatus status = kRegistryAccessDenied;
  bool throws = false;  // it throws an exception instead

  explicit FailingRegistry(std::shared_ptr<RegistryStore> store) : store_(std::move(store)) {}

  RegistryStatus OpenKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                         RegistryHandle* key) override {
    return Fails("OpenKey") ? status : store_->OpenKey(parent, path, rights, key);
  }
  RegistryStatus CreateKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                           RegistryHandle* key) override {
    return Fails("CreateKey") ? status : store_->CreateKey(parent, path, rights, key);
  }
  RegistryStatus DeleteKey(RegistryHandle parent, const std::string& path) override {
    return Fails("DeleteKey") ? status : store_->DeleteKey(parent, path);
  }
  RegistryStatus DeleteValue(RegistryHandle key, const std::string& name) override {
    return Fails("DeleteValue") ? status : store_->DeleteValue(key, name);
  }
  RegistryStatus QueryValue(RegistryHandle key, const std::string& name, std::uint32_t* type,
                            std::uint8_t* data, std::uint32_t* size) override {
    return Fails("QueryValue") ? status : store_->QueryValue(key, name, type, data, size);
  }
  RegistryStatus SetValue(RegistryHandle key, const std::string& name, std::uint32_t type,
                          const std::uint8_t* data, std::uint32_t size) override {
    return Fails("SetValue") ? status : store_->SetValue(key, name, type, data, size);
  }
  RegistryStatus EnumKey(RegistryHandle key, std::uint32_t index, char* buffer,
                         std::uint32_t length) override {
    return Fails("EnumKey") ? status : store_->EnumKey(key, index, buffer, length);
  }
  RegistryStatus EnumValue(RegistryHandle key, std::uint32_t index, char* name,
                           std::uint32_t* length) override {
    return Fails("EnumValue") ? status : store_->EnumValue(key, index, name, length);
  }
  RegistryStatus LongestValueName(RegistryHandle key, std::uint32_t* length) override {
    return Fails("LongestValueName") ? status : store_->LongestValueName(key, length);
  }
  RegistryStatus CloseKey(RegistryHandle key) override {
    return Fails("CloseKey") ? status : store_->CloseKey(key);
  }
  std::uint32_t ExpandEnvironment(const std::string& source, char* buffer,
                                  std::uint32_t size) override {
    return Fails("ExpandEnvironment") ? 0 : store_->ExpandEnvironment(source, buffer, size);
  }

 private:
  bool Fails(const char* name) {
    if (call != name || skip-- != 0) return false;
    if (throws) throw std::runtime_error("the registry is broken");
    return true;
  }

  std::shared_ptr<RegistryStore> store_;
};

}  // namespace scrivo
