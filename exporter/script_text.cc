#include "exporter/script_text.h"

namespace scrivo {
namespace {

constexpr char kHexadecimal[] = "0123456789ABCDEF";

constexpr std::uint64_t kLastBase = 57, kBase = 32;
constexpr char kFirstLast = '#', kFirstOther = ']';

}  // namespace

void AppendScriptString(std::string_view utf8, std::string* out) {
  out->push_back('"');
  for (const char c : utf8) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out->push_back('\\');
      out->push_back(c);
    } else if (byte < 0x20 || c == '<' || byte == 0x7F) {
      out->append("\\x");
      out->push_back(kHexadecimal[byte >> 4]);
      out->push_back(kHexadecimal[byte & 15]);
    } else {
      out->push_back(c);
    }
  }
  out->push_back('"');
}

void AppendHtmlText(std::string_view utf8, std::string* out) {
  for (const char c : utf8) {
    switch (c) {
      case '&':
        out->append("&amp;");
        break;
      case '<':
        out->append("&lt;");
        break;
      case '>':
        out->append("&gt;");
        break;
      case '"':
        out->append("&quot;");
        break;
      case '\'':
        out->append("&#39;");
        break;
      case '\0':
        break;
      default:
        out->push_back(c);
    }
  }
}

void AppendAddress(std::string_view path, std::string* out) {
  constexpr std::string_view kPlain = "-._~!$()*,=@/";
  for (const char c : path) {
    const unsigned char byte = static_cast<unsigned char>(c);
    const bool alphanumeric =
        (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (alphanumeric || kPlain.find(c) != std::string_view::npos) {
      out->push_back(c);
    } else {
      out->push_back('%');
      out->push_back(kHexadecimal[byte >> 4]);
      out->push_back(kHexadecimal[byte & 15]);
    }
  }
}

void AppendNumber(std::uint64_t number, std::string* out) {
  const char last = static_cast<char>(kFirstLast + number % kLastBase);
  char others[16];
  int count = 0;
  // Digits from 1 up: so no number has two spellings, and the short ones reach further.
  for (number /= kLastBase; number > 0; number = (number - 1) / kBase) {
    others[count++] = static_cast<char>(kFirstOther + (number - 1) % kBase);
  }
  while (count > 0) out->push_back(others[--count]);
  out->push_back(last);
}

std::uint64_t TakeNumber(std::string_view* text) {
  std::uint64_t number = 0;
  while (!text->empty()) {
    const char c = text->front();
    text->remove_prefix(1);
    if (c < kFirstOther) return number * kLastBase + static_cast<std::uint64_t>(c - kFirstLast);
    number = number * kBase + static_cast<std::uint64_t>(c - kFirstOther + 1);
  }
  return 0;
}

}  // namespace scrivo
