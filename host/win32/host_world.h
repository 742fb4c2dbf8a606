#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "com/win32/com_ptr.h"
#include "host/bar_model.h"
#include "host/session.h"
#include "host/win32/addin_list.h"

namespace scrivo::host {

class ControlObject;
class HostObject;

// One running host without its window: the open webs, the command bars and the add-ins, behind
// the objects that add-ins see. A program has one; a test may have many.
class HostWorld : public std::enable_shared_from_this<HostWorld> {
 public:
  // A world with the bars "Menu Bar" (with the popup "Tools"), "Standard" and "Tools", the last
  // two without controls, and no web.
  static std::shared_ptr<HostWorld> Make(PathStyle style = PathStyle::kWindows);

  Session session;
  BarModel bars;
  AddinList addins;

  // Called before each member that an add-in calls, with "Class.Member"; what it throws becomes the
  // call's failure. Empty: nothing happens.
  std::function<void(const std::string& member)> before_call;
  // Opens a page of the web in the program that is registered for it; empty: nothing happens.
  std::function<void(const std::string& path)> open_document;
  // Ends the program; empty: nothing happens.
  std::function<void()> quit;

  // The application object, as it is passed to an add-in.
  ComPtr<IDispatch> Application();
  // Presses a button as the user does: loads the add-in that its action names, tells those who
  // listen, and runs a built-in button's command unless one of them has cancelled it. Throws
  // Error for a control that cannot be pressed.
  void Press(const std::shared_ptr<BarControl>& control);
  // Disconnects the add-ins and takes the temporary controls away.
  void ShutDown();

  // The objects of the object model that live, and how many references to them are held.
  std::set<HostObject*> objects;
  long references = 0;
  // This world's own object behind an interface pointer; null for a stranger's.
  HostObject* Own(IDispatch* object) const;

  // The living object of each control: a control has one at a time, and who listens to its clicks
  // listens to that object.
  std::map<const BarControl*, ControlObject*> control_objects;

 private:
  explicit HostWorld(PathStyle style) : session(style), addins(*this) {}
};

}  // namespace scrivo::host
