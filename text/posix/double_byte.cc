#include "text/double_byte.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <map>
#include <utility>

#include "text/code_page.h"

namespace scrivo {
namespace {

// One conversion descriptor. They are kept for the life of the thread, since opening one costs more
// than converting a page title.
class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (IsOpen()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool IsOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  // Converts from the start of `*in` until its end or the first byte that cannot be converted,
  // which is where `*in` then begins.
  void Run(std::string_view* in, std::string* out) {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    std::array<char, 4096> buffer;
    while (!in->empty()) {
      char* source = const_cast<char*>(in->data());  // iconv does not write to its input
      std::size_t left = in->size();
      char* target = buffer.data();
      std::size_t room = buffer.size();
      const std::size_t status = iconv(handle_, &source, &left, &target, &room);
      const int reason = errno;
      out->append(buffer.data(), buffer.size() - room);
      in->remove_prefix(in->size() - left);
      if (status == static_cast<std::size_t>(-1) && reason != E2BIG) return;
    }
  }

 private:
  iconv_t handle_;
};

const char* NameOf(int code_page) {
  switch (code_page) {
    case 932:
      return "CP932";
    case 936:
      return "CP936";
    case 949:
      return "CP949";
    default:
      return "CP950";
  }
}

Converter& ConverterFor(int code_page, bool to_utf8) {
  thread_local std::map<std::pair<int, bool>, Converter> converters;
  const char* name = NameOf(code_page);
  return converters
      .try_emplace({code_page, to_utf8}, to_utf8 ? "UTF-8" : name, to_utf8 ? name : "UTF-8")
      .first->second;
}

// The plain bytes at the front, which need no table.
void TakeAscii(std::string_view* in, std::string* out) {
  const std::size_t n = AsciiPrefix(*in);
  out->append(in->substr(0, n));
  in->remove_prefix(n);
}

}  // namespace

std::string DoubleByteToUtf8(std::string_view bytes, int code_page, Undefined undefined) {
  Converter& converter = ConverterFor(code_page, true);
  std::string out;
  out.reserve(bytes.size() * 2);
  while (!bytes.empty()) {
    if (converter.IsOpen()) {
      converter.Run(&bytes, &out);
    } else {
      TakeAscii(&bytes, &out);
    }
    if (bytes.empty()) break;
    AppendUndefined(bytes[0], undefined, &out);
    bytes.remove_prefix(1);
  }
  return out;
}

std::string DoubleByteFromUtf8(std::string_view utf8, int code_page, std::size_t* lost,
                               Undefined undefined) {
  Converter& converter = ConverterFor(code_page, false);
  std::string out;
  out.reserve(utf8.size());
  while (!utf8.empty()) {
    if (converter.IsOpen()) {
      converter.Run(&utf8, &out);
    } else {
      TakeAscii(&utf8, &out);
    }
    if (utf8.empty()) break;
    const auto byte = KeptByte(NextUtf8(&utf8));
    if (byte && undefined == Undefined::kKept) {
      out.push_back(*byte);
      continue;
    }
    out.push_back('?');
    if (lost != nullptr) ++*lost;
  }
  return out;
}

}  // namespace scrivo
