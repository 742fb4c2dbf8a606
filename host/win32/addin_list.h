#pragma once

#include <memory>
#include <string>
#include <vector>

#include "com/win32/com_ptr.h"
#include "host/settings.h"

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

class HostWorld;

// An add-in of the list, loaded or not.
struct Addin {
  AddinEntry entry;
  std::string class_id;              // "{…}", "" when the class is not registered
  ComPtr<AddinInterface> connected;  // null while it is not connected
  ComPtr<IDispatch> object;          // what the add-in has published for others
  std::string problem;               // why it could not be connected; "" when it could
  bool IsConnected() const { return static_cast<bool>(connected); }
};

// The add-ins of a host, loaded through COM and told what happens to them.
class AddinList {
 public:
  explicit AddinList(HostWorld& world) : world_(world) {}
  AddinList(const AddinList&) = delete;
  AddinList& operator=(const AddinList&) = delete;

  const std::vector<std::shared_ptr<Addin>>& Addins() const { return addins_; }
  // The add-in with this ProgID; null when there is none.
  std::shared_ptr<Addin> Find(const std::string& prog_id) const;

  // Reads the registered add-ins. Those that are connected stay, registered or not.
  void Read();
  // Connects every add-in that is to be loaded at start, then tells them that the host has
  // started. What fails is kept as the add-in's problem.
  void ConnectAtStart(LONG mode);
  // Connects an add-in. Throws Error when it cannot be, with its problem.
  void Connect(const std::shared_ptr<Addin>& addin, LONG mode);
  // Connects the add-in with this ProgID if it is registered and not connected. Nothing is
  // thrown.
  void ConnectOnDemand(const std::string& prog_id);
  void Disconnect(const std::shared_ptr<Addin>& addin, LONG mode);
  // Announces the end of the host and disconnects all.
  void DisconnectAll();

 private:
  void TellUpdate();

  HostWorld& world_;
  std::vector<std::shared_ptr<Addin>> addins_;
};

}  // namespace scrivo::host
