// The contents file (.hhc): frmMain::BuildContentFile and its worker EnumNodes.

#include <deque>
#include <exception>
#include <utility>

#include "errors/frame.h"
#include "errors/procedure_level.h"
#include "generator/frm_main.h"
#include "generator/project_names.h"
#include "generator/sitemap_text.h"
#include "platform/text_file.h"

namespace scrivo {
namespace {

// Writes the nested lists below one node at the end of a text. Every list is a call of EnumNodes
// to the error handler, its levels kept in a stack of our own.
class ContentsLists {
 public:
  // The locations of pages are those in the web that is open in `form`.
  ContentsLists(frmMain& form, std::string* text) : form_(form), text_(*text) {}

  void Write(const std::shared_ptr<SiteNode>& root) {
    Call(root);
    while (!levels_.empty()) {
      try {
        const bool going_on = failure_ ? FailCall() : Advance();
        if (!going_on) DropList();
      } catch (...) {
        failure_ = std::current_exception();
        DropList();
      }
    }
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  // One list that is being written.
  struct Level {
    Level(std::shared_ptr<SiteNode> node, std::size_t start)
        : node(std::move(node)), start(start) {}

    std::shared_ptr<SiteNode> node;
    std::size_t start;  // of the list in the text
    bool entered = false;
    SiteNodes children;
    std::size_t next = 0;  // the child to write next
    ProcedureLevel procedure;
  };

  void Call(const std::shared_ptr<SiteNode>& node) { levels_.emplace_back(node, text_.size()); }

  // A level that is left by an abort or an error gives the empty string to the level above.
  void DropList() {
    text_.resize(levels_.back().start);
    levels_.pop_back();
  }

  // Goes one step further in the innermost list; false when that was aborted.
  bool Advance() {
    Level& level = levels_.back();
    if (!level.entered) return Begin(level);
    return level.next < level.children.size() ? WriteItem(level) : End(level);
  }

  bool Begin(Level& level) {
    level.entered = true;
    ProcedureLevel& step = level.procedure;
    return step.Enter("Kestrel.frmMain.EnumNodes") && step.Step([&] { text_ += kListStart; }) &&
           step.Step([&] {
             if (level.node) level.children = level.node->Children();
           });
  }

  bool WriteItem(Level& level) {
    const std::shared_ptr<SiteNode> child = level.children[level.next++];
    ProcedureLevel& step = level.procedure;
    std::shared_ptr<SiteFile> file;
    bool has_children = false;
    const bool going_on =
        step.Step([&] { text_ += kEntryStart + (kNameStart + child->Label()) + kValueEnd; }) &&
        step.Step([&] { file = child->File(); }) &&
        (!file ||
         step.Step([&] { text_ += kLocalStart + form_.LocationOf(file->Url()) + kValueEnd; })) &&
        step.Step([&] { text_ += kEntryEnd; }) &&
        step.Step([&] { has_children = !child->Children().empty(); });
    if (going_on && has_children) Call(child);
    return going_on;
  }

  bool End(Level& level) {
    if (!level.procedure.Step([&] { text_ += kListEnd; })) return false;
    level.procedure.Leave();
    levels_.pop_back();
    return true;
  }

  // Raises the error that ended the list below in the statement that called for it.
  bool FailCall() {
    Level& level = levels_.back();
    bool again = false;
    const bool going_on = level.procedure.Step([&] {
      if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
      again = true;  // the answer was to retry
    });
    if (again) Call(level.children[level.next - 1]);
    return going_on;
  }

  frmMain& form_;
  std::string& text_;
  std::deque<Level> levels_;    // innermost at the back
  std::exception_ptr failure_;  // a failure inside the error handler, on its way up
};

}  // namespace

std::string frmMain::EnumNodes(const std::shared_ptr<SiteNode>& node) {
  std::string text;
  ContentsLists(*this, &text).Write(node);
  return text;
}

bool frmMain::BuildContentFile() {
  bool written = false;
  Procedure("Kestrel.frmMain.BuildContentFile", [&](Steps& step) {
    std::string text = kSitemapStart;
    std::shared_ptr<SiteNode> root;
    step([&] { root = OpenWeb().NavigationRoot(); });
    step([&] { text += EnumNodes(root); });
    text += kSitemapEnd;
    step([&] { contents_path_ = NewProjectPath(".hhc"); });
    step([&] { WriteTextFile(contents_path_, text); });
    written = true;
  });
  return written;
}

}  // namespace scrivo
