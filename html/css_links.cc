#include "html/css_links.h"

#include "text/ascii_text.h"

namespace scrivo {
namespace {

class Finder {
 public:
  explicit Finder(std::string_view css) : css_(css) {}

  std::vector<CssLink> Find() {
    while (at_ < css_.size()) {
      const std::string_view rest = css_.substr(at_);
      if (rest.starts_with("/*")) {
        const std::size_t end = css_.find("*/", at_ + 2);
        at_ = end == std::string_view::npos ? css_.size() : end + 2;
      } else if (rest[0] == 'u' || rest[0] == 'U') {
        if (StartsWithIgnoringCase(rest, "url(")) {
          at_ += 4;
          TakeAddress(")");
        } else {
          ++at_;
        }
      } else if (rest[0] == '@' && StartsWithIgnoringCase(rest, "@import")) {
        at_ += 7;
        SkipBlanks();
        if (at_ < css_.size() && (css_[at_] == '"' || css_[at_] == '\'')) TakeAddress(";");
      } else {
        ++at_;
      }
    }
    return std::move(links_);
  }

 private:
  void SkipBlanks() {
    while (at_ < css_.size() && IsBlank(css_[at_])) ++at_;
  }

  // Takes an address in quotes, or up to `stop`; a line end stops an unclosed one.
  void TakeAddress(std::string_view stop) {
    SkipBlanks();
    if (at_ >= css_.size()) return;
    const char quote = css_[at_];
    const bool quoted = quote == '"' || quote == '\'';
    const std::size_t start = quoted ? at_ + 1 : at_;
    const char stops[] = {quoted ? quote : stop[0], '\r', '\n', '\0'};
    std::size_t end = css_.find_first_of(stops, start);
    if (end == std::string_view::npos) end = css_.size();
    const std::string_view address = Trimmed(css_.substr(start, end - start));
    if (!address.empty()) links_.push_back({address, start});
    at_ = end;
  }

  std::string_view css_;
  std::size_t at_ = 0;
  std::vector<CssLink> links_;
};

}  // namespace

std::vector<CssLink> FindCssLinks(std::string_view css) { return Finder(css).Find(); }

}  // namespace scrivo
