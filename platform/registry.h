#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "system/registry_store.h"

namespace scrivo {

// Bytes with a lower bound, as automation arrays have one.
struct ByteArray {
  std::vector<std::uint8_t> elements;
  std::int32_t lower_bound = 0;

  // One less than the lower bound when the array is empty.
  std::int32_t UpperBound() const {
    return lower_bound + static_cast<std::int32_t>(elements.size()) - 1;
  }
  bool operator==(const ByteArray&) const = default;
};

// A value on its way into or out of the registry: nothing, a text in the ANSI code page, a 16-bit
// or a 32-bit integer, a truth value, or bytes.
using RegistryValue =
    std::variant<std::monostate, std::string, std::int16_t, std::int32_t, bool, ByteArray>;

// The registry below one root key, through TheServices().registry. Key names are paths relative to
// the root, separated by "\". Failures of the registry are results, never errors; an empty key
// name raises kInvalidKeyName where a member says so, and an unexpected failure inside any member
// kComponentFailure, both with the source "<module>.CRegistry".
//
// GetValue, DeleteValue and ValueType leave the key that they opened open until the process ends.
// That is kept on purpose: each is called a handful of times in a run.
class CRegistry {
 public:
  static constexpr std::int32_t kInvalidKeyName = -2147203503;    // base + 18001
  static constexpr std::int32_t kComponentFailure = -2147203501;  // base + 18003

  void Init(std::uint32_t eKey) { root_key_ = eKey; }
  // A predefined root handle, not checked; kHkeyClassesRoot after creation.
  std::uint32_t RootKey() const { return root_key_; }
  void RootKey(std::uint32_t value) { root_key_ = value; }

  // Creates the key and its missing parents. True also when it was there. Raises kInvalidKeyName.
  bool CreateKey(const std::string& KeyName);
  // False when the key is missing or has sub-keys. Raises kInvalidKeyName.
  bool DeleteKey(const std::string& KeyName);
  // Raises kInvalidKeyName.
  bool DeleteValue(const std::string& KeyName, const std::string& ValueName);
  // Replaces `*SubKeys` by the names of the key's sub-keys and returns their number; none for a
  // key that cannot be opened. An empty name means the root, here and in the next two members. A
  // name longer than 255 characters ends the list.
  std::int32_t GetAllSubKeys(const std::string& KeyName, std::vector<std::string>* SubKeys);
  // The same for the names of the key's values.
  std::int32_t GetAllValueNames(const std::string& KeyName, std::vector<std::string>* ValueNames);
  // The value as its stored type tells: text (1, 2 with its environment references expanded, 7),
  // a 32-bit integer (4, 5 with its bytes reversed), or bytes, with one 0 more at their end than
  // is stored. `Default` when the key or the value is missing. An empty value name is the key's
  // default value.
  RegistryValue GetValue(const std::string& KeyName, const std::string& ValueName,
                         const RegistryValue& Default);
  // Whether the key opens for reading. Raises kInvalidKeyName.
  bool KeyExists(const std::string& KeyName);
  // Stores `Value`, creating the key when it is missing. Type 1 or 2: as text, the type chosen by
  // whether the text holds an environment reference. Type 3: bytes, two fewer than the array
  // holds. Type 4 or 5: a 16-bit or 32-bit integer, always as type 4. A value that does not suit
  // type 3, 4 or 5 writes nothing but gives true; any other type gives false. Raises
  // kInvalidKeyName.
  bool SetValue(const std::string& KeyName, const std::string& ValueName,
                const RegistryValue& Value, std::uint32_t ValueType);
  // The stored type code, 0 when the key or the value is missing. Raises kInvalidKeyName.
  std::uint32_t ValueType(const std::string& KeyName, const std::string& ValueName);

 private:
  std::uint32_t root_key_ = static_cast<std::uint32_t>(kHkeyClassesRoot);
};

}  // namespace scrivo
