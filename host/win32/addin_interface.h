#pragma once

#include "com/win32/com_ptr.h"

namespace scrivo::host {

// {B65AD801-ABAF-11D0-BB8B-00A0C90F2744}
extern const GUID kAddinInterfaceId;

// What an add-in is called through (IDTExtensibility2), as a host sees it: in the order of the
// interface's own table, behind IDispatch.
struct AddinInterface : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, LONG connect_mode,
                                                 IDispatch* instance, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(LONG remove_mode, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;
};

enum ConnectMode : LONG { kAfterStartup = 0, kAtStartup = 1, kExternal = 2 };
enum DisconnectMode : LONG { kHostShutdown = 0, kUserClosed = 1 };

}  // namespace scrivo::host
