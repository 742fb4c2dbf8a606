#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "addin/addin_host.h"
#include "system/error.h"

namespace scrivo {

// A control of the fake host, with a memory of what was set on it, in order.
struct FakeControl {
  std::int32_t type = 0;
  std::optional<bool> temporary;
  std::string caption, action;
  bool visible = true, begins_group = false, deleted = false;
  std::int32_t face = 0;
  std::vector<std::string> set;  // "BeginGroup", "Caption", … as they were set
  std::vector<std::shared_ptr<FakeControl>> children;
  std::map<int, CommandBarControl::ClickHandler> handlers;  // by subscription

  // The user presses the button; true when nobody cancelled it.
  bool Click();
  FakeControl* Child(const std::string& child_caption);
};

// A host whose command bars are records, which can be made to fail every n-th call.
class FakeAddinHost : public AddinHost {
 public:
  std::map<std::string, std::shared_ptr<FakeControl>> bars;  // a bar is a control with children
  std::shared_ptr<SiteWeb> web;
  std::vector<std::string> opened;  // path|user|password|options
  bool opens_webs = true;
  int activations = 0;
  std::string version = "12.0.0.6211";
  int fail_every = 0;  // 0: never
  int calls = 0;
  bool missing_is_null = false;  // what is missing is not an object, instead of failing
  int null_every = 0;            // every n-th object asked for is none; 0: never
  int objects = 0;
  int missing_control = 0;               // the n-th control that is to be added is none; 0: never
  std::vector<std::string> log;          // "bar Tools", "add 10", "set Caption", …
  std::function<void()> on_note;         // runs after each entry of the log
  std::function<void()> on_current_web;  // runs while the open web is asked for
  int live_references = 0;               // wrappers handed out and not yet released

  // Counts one call of the host and throws when it is one that fails.
  void Call();
  // Counts one object that the host is asked for; true when it gives none instead.
  bool GivesNone() { return null_every > 0 && ++objects % null_every == 0; }
  void Note(const std::string& entry) {
    log.push_back(entry);
    if (on_note) on_note();
  }

  std::shared_ptr<SiteWeb> CurrentWeb() override;
  std::string RelativeLocation(SiteWeb& of, const std::string& address) override;
  std::string Version() override;
  std::shared_ptr<CommandBar> Bar(const std::string& name) override;
  std::shared_ptr<OpenedWeb> OpenWeb(const std::string& path, const std::string& user_name,
                                     const std::string& password,
                                     std::int32_t open_options) override;
};

class FakeAddInInstance : public AddInInstance {
 public:
  int reads = 0;
  std::string ProgId() override {
    ++reads;
    return "Kestrel.Connect";
  }
};

}  // namespace scrivo
