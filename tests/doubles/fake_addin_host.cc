#include "tests/doubles/fake_addin_host.h"

#include <algorithm>

namespace scrivo {
namespace {

// Counted by the host for as long as it lives.
class Reference {
 public:
  explicit Reference(FakeAddinHost& host) : host_(host) { ++host_.live_references; }
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;
  ~Reference() { --host_.live_references; }

  FakeAddinHost& host() const { return host_; }

 private:
  FakeAddinHost& host_;
};

class ControlsReference : public CommandBarControls {
 public:
  ControlsReference(FakeAddinHost& host, std::shared_ptr<FakeControl> parent)
      : reference_(host), parent_(std::move(parent)) {}

  std::shared_ptr<CommandBarControl> Item(const std::string& caption) override;
  std::shared_ptr<CommandBarControl> Add(ControlType type, std::optional<bool> temporary) override;

 private:
  Reference reference_;
  std::shared_ptr<FakeControl> parent_;
};

class ControlReference : public CommandBarControl {
 public:
  ControlReference(FakeAddinHost& host, std::shared_ptr<FakeControl> control)
      : reference_(host), control_(std::move(control)) {}
  ~ControlReference() override { control_->handlers.erase(subscription_); }

  bool Visible() override {
    reference_.host().Call();
    return control_->visible;
  }
  void Caption(const std::string& caption) override {
    Set("Caption");
    control_->caption = caption;
  }
  void OnAction(const std::string& action) override {
    Set("OnAction");
    control_->action = action;
  }
  void BeginGroup(bool begins) override {
    Set("BeginGroup");
    control_->begins_group = begins;
  }
  void FaceId(std::int32_t face) override {
    Set("FaceId");
    control_->face = face;
  }
  void Delete() override {
    reference_.host().Call();
    control_->deleted = true;
  }
  std::shared_ptr<CommandBarControls> Controls() override {
    reference_.host().Call();
    if (reference_.host().GivesNone()) return nullptr;
    return std::make_shared<ControlsReference>(reference_.host(), control_);
  }
  void OnClick(ClickHandler handler) override {
    reference_.host().Call();
    static int next = 0;
    subscription_ = ++next;
    control_->handlers[subscription_] = std::move(handler);
  }

 private:
  void Set(const std::string& property) {
    reference_.host().Call();
    control_->set.push_back(property);
    reference_.host().Note("set " + property);
  }

  Reference reference_;
  std::shared_ptr<FakeControl> control_;
  int subscription_ = 0;
};

std::shared_ptr<CommandBarControl> ControlsReference::Item(const std::string& caption) {
  reference_.host().Call();
  if (reference_.host().GivesNone()) return nullptr;
  for (const auto& child : parent_->children) {
    if (child->caption == caption && !child->deleted) {
      return std::make_shared<ControlReference>(reference_.host(), child);
    }
  }
  if (reference_.host().missing_is_null) return nullptr;
  throw Error(kInvalidProcedureCall, "FakeAddinHost", "There is no control " + caption);
}

std::shared_ptr<CommandBarControl> ControlsReference::Add(ControlType type,
                                                          std::optional<bool> temporary) {
  FakeAddinHost& host = reference_.host();
  host.Call();
  host.Note("add " + std::to_string(type));
  if (host.GivesNone() || (host.missing_control > 0 && --host.missing_control == 0)) return nullptr;
  auto child = std::make_shared<FakeControl>();
  child->type = type;
  child->temporary = temporary;
  parent_->children.push_back(child);
  return std::make_shared<ControlReference>(host, child);
}

class BarReference : public CommandBar {
 public:
  BarReference(FakeAddinHost& host, std::shared_ptr<FakeControl> bar)
      : reference_(host), bar_(std::move(bar)) {}

  std::shared_ptr<CommandBarControls> Controls() override {
    reference_.host().Call();
    if (reference_.host().GivesNone()) return nullptr;
    return std::make_shared<ControlsReference>(reference_.host(), bar_);
  }

 private:
  Reference reference_;
  std::shared_ptr<FakeControl> bar_;
};

class OpenedFakeWeb : public OpenedWeb {
 public:
  explicit OpenedFakeWeb(FakeAddinHost& host) : reference_(host) {}

  void Activate() override {
    reference_.host().Call();
    ++reference_.host().activations;
  }

 private:
  Reference reference_;
};

// A control to pass to handlers; they must leave it alone.
class Untouchable : public CommandBarControl {
 public:
  bool Visible() override { throw Touched(); }
  void Caption(const std::string&) override { throw Touched(); }
  void OnAction(const std::string&) override { throw Touched(); }
  void BeginGroup(bool) override { throw Touched(); }
  void FaceId(std::int32_t) override { throw Touched(); }
  void Delete() override { throw Touched(); }
  std::shared_ptr<CommandBarControls> Controls() override { throw Touched(); }
  void OnClick(ClickHandler) override { throw Touched(); }

 private:
  static Error Touched() { return Error(kInternalError, "FakeAddinHost", "touched"); }
};

}  // namespace

bool FakeControl::Click() {
  Untouchable control;
  bool cancel = false;
  const auto called = handlers;
  for (const auto& [subscription, handler] : called) handler(control, cancel);
  return !cancel;
}

FakeControl* FakeControl::Child(const std::string& child_caption) {
  for (const auto& child : children) {
    if (child->caption == child_caption && !child->deleted) return child.get();
  }
  return nullptr;
}

void FakeAddinHost::Call() {
  ++calls;
  if (fail_every > 0 && calls % fail_every == 0) {
    throw Error(-2147467259, "FakeAddinHost", "Unspecified error");
  }
}

std::shared_ptr<SiteWeb> FakeAddinHost::CurrentWeb() {
  Call();
  if (on_current_web) on_current_web();
  return web;
}

std::string FakeAddinHost::RelativeLocation(SiteWeb& of, const std::string& address) {
  Call();
  return address.substr(of.Url().size() + 1);
}

std::string FakeAddinHost::Version() {
  Call();
  return version;
}

std::shared_ptr<CommandBar> FakeAddinHost::Bar(const std::string& name) {
  Call();
  Note("bar " + name);
  if (GivesNone()) return nullptr;
  const auto bar = bars.find(name);
  if (bar == bars.end()) {
    if (missing_is_null) return nullptr;
    throw Error(kInvalidProcedureCall, "FakeAddinHost", "There is no bar " + name);
  }
  return std::make_shared<BarReference>(*this, bar->second);
}

std::shared_ptr<OpenedWeb> FakeAddinHost::OpenWeb(const std::string& path,
                                                  const std::string& user_name,
                                                  const std::string& password,
                                                  std::int32_t open_options) {
  Call();
  opened.push_back(path + "|" + user_name + "|" + password + "|" + std::to_string(open_options));
  if (GivesNone()) return nullptr;
  if (!opens_webs) throw Error(kPathNotFound, "FakeAddinHost", "The folder is no web");
  return std::make_shared<OpenedFakeWeb>(*this);
}

}  // namespace scrivo
