#pragma once

#include <memory>
#include <string>
#include <vector>

#include "addin/addin_host.h"
#include "addin/win32/click_connection.h"
#include "com/win32/dispatch_call.h"

namespace scrivo {

// The host's command bars, called by name. `listener` is kept alive while a click handler runs.

class ComControl : public CommandBarControl {
 public:
  ComControl(LateBound control, std::weak_ptr<void> listener)
      : control_(std::move(control)), listener_(std::move(listener)) {}

  bool Visible() override;
  void Caption(const std::string& caption) override;
  void OnAction(const std::string& action) override;
  void BeginGroup(bool begins) override;
  void FaceId(std::int32_t face) override;
  void Delete() override;
  std::shared_ptr<CommandBarControls> Controls() override;
  void OnClick(ClickHandler handler) override;

 private:
  LateBound control_;
  std::weak_ptr<void> listener_;
  std::vector<ClickConnection> clicks_;
};

class ComControls : public CommandBarControls {
 public:
  ComControls(LateBound controls, std::weak_ptr<void> listener)
      : controls_(std::move(controls)), listener_(std::move(listener)) {}

  std::shared_ptr<CommandBarControl> Item(const std::string& caption) override;
  std::shared_ptr<CommandBarControl> Add(ControlType type, std::optional<bool> temporary) override;

 private:
  LateBound controls_;
  std::weak_ptr<void> listener_;
};

class ComBar : public CommandBar {
 public:
  ComBar(LateBound bar, std::weak_ptr<void> listener)
      : bar_(std::move(bar)), listener_(std::move(listener)) {}

  std::shared_ptr<CommandBarControls> Controls() override;

 private:
  LateBound bar_;
  std::weak_ptr<void> listener_;
};

// The host's application object, called by name.
class ComHost : public AddinHost {
 public:
  // `listener` is kept alive while one of the buttons' click handlers runs: it is whom they call.
  ComHost(LateBound application, std::weak_ptr<void> listener)
      : application_(std::move(application)), listener_(std::move(listener)) {}

  std::shared_ptr<SiteWeb> CurrentWeb() override;
  // `web` must be one that this host gave.
  std::string RelativeLocation(SiteWeb& web, const std::string& address) override;
  std::string Version() override;
  std::shared_ptr<CommandBar> Bar(const std::string& name) override;
  std::shared_ptr<OpenedWeb> OpenWeb(const std::string& path, const std::string& user_name,
                                     const std::string& password,
                                     std::int32_t open_options) override;

 private:
  LateBound application_;
  std::weak_ptr<void> listener_;
};

// The host's object for the add-in, called by name.
class ComAddInInstance : public AddInInstance {
 public:
  explicit ComAddInInstance(LateBound instance) : instance_(std::move(instance)) {}

  std::string ProgId() override;

 private:
  LateBound instance_;
};

}  // namespace scrivo
