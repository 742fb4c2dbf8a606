#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace scrivo {

// A tag of an HTML page, from what stands between "<" and ">". It keeps views of that text.
class HtmlTag {
 public:
  explicit HtmlTag(std::string_view text);

  // In small letters, without the "/" of an end tag.
  const std::string& name() const { return name_; }
  bool is_end() const { return is_end_; }
  // The attribute's value as it stands in the page, without its quotes; "" for one without a
  // value. Names are compared without regard to case.
  std::optional<std::string_view> Attribute(std::string_view name) const;

 private:
  std::string name_;
  std::string_view attributes_;
  bool is_end_ = false;
};

// Text with its ASCII capital letters made small.
std::string SmallAscii(std::string_view text);

}  // namespace scrivo
