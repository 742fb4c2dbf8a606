#pragma once

#include "com/win32/ole.h"

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

}  // namespace scrivo
