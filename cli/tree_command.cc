#include "cli/tree_command.h"

#include "cli/open_web.h"
#include "cli/web_account.h"

namespace scrivo {
namespace {

// The contents as indented lines. The nodes still to be printed are a list, not a call stack:
// a structure may be as deep as it is long.
class TreePrinter {
 public:
  TreePrinter(SiteWeb& web, Locator locate, Console& console)
      : web_(web), locate_(std::move(locate)), console_(console) {}

  void Print() {
    Take(web_.NavigationRoot()->Children(), 0);
    while (!waiting_.empty()) {
      const Waiting next = waiting_.back();
      waiting_.pop_back();
      PrintNode(*next.node, next.depth);
      Take(next.node->Children(), next.depth + 1);
    }
  }

 private:
  struct Waiting {
    std::shared_ptr<SiteNode> node;
    std::size_t depth;
  };

  void Take(const SiteNodes& nodes, std::size_t depth) {
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
      waiting_.push_back({*node, depth});
    }
  }

  void PrintNode(SiteNode& node, std::size_t depth) {
    const std::shared_ptr<SiteFile> file = node.File();
    std::string line = std::string(2 * depth, ' ') + node.Label();
    if (file) {
      line += " [" + locate_(file->Url()) + "]";
    } else if (const std::string address = node.Url(); !address.empty()) {
      line += " [" + locate_(address) + ", not in the web]";
    }
    console_.Print(line);
  }

  SiteWeb& web_;
  Locator locate_;
  Console& console_;
  std::vector<Waiting> waiting_;
};

}  // namespace

int PrintTree(const CompileOptions& options, Console& console) {
  WebWarnings warnings(console, options.all_messages);
  const std::shared_ptr<DiskWeb> web = OpenWebOf(options, warnings);
  TellOfWeb(options, *web, PagesGoTo::kThisCompiler, console);
  const Locator locate = LocatorFor(web);
  TreePrinter(*web, locate, console).Print();
  const SiteFiles outside = web->PagesOutsideContents();
  if (!outside.empty()) {
    console.Print("");
    console.Print("Pages outside the contents:");
    for (const std::shared_ptr<SiteFile>& page : outside) {
      console.Print("  " + page->Title() + " [" + locate(page->Url()) + "]");
    }
  }
  web->ReportLostCharacters();
  warnings.Sum();
  return 0;
}

}  // namespace scrivo
