#pragma once

#include <map>

#include "com/win32/com_ptr.h"
// After ole.h, on which it stands.
#include <ocidl.h>

namespace scrivo::host {

// {000C0351-0000-0000-C000-000000000046}, the events of a command bar button.
extern const GUID kButtonEventsId;

// Where sinks connect themselves to the clicks of one button. It outlives the button when a caller
// keeps it, and is then silent.
class ClickPoint : public IConnectionPoint {
 public:
  // `container` is that of the button, not owned.
  explicit ClickPoint(IConnectionPointContainer* container) : container_(container) {}
  ClickPoint(const ClickPoint&) = delete;
  ClickPoint& operator=(const ClickPoint&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
  HRESULT STDMETHODCALLTYPE
  GetConnectionPointContainer(IConnectionPointContainer** container) override;
  // The sink must answer for the events' own interface.
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

  // Tells every sink that the button was clicked; true when one of them has set the cancel flag.
  bool TellClick(IDispatch* button);
  std::size_t SinkCount() const { return sinks_.size(); }
  // The button goes: lets go of the sinks.
  void Close();

 private:
  virtual ~ClickPoint() = default;

  IConnectionPointContainer* container_;  // null once the button is gone
  std::map<DWORD, ComPtr<IDispatch>> sinks_;
  DWORD last_cookie_ = 0;
  LONG references_ = 1;
};

}  // namespace scrivo::host
