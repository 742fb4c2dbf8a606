#include "host/win32/click_point.h"

#include <olectl.h>

#include <vector>

namespace scrivo::host {

const GUID kButtonEventsId = {
    0x000C0351, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

HRESULT ClickPoint::QueryInterface(REFIID id, void** object) {
  if (!object) return E_POINTER;
  *object = id == IID_IUnknown || id == IID_IConnectionPoint ? this : nullptr;
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG ClickPoint::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG ClickPoint::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT ClickPoint::GetConnectionInterface(IID* id) {
  if (!id) return E_POINTER;
  *id = kButtonEventsId;
  return S_OK;
}

HRESULT ClickPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = container_;
  if (!container_) return E_UNEXPECTED;
  container_->AddRef();
  return S_OK;
}

HRESULT ClickPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  *cookie = 0;
  if (!container_) return E_UNEXPECTED;
  auto events = ComPtr<IUnknown>::Share(sink).Query<IDispatch>(kButtonEventsId);
  if (!events) return CONNECT_E_CANNOTCONNECT;
  *cookie = ++last_cookie_;
  sinks_[*cookie] = std::move(events);
  return S_OK;
}

HRESULT ClickPoint::Unadvise(DWORD cookie) {
  return sinks_.erase(cookie) == 1 ? S_OK : CONNECT_E_NOCONNECTION;
}

HRESULT ClickPoint::EnumConnections(IEnumConnections** connections) {
  if (connections) *connections = nullptr;
  return E_NOTIMPL;
}

bool ClickPoint::TellClick(IDispatch* button) {
  // Sinks may come and go while they are told.
  std::vector<ComPtr<IDispatch>> sinks;
  for (const auto& [cookie, sink] : sinks_) sinks.push_back(sink);
  const auto self = ComPtr<IConnectionPoint>::Share(this);
  const auto pressed = ComPtr<IDispatch>::Share(button);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  for (const auto& sink : sinks) {
    VARIANT arguments[2];  // last first
    arguments[0].vt = VT_BYREF | VT_BOOL;
    arguments[0].pboolVal = &cancel;
    arguments[1].vt = VT_DISPATCH;
    arguments[1].pdispVal = button;
    DISPPARAMS parameters{arguments, nullptr, 2, 0};
    EXCEPINFO exception{};
    sink->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                 &exception, nullptr);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
  }
  return cancel != VARIANT_FALSE;
}

void ClickPoint::Close() {
  container_ = nullptr;
  sinks_.clear();
}

}  // namespace scrivo::host
