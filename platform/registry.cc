#include "platform/registry.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "errors/error_handler.h"
#include "platform/paths.h"
#include "system/error.h"
#include "system/services.h"

namespace scrivo {
namespace {

template <typename Work>
auto OrRegistryFailure(Work work) {
  return OrComponentFailure("CRegistry", CRegistry::kComponentFailure, work);
}

void CheckKeyName(const std::string& name) {
  if (name.empty()) {
    RaiseComponentError("CRegistry", CRegistry::kInvalidKeyName, "Invalid KeyName value");
  }
}

RegistryStore& Store() { return *TheServices().registry; }

std::string UpToNul(const std::string& buffer) { return buffer.substr(0, buffer.find('\0')); }

// The ANSI text with its environment references replaced; nothing when the system cannot say.
std::optional<std::string> Expanded(const std::string& text) {
  const std::uint32_t needed = Store().ExpandEnvironment(text, nullptr, 0);
  if (needed == 0) return std::nullopt;
  std::string buffer(needed, '\0');
  const std::uint32_t written = Store().ExpandEnvironment(text, buffer.data(), needed);
  if (written == 0 || written > needed) return std::nullopt;
  return UpToNul(buffer);  // the system may have asked for more than it needs
}

std::int32_t IntegerFrom(const std::vector<std::uint8_t>& bytes, bool big_endian) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < sizeof value; ++i) {
    value |= static_cast<std::uint32_t>(bytes[i]) << 8 * (big_endian ? 3 - i : i);
  }
  return static_cast<std::int32_t>(value);
}

std::optional<RegistryValue> Converted(std::uint32_t type, std::uint32_t size,
                                       std::vector<std::uint8_t> data) {
  switch (type) {
    case kRegSz:
    case kRegExpandSz:
    case kRegMultiSz: {
      // The last byte is taken to be the closing NUL, whatever it is.
      const std::string text(data.begin(), data.begin() + (size == 0 ? 0 : size - 1));
      if (type != kRegExpandSz) return FromRegistry(text);
      const std::optional<std::string> expanded = Expanded(text);
      return expanded ? std::optional<RegistryValue>(FromRegistry(*expanded)) : std::nullopt;
    }
    case kRegDword:
      return IntegerFrom(data, false);
    case kRegDwordBigEndian:
      return IntegerFrom(data, true);
    default:
      data.resize(size + std::size_t{1});  // one element more than is stored, on purpose
      return ByteArray{std::move(data)};
  }
}

std::optional<RegistryValue> ReadValue(RegistryHandle key, const std::string& name) {
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  const RegistryStatus asked = Store().QueryValue(key, name, &type, nullptr, &size);
  if (asked != kRegistrySuccess && asked != kRegistryMoreData) return std::nullopt;
  std::vector<std::uint8_t> data(std::max<std::size_t>(size + std::size_t{1}, 4));
  std::uint32_t room = size;
  if (Store().QueryValue(key, name, &type, data.data(), &room) != kRegistrySuccess) {
    return std::nullopt;
  }
  return Converted(type, size, std::move(data));
}

std::string TextOf(const RegistryValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* number = std::get_if<std::int16_t>(&value)) return std::to_string(*number);
  if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_string(*number);
  if (const auto* truth = std::get_if<bool>(&value)) return *truth ? "True" : "False";
  if (std::holds_alternative<ByteArray>(value)) {
    throw Error(kTypeMismatch, "CRegistry", "Type mismatch");
  }
  return "";
}

// Whether two "%" of a text have a name's room between them: one character at least.
bool HoldsEnvironmentReference(const std::string& text) {
  const std::size_t first = text.find('%');
  return first != std::string::npos && text.find('%', first + 2) != std::string::npos;
}

RegistryStatus StoreText(RegistryHandle key, const std::string& name, const std::string& value) {
  const std::uint32_t type = HoldsEnvironmentReference(value) ? kRegExpandSz : kRegSz;
  const std::string text = ToRegistry(value);
  return Store().SetValue(key, name, type, reinterpret_cast<const std::uint8_t*>(text.c_str()),
                          static_cast<std::uint32_t>(text.size() + 1));
}

RegistryStatus StoreBytes(RegistryHandle key, const std::string& name, const ByteArray& bytes) {
  // Two bytes fewer than the array holds, on purpose.
  const std::int32_t count = bytes.UpperBound() - bytes.lower_bound - 1;
  if (count < 0) return kRegistryInvalidParameter;
  return Store().SetValue(key, name, kRegBinary, bytes.elements.data(),
                          static_cast<std::uint32_t>(count));
}

RegistryStatus StoreInteger(RegistryHandle key, const std::string& name, std::int32_t number) {
  std::uint8_t bytes[sizeof number];
  std::memcpy(bytes, &number, sizeof number);
  return Store().SetValue(key, name, kRegDword, bytes, sizeof bytes);
}

RegistryStatus StoreValue(RegistryHandle key, const std::string& name, const RegistryValue& value,
                          std::uint32_t type) {
  switch (type) {
    case kRegSz:
    case kRegExpandSz:
      return StoreText(key, name, TextOf(value));
    case kRegBinary:
      if (const auto* bytes = std::get_if<ByteArray>(&value)) return StoreBytes(key, name, *bytes);
      return kRegistrySuccess;
    case kRegDword:
    case kRegDwordBigEndian:
      if (const auto* number = std::get_if<std::int16_t>(&value)) {
        return StoreInteger(key, name, *number);
      }
      if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return StoreInteger(key, name, *number);
      }
      return kRegistrySuccess;
    default:
      return kRegistryInvalidData;
  }
}

// A key that is closed at the end of its scope, whatever happens in between.
class OpenedKey {
 public:
  explicit OpenedKey(RegistryHandle key) : key_(key) {}
  OpenedKey(const OpenedKey&) = delete;
  OpenedKey& operator=(const OpenedKey&) = delete;
  ~OpenedKey() { Store().CloseKey(key_); }

 private:
  RegistryHandle key_;
};

void ListSubKeys(RegistryHandle key, std::vector<std::string>* names) {
  constexpr std::uint32_t kLongestName = 255;
  for (std::uint32_t index = 0;; ++index) {
    std::string buffer(kLongestName + 1, '\0');
    const auto length = static_cast<std::uint32_t>(buffer.size());
    if (Store().EnumKey(key, index, buffer.data(), length) != kRegistrySuccess) return;
    names->push_back(FromRegistry(UpToNul(buffer)));
  }
}

void ListValueNames(RegistryHandle key, std::vector<std::string>* names) {
  std::uint32_t longest = 0;
  if (Store().LongestValueName(key, &longest) != kRegistrySuccess) return;
  for (std::uint32_t index = 0;; ++index) {
    std::string buffer(longest + std::size_t{1}, '\0');
    auto length = static_cast<std::uint32_t>(buffer.size());
    if (Store().EnumValue(key, index, buffer.data(), &length) != kRegistrySuccess) return;
    names->push_back(FromRegistry(buffer.substr(0, length)));
  }
}

}  // namespace

bool CRegistry::CreateKey(const std::string& KeyName) {
  CheckKeyName(KeyName);
  return OrRegistryFailure([&] {
    RegistryHandle key = 0;
    if (Store().CreateKey(root_key_, ToRegistry(KeyName), kRightAllAccess, &key) !=
        kRegistrySuccess) {
      return false;
    }
    Store().CloseKey(key);
    return true;
  });
}

bool CRegistry::DeleteKey(const std::string& KeyName) {
  CheckKeyName(KeyName);
  return OrRegistryFailure(
      [&] { return Store().DeleteKey(root_key_, ToRegistry(KeyName)) == kRegistrySuccess; });
}

bool CRegistry::DeleteValue(const std::string& KeyName, const std::string& ValueName) {
  CheckKeyName(KeyName);
  return OrRegistryFailure([&] {
    RegistryHandle key = 0;  // stays open
    return Store().OpenKey(root_key_, ToRegistry(KeyName), kRightAllAccess, &key) ==
               kRegistrySuccess &&
           Store().DeleteValue(key, ToRegistry(ValueName)) == kRegistrySuccess;
  });
}

std::int32_t CRegistry::GetAllSubKeys(const std::string& KeyName,
                                      std::vector<std::string>* SubKeys) {
  return OrRegistryFailure([&] {
    SubKeys->clear();
    RegistryHandle key = 0;
    if (Store().OpenKey(root_key_, ToRegistry(KeyName), kRightEnumerateSubKeys, &key) ==
        kRegistrySuccess) {
      const OpenedKey opened(key);
      ListSubKeys(key, SubKeys);
    }
    return static_cast<std::int32_t>(SubKeys->size());
  });
}

std::int32_t CRegistry::GetAllValueNames(const std::string& KeyName,
                                         std::vector<std::string>* ValueNames) {
  return OrRegistryFailure([&] {
    ValueNames->clear();
    RegistryHandle key = 0;
    if (Store().OpenKey(root_key_, ToRegistry(KeyName), kRightQueryValue, &key) ==
        kRegistrySuccess) {
      const OpenedKey opened(key);
      ListValueNames(key, ValueNames);
    }
    return static_cast<std::int32_t>(ValueNames->size());
  });
}

RegistryValue CRegistry::GetValue(const std::string& KeyName, const std::string& ValueName,
                                  const RegistryValue& Default) {
  return OrRegistryFailure([&] {
    RegistryHandle key = 0;  // stays open
    if (Store().OpenKey(root_key_, ToRegistry(KeyName), kRightQueryValue, &key) !=
        kRegistrySuccess) {
      return Default;
    }
    return ReadValue(key, ToRegistry(ValueName)).value_or(Default);
  });
}

bool CRegistry::KeyExists(const std::string& KeyName) {
  CheckKeyName(KeyName);
  return OrRegistryFailure([&] {
    RegistryHandle key = 0;
    if (Store().OpenKey(root_key_, ToRegistry(KeyName), kRightQueryValue, &key) !=
        kRegistrySuccess) {
      return false;
    }
    Store().CloseKey(key);
    return true;
  });
}

bool CRegistry::SetValue(const std::string& KeyName, const std::string& ValueName,
                         const RegistryValue& Value, std::uint32_t ValueType) {
  CheckKeyName(KeyName);
  return OrRegistryFailure([&] {
    RegistryHandle key = 0;
    if (Store().CreateKey(root_key_, ToRegistry(KeyName), kRightAllAccess, &key) !=
        kRegistrySuccess) {
      return false;
    }
    const OpenedKey opened(key);
    return StoreValue(key, ToRegistry(ValueName), Value, ValueType) == kRegistrySuccess;
  });
}

std::uint32_t CRegistry::ValueType(const std::string& KeyName, const std::string& ValueName) {
  CheckKeyName(KeyName);
  return OrRegistryFailure([&]() -> std::uint32_t {
    RegistryHandle key = 0;  // stays open
    if (Store().OpenKey(root_key_, ToRegistry(KeyName), kRightQueryValue, &key) != kRegistrySuccess)
      return 0;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    const RegistryStatus asked =
        Store().QueryValue(key, ToRegistry(ValueName), &type, nullptr, &size);
    return asked == kRegistrySuccess || asked == kRegistryMoreData ? type : 0;
  });
}

}  // namespace scrivo
