#pragma once

#include <map>

#include "addin/win32/click_connection.h"
#include "tests/com/win32/scripted_object.h"

namespace scrivo {

// Where a scripted button lets its clicks be heard: connection point and its container in one.
class ScriptedEvents : public IConnectionPointContainer, public IConnectionPoint {
 public:
  static ComPtr<ScriptedEvents> Make() { return ComPtr<ScriptedEvents>::Take(new ScriptedEvents); }
  static long& Living() {
    static long living = 0;
    return living;
  }

  HRESULT find_result = S_OK;
  HRESULT advise_result = S_OK;
  std::map<DWORD, ComPtr<IDispatch>> sinks;  // by cookie

  // Sends an event to every sink. Returns the first sink's answer.
  HRESULT Send(DISPID id, DISPPARAMS* arguments) {
    HRESULT answer = S_FALSE;
    const auto called = sinks;
    for (const auto& [cookie, sink] : called) {
      const HRESULT result = sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                          arguments, nullptr, nullptr, nullptr);
      if (answer == S_FALSE) answer = result;
    }
    return answer;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id == IID_IUnknown || id == IID_IConnectionPointContainer) {
      *object = static_cast<IConnectionPointContainer*>(this);
    } else if (id == IID_IConnectionPoint) {
      *object = static_cast<IConnectionPoint*>(this);
    }
    if (*object) AddRef();
    return *object ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
    *point = nullptr;
    if (FAILED(find_result)) return find_result;
    if (id != kButtonEvents) return CONNECT_E_NOCONNECTION;
    *point = this;
    AddRef();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    if (FAILED(advise_result)) return advise_result;
    const auto heard = ComPtr<IUnknown>::Share(sink).Query<IDispatch>(kButtonEvents);
    if (!heard) return CONNECT_E_CANNOTCONNECT;
    *cookie = ++last_cookie_;
    sinks[*cookie] = heard;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    return sinks.erase(cookie) == 1 ? S_OK : CONNECT_E_NOCONNECTION;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

 private:
  ScriptedEvents() { ++Living(); }
  virtual ~ScriptedEvents() { --Living(); }

  ULONG references_ = 1;
  DWORD last_cookie_ = 0;
};

// The interface of the events without the choice between its two bases.
inline ComPtr<IUnknown> Unknown(const ComPtr<ScriptedEvents>& events) {
  return ComPtr<IUnknown>::Share(static_cast<IConnectionPointContainer*>(events.get()));
}

}  // namespace scrivo
