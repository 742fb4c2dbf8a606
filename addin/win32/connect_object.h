#pragma once

#include <memory>

#include "addin/connect.h"
#include "com/win32/com_ptr.h"
#include "com/win32/dispatch_object.h"

namespace scrivo {

// {B65AD801-ABAF-11D0-BB8B-00A0C90F2744}
extern const GUID kExtensibilityId;

// The interface through which hosts of the Office family speak to their add-ins
// (IDTExtensibility2), a dual one: the order of its members is that of the host's calls. `custom`
// may be null and stays the host's.
class Extensibility : public IDispatch {
 public:
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, LONG connect_mode,
                                                 IDispatch* instance, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(LONG remove_mode, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;
};

// The add-in as the host creates it: Connect behind the host's own interface for add-ins, and by
// name its public operations. Both show one set of names; the interface's own members have the
// numbers 1 to 5, the public operations follow one another from kFirstOperation on.
class ConnectObject : public DispatchObject {
 public:
  static constexpr DISPID kFirstOperation = 0x60030000;

  explicit ConnectObject(std::shared_ptr<Connect> connect);

  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD kinds,
                                   DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                   UINT* wrong_argument) override;

 protected:
  // A host that lets go of a connected add-in has disconnected it.
  ~ConnectObject() override;
  const DispatchTable& Members() const override;
  void* OtherInterface(REFIID id) override;

 private:
  // The host's interface, part of this object.
  class HostSide : public Extensibility {
   public:
    explicit HostSide(ConnectObject& owner) : owner_(owner) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD kinds,
                                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrong_argument) override;
    HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, LONG connect_mode,
                                           IDispatch* instance, SAFEARRAY** custom) override;
    HRESULT STDMETHODCALLTYPE OnDisconnection(LONG remove_mode, SAFEARRAY** custom) override;
    HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) override;
    HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) override;
    HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) override;

   private:
    ConnectObject& owner_;
  };

  static const DispatchTable& Table();
  void ConnectTo(IDispatch* application, LONG connect_mode, IDispatch* instance);

  std::shared_ptr<Connect> connect_;
  HostSide host_side_{*this};
};

}  // namespace scrivo
