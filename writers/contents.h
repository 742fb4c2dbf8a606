#pragma once

#include <deque>
#include <exception>
#include <memory>
#include <string>
#include <utility>

#include "platform/paths.h"
#include "site/site.h"
#include "system/system_services.h"
#include "writers/compile_job.h"

namespace scrivo {

// Writes the nested lists below one node at the end of a text, in time linear in the nodes and at
// any depth: the levels are kept in a stack of its own.
//
// `Level` decides what becomes of a failing statement. It has Enter(), Step(statement) and Leave(),
// each of which returns false once the level has been left; what the level wrote is then dropped.
// An error that one of them throws is thrown again in a Step of the level above.
template <typename Level>
class ContentsLists {
 public:
  // Both must outlive the object.
  ContentsLists(const Locator& locate, std::string* text) : locate_(locate), text_(*text) {}

  void Write(const std::shared_ptr<SiteNode>& root) {
    Call(root);
    while (!lists_.empty()) {
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
  struct List {
    List(std::shared_ptr<SiteNode> node, std::size_t start) : node(std::move(node)), start(start) {}

    std::shared_ptr<SiteNode> node;
    std::size_t start;  // of the list in the text
    bool entered = false;
    SiteNodes children;
    std::size_t next = 0;  // the child to write next
    Level level;
  };

  void Call(const std::shared_ptr<SiteNode>& node) { lists_.emplace_back(node, text_.size()); }

  // A level that is left by an abort or an error gives the empty string to the level above.
  void DropList() {
    text_.resize(lists_.back().start);
    lists_.pop_back();
  }

  // Goes one step further in the innermost list; false when that was aborted.
  bool Advance() {
    List& list = lists_.back();
    if (!list.entered) return Begin(list);
    return list.next < list.children.size() ? WriteItem(list) : End(list);
  }

  bool Begin(List& list) {
    list.entered = true;
    Level& step = list.level;
    return step.Enter() && step.Step([&] { text_ += kListStart; }) && step.Step([&] {
      if (list.node) list.children = list.node->Children();
    });
  }

  bool WriteItem(List& list) {
    const std::shared_ptr<SiteNode> child = list.children[list.next++];
    Level& step = list.level;
    std::shared_ptr<SiteFile> file;
    bool has_children = false;
    const bool going_on = step.Step([&] {
      text_ += kEntryStart + (kNameStart + ToAnsi(child->Label())) + kValueEnd;
    }) && step.Step([&] { file = child->File(); }) &&
                          (!file || step.Step([&] {
                            text_ += kLocalStart + NameToAnsi(locate_(file->Url())) + kValueEnd;
                          })) &&
                          step.Step([&] { text_ += kEntryEnd; }) &&
                          step.Step([&] { has_children = !child->Children().empty(); });
    if (going_on && has_children) Call(child);
    return going_on;
  }

  bool End(List& list) {
    if (!list.level.Step([&] { text_ += kListEnd; })) return false;
    list.level.Leave();
    lists_.pop_back();
    return true;
  }

  // Raises the error that ended the list below in the statement that called for it.
  bool FailCall() {
    List& list = lists_.back();
    bool again = false;
    const bool going_on = list.level.Step([&] {
      if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
      again = true;  // the answer was to retry
    });
    if (again) Call(list.children[list.next - 1]);
    return going_on;
  }

  const Locator& locate_;
  std::string& text_;
  std::deque<List> lists_;      // innermost at the back
  std::exception_ptr failure_;  // a failure that ended a list, on its way up
};

// The list of the children of `root` and all that is below them; the root itself is not written.
// Linear in the nodes, at any depth. Throws what a node throws.
std::string ContentsList(const std::shared_ptr<SiteNode>& root, const Locator& locate);

// The contents file (.hhc) around such a list, without its last line end.
std::string ContentsFile(const std::string& list);

}  // namespace scrivo
