#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "site/site.h"

namespace scrivo {

// What the add-in asks of its host beyond the site model: command bars and opening webs. Text is
// UTF-8. Every operation may fail with an Error.

class CommandBarControls;

// Control types of the host's command bars.
enum ControlType : std::int32_t { kControlButton = 1, kControlPopup = 10 };

// A button or a popup on a command bar.
class CommandBarControl {
 public:
  virtual ~CommandBarControl() = default;

  virtual bool Visible() = 0;
  virtual void Caption(const std::string& caption) = 0;
  virtual void OnAction(const std::string& action) = 0;
  virtual void BeginGroup(bool begins) = 0;
  // A built-in icon of the host, by number.
  virtual void FaceId(std::int32_t face) = 0;
  // Deletes the control; the optional argument "Temporary" is left out.
  virtual void Delete() = 0;
  // The controls of a popup.
  virtual std::shared_ptr<CommandBarControls> Controls() = 0;

  // Called with the clicked control and the host's cancel flag.
  using ClickHandler = std::function<void(CommandBarControl& Ctrl, bool& CancelDefault)>;
  // From now on `handler` hears the button's clicks, until this object goes. It must not throw.
  virtual void OnClick(ClickHandler handler) = 0;
};

// The controls of a bar or a popup.
class CommandBarControls {
 public:
  virtual ~CommandBarControls() = default;

  // The control with this caption. A missing one fails.
  virtual std::shared_ptr<CommandBarControl> Item(const std::string& caption) = 0;
  // Adds a control at the end; identifier, parameter and position are left out, and so is
  // "Temporary" when it is not given.
  virtual std::shared_ptr<CommandBarControl> Add(ControlType type,
                                                 std::optional<bool> temporary) = 0;
};

// A command bar: a menu or a toolbar.
class CommandBar {
 public:
  virtual ~CommandBar() = default;

  virtual std::shared_ptr<CommandBarControls> Controls() = 0;
};

// A web that the host has just opened.
class OpenedWeb {
 public:
  virtual ~OpenedWeb() = default;

  // Brings the web's window to the front.
  virtual void Activate() = 0;
};

// The host as the add-in sees it.
class AddinHost : public HostApplication {
 public:
  // The command bar with this name. A missing one fails or is null, as the host pleases.
  virtual std::shared_ptr<CommandBar> Bar(const std::string& name) = 0;
  // Opens a folder as a web.
  virtual std::shared_ptr<OpenedWeb> OpenWeb(const std::string& path, const std::string& user_name,
                                             const std::string& password,
                                             std::int32_t open_options) = 0;
};

// The host's own object for the add-in.
class AddInInstance {
 public:
  virtual ~AddInInstance() = default;

  virtual std::string ProgId() = 0;
};

// The separately installed component that looks for a newer version. Every operation may fail.
class VersionChecker {
 public:
  virtual ~VersionChecker() = default;

  virtual void ProductName(const std::string& name) = 0;
  virtual void Server(const std::string& host_name) = 0;
  virtual std::string Result() = 0;
  virtual void Check() = 0;
};

}  // namespace scrivo
