#pragma once

#include <memory>
#include <string>

#include "addin/addin_host.h"
#include "com/win32/dispatch_call.h"

namespace scrivo {

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
