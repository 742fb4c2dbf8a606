#include "platform/registry_text.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "system/error.h"
#include "system/registry_store.h"

namespace scrivo {
namespace {

constexpr std::string_view kHeading = "REGEDIT4";

constexpr struct {
  std::uint32_t root;
  std::string_view name;
} kRoots[] = {
    {0x80000000, "HKEY_CLASSES_ROOT"},     {0x80000001, "HKEY_CURRENT_USER"},
    {0x80000002, "HKEY_LOCAL_MACHINE"},    {0x80000003, "HKEY_USERS"},
    {0x80000004, "HKEY_PERFORMANCE_DATA"}, {0x80000005, "HKEY_CURRENT_CONFIG"},
    {0x80000006, "HKEY_DYN_DATA"},
};

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char character : text) {
    switch (character) {
      case '\r':
        quoted += "\\r";
        break;
      case '\n':
        quoted += "\\n";
        break;
      case '\\':
      case '"':
        quoted += '\\';
        [[fallthrough]];
      default:
        quoted += character;
    }
  }
  return quoted + '"';
}

std::string Hex(const char* form, std::uint32_t number) {
  char text[16];
  std::snprintf(text, sizeof text, form, number);
  return text;
}

std::string FormatData(const StoredValue& value) {
  const std::string& data = value.data;
  if (value.type == kRegSz && !data.empty() && data.find('\0') == data.size() - 1) {
    return Quoted(data.substr(0, data.size() - 1));
  }
  if (value.type == kRegDword && data.size() == 4) {
    std::uint32_t number = 0;
    for (int i = 3; i >= 0; --i) number = number << 8 | static_cast<unsigned char>(data[i]);
    return Hex("dword:%08x", number);
  }
  std::string text = value.type == kRegBinary ? "hex:" : Hex("hex(%x):", value.type);
  for (std::size_t i = 0; i < data.size(); ++i) {
    if (i > 0) text += ',';
    text += Hex("%02x", static_cast<unsigned char>(data[i]));
  }
  return text;
}

void FormatKey(const StoredKey& key, const std::string& path, std::string* text) {
  if (!key.values.empty() || key.keys.empty()) *text += "\n[" + path + "]\n";
  for (const StoredValue& value : key.values) {
    *text += (value.name.empty() ? "@" : Quoted(value.name)) + "=" + FormatData(value) + "\n";
  }
  for (const StoredKey& below : key.keys) FormatKey(below, path + "\\" + below.name, text);
}

// Reads the parts of one line from its beginning on. A member that answers false has found
// something else.
class LineReader {
 public:
  explicit LineReader(std::string_view line) : rest_(line) {}

  bool AtEnd() const { return rest_.empty(); }

  bool Take(std::string_view word) {
    if (rest_.substr(0, word.size()) != word) return false;
    rest_.remove_prefix(word.size());
    return true;
  }

  bool TakeQuoted(std::string* text) {
    if (!Take("\"")) return false;
    text->clear();
    while (!rest_.empty()) {
      char character = rest_.front();
      rest_.remove_prefix(1);
      if (character == '"') return true;
      if (character == '\\') {
        if (rest_.empty()) return false;
        character = rest_.front() == 'r' ? '\r' : rest_.front() == 'n' ? '\n' : rest_.front();
        rest_.remove_prefix(1);
      }
      *text += character;
    }
    return false;
  }

  // A hexadecimal number of 1 to `most_digits` digits.
  bool TakeHex(std::size_t most_digits, std::uint32_t* number) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::size_t digits = 0;
    *number = 0;
    for (; digits < most_digits && digits < rest_.size(); ++digits) {
      const char character = rest_[digits];
      const bool is_upper = character >= 'A' && character <= 'F';
      const std::size_t digit = kDigits.find(is_upper ? character - 'A' + 'a' : character);
      if (digit == std::string_view::npos) break;
      *number = *number * 16 + static_cast<std::uint32_t>(digit);
    }
    rest_.remove_prefix(digits);
    return digits > 0;
  }

 private:
  std::string_view rest_;
};

bool ParseBytes(LineReader* line, std::string* data) {
  while (!line->AtEnd()) {
    std::uint32_t byte = 0;
    if (!data->empty() && !line->Take(",")) return false;
    if (!line->TakeHex(2, &byte)) return false;
    *data += static_cast<char>(byte);
  }
  return true;
}

bool ParseData(LineReader* line, StoredValue* value) {
  if (line->TakeQuoted(&value->data)) {
    value->type = kRegSz;
    value->data += '\0';
    return line->AtEnd();
  }
  if (line->Take("dword:")) {
    std::uint32_t number = 0;
    if (!line->TakeHex(8, &number)) return false;
    value->type = kRegDword;
    for (int i = 0; i < 4; ++i) value->data += static_cast<char>(number >> 8 * i);
    return line->AtEnd();
  }
  value->type = kRegBinary;
  if (line->Take("hex(")) {
    if (!line->TakeHex(8, &value->type) || !line->Take("):")) return false;
  } else if (!line->Take("hex:")) {
    return false;
  }
  return ParseBytes(line, &value->data);
}

bool ParseValue(std::string_view text, StoredKey* key) {
  LineReader line(text);
  StoredValue value;
  if (!line.Take("@") && !(line.TakeQuoted(&value.name) && !value.name.empty())) return false;
  if (!line.Take("=") || !ParseData(&line, &value)) return false;
  if (StoredValue* const earlier = key->FindValue(value.name)) {
    *earlier = std::move(value);
  } else {
    key->values.push_back(std::move(value));
  }
  return true;
}

// The key of a heading's path, made where it is missing; null when the path has no known root.
StoredKey* KeyOfHeading(std::string_view path, RegistryTree* tree) {
  const std::string_view root_name = path.substr(0, path.find('\\'));
  for (const auto& root : kRoots) {
    if (root.name != root_name) continue;
    StoredKey* key = &(*tree)[root.root];
    for (const std::string& name : KeyNames(std::string(path.substr(root_name.size())))) {
      key = &key->MakeKey(name);
    }
    return key;
  }
  return nullptr;
}

// Reads one line below the heading; `*key` is the key that values belong to.
bool ParseLine(std::string_view line, RegistryTree* tree, StoredKey** key) {
  if (line.empty() || line.front() == ';') return true;
  if (line.front() == '[' && line.back() == ']') {
    *key = KeyOfHeading(line.substr(1, line.size() - 2), tree);
    return *key != nullptr;
  }
  return *key && ParseValue(line, *key);
}

}  // namespace

std::string FormatRegistry(const RegistryTree& tree) {
  std::string text(kHeading);
  text += '\n';
  for (const auto& root : kRoots) {
    const auto found = tree.find(root.root);
    if (found == tree.end()) continue;
    const StoredKey& key = found->second;
    if (!key.values.empty() || !key.keys.empty()) FormatKey(key, std::string(root.name), &text);
  }
  return text;
}

RegistryTree ParseRegistry(const std::string& text, const std::string& file_name) {
  RegistryTree tree;
  StoredKey* key = nullptr;
  std::size_t number = 0;
  for (std::size_t start = 0; start < text.size() || number == 0;) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    std::string_view line = std::string_view(text).substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    start = end + 1;
    ++number;
    if (number == 1 ? line == kHeading : ParseLine(line, &tree, &key)) continue;
    throw Error(kPathFileAccessError, "Registry",
                file_name + ", line " + std::to_string(number) +
                    ": this is not a registry file, or it is damaged. Repair the line or move the "
                    "file away; until then it is left as it is");
  }
  return tree;
}

}  // namespace scrivo
