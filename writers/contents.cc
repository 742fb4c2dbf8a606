#include "writers/contents.h"

namespace scrivo {
namespace {

// Lets every error pass.
struct PlainLevel {
  bool Enter() { return true; }
  template <typename Statement>
  bool Step(Statement&& statement) {
    statement();
    return true;
  }
  bool Leave() { return true; }
};

}  // namespace

std::string ContentsList(const std::shared_ptr<SiteNode>& root, const Locator& locate) {
  std::string text;
  ContentsLists<PlainLevel>(locate, &text).Write(root);
  return text;
}

std::string ContentsFile(const std::string& list) { return kSitemapStart + list + kSitemapEnd; }

}  // namespace scrivo
