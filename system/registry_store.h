#pragma once

#include <cstdint>
#include <string>

namespace scrivo {

// A predefined root (0x80000000 …) or a key that was opened.
using RegistryHandle = std::uintptr_t;
// 0 is success; the other values are Windows' system error codes.
using RegistryStatus = std::int32_t;

constexpr RegistryHandle kHkeyClassesRoot = 0x80000000;
constexpr RegistryHandle kHkeyCurrentUser = 0x80000001;
constexpr RegistryHandle kHkeyLocalMachine = 0x80000002;

constexpr RegistryStatus kRegistrySuccess = 0;
constexpr RegistryStatus kRegistryFileNotFound = 2;
constexpr RegistryStatus kRegistryAccessDenied = 5;
constexpr RegistryStatus kRegistryInvalidHandle = 6;
constexpr RegistryStatus kRegistryInvalidData = 13;
constexpr RegistryStatus kRegistryInvalidParameter = 87;
constexpr RegistryStatus kRegistryBadPath = 161;
constexpr RegistryStatus kRegistryMoreData = 234;
constexpr RegistryStatus kRegistryNoMoreItems = 259;
constexpr RegistryStatus kRegistryCannotWrite = 1015;
constexpr RegistryStatus kRegistryKeyDeleted = 1018;

constexpr std::uint32_t kRightQueryValue = 0x1;
constexpr std::uint32_t kRightSetValue = 0x2;
constexpr std::uint32_t kRightEnumerateSubKeys = 0x8;
constexpr std::uint32_t kRightAllAccess = 0x3F;

enum RegistryType : std::uint32_t {
  kRegNone = 0,
  kRegSz = 1,
  kRegExpandSz = 2,
  kRegBinary = 3,
  kRegDword = 4,
  kRegDwordBigEndian = 5,
  kRegLink = 6,
  kRegMultiSz = 7,
};

// The registry functions of Windows, one for one and as bare (names and text are bytes in the ANSI
// code page, status codes instead of errors, handles that their user closes), so that what is built
// on them can be tested anywhere. Key and value names compare without regard to case; "\" separates
// the names of a key path.
class RegistryStore {
 public:
  virtual ~RegistryStore() = default;

  // Opens an existing key below `parent`; an empty `path` opens `parent` itself again.
  virtual RegistryStatus OpenKey(RegistryHandle parent, const std::string& path,
                                 std::uint32_t rights, RegistryHandle* key) = 0;
  // Opens a key, creating it and its missing parents (non-volatile, default security).
  virtual RegistryStatus CreateKey(RegistryHandle parent, const std::string& path,
                                   std::uint32_t rights, RegistryHandle* key) = 0;
  // Deletes a key that has no sub-keys; kRegistryAccessDenied when it has some.
  virtual RegistryStatus DeleteKey(RegistryHandle parent, const std::string& path) = 0;
  virtual RegistryStatus DeleteValue(RegistryHandle key, const std::string& name) = 0;
  // `*size` is the room in `data` on the way in and the stored byte count on the way out. With
  // `data` null only type and size are given; kRegistryMoreData when the room is too small. An
  // empty name is the key's default value.
  virtual RegistryStatus QueryValue(RegistryHandle key, const std::string& name,
                                    std::uint32_t* type, std::uint8_t* data,
                                    std::uint32_t* size) = 0;
  virtual RegistryStatus SetValue(RegistryHandle key, const std::string& name, std::uint32_t type,
                                  const std::uint8_t* data, std::uint32_t size) = 0;
  // Writes the name of sub-key `index` and a NUL to `buffer` of `length` characters;
  // kRegistryMoreData when they do not fit.
  virtual RegistryStatus EnumKey(RegistryHandle key, std::uint32_t index, char* buffer,
                                 std::uint32_t length) = 0;
  // `*length` is the room in `name` on the way in and the name's length without its NUL on the way
  // out.
  virtual RegistryStatus EnumValue(RegistryHandle key, std::uint32_t index, char* name,
                                   std::uint32_t* length) = 0;
  // The length of the longest value name of the key, without a NUL.
  virtual RegistryStatus LongestValueName(RegistryHandle key, std::uint32_t* length) = 0;
  virtual RegistryStatus CloseKey(RegistryHandle key) = 0;

  // Replaces each %NAME% of `source` by that environment variable; unknown ones stay. Returns the
  // characters needed with the NUL; `buffer` is filled only when `size` is at least that.
  virtual std::uint32_t ExpandEnvironment(const std::string& source, char* buffer,
                                          std::uint32_t size) = 0;
};

}  // namespace scrivo
