#include "addin/win32/connect_object.h"

#include "addin/win32/com_host.h"
#include "addin/win32/host_entry.h"
#include "compiler/frm_hhc.h"
#include "decompile/frm_decompile.h"
#include "generator/frm_main.h"
#include "platform/globals.h"

namespace scrivo {

const GUID kExtensibilityId = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

namespace {

using Parameters = std::vector<DispatchParameter>;

const Parameters kConnection = {{L"Application", VT_DISPATCH},
                                {L"ConnectMode", VT_I4},
                                {L"AddInInst", VT_DISPATCH},
                                {L"custom", VT_VARIANT, true}};
const Parameters kDisconnection = {{L"RemoveMode", VT_I4}, {L"custom", VT_VARIANT, true}};
const Parameters kNotice = {{L"custom", VT_VARIANT, true}};
const Parameters kClickParameters = {{L"Ctrl", VT_DISPATCH}, {L"CancelDefault", VT_VARIANT}};

struct Command {
  const wchar_t* name;
  void (Connect::*run)();
};
constexpr Command kCommands[] = {
    {L"HideKestrel", &Connect::HideKestrel},     {L"ShowKestrel", &Connect::ShowKestrel},
    {L"ShowDecompile", &Connect::ShowDecompile}, {L"HideDecompile", &Connect::HideDecompile},
    {L"ShowExample", &Connect::ShowExample},
};

struct ClickHandler {
  const wchar_t* name;
  void (Connect::*run)(CommandBarControl&, bool&);
};
constexpr ClickHandler kClickHandlers[] = {
    {L"cbBtnKestrel_Click", &Connect::cbBtnKestrel_Click},
    {L"cbBtnDecompile_Click", &Connect::cbBtnDecompile_Click},
    {L"cbBtnHelp_Click", &Connect::cbBtnHelp_Click},
    {L"cbBtnHome_Click", &Connect::cbBtnHome_Click},
    {L"cbBtnCheckVersion_Click", &Connect::cbBtnCheckVersion_Click},
    {L"cbBtnOpenSample_Click", &Connect::cbBtnOpenSample_Click},
    {L"cbBtnPanelKestrel_Click", &Connect::cbBtnPanelKestrel_Click},
    {L"cbBtnPanelDecompile_Click", &Connect::cbBtnPanelDecompile_Click},
    {L"cbBtnPanelHelp_Click", &Connect::cbBtnPanelHelp_Click},
    {L"cbBtnPanelHome_Click", &Connect::cbBtnPanelHome_Click},
    {L"cbBtnPanelCheckVersion_Click", &Connect::cbBtnPanelCheckVersion_Click},
    {L"cbBtnPanelOpenSample_Click", &Connect::cbBtnPanelOpenSample_Click},
};

LateBound ObjectOf(IDispatch* object) { return LateBound(ComPtr<IDispatch>::Share(object)); }

}  // namespace

ConnectObject::ConnectObject(std::shared_ptr<Connect> connect) : connect_(std::move(connect)) {}

ConnectObject::~ConnectObject() {
  const Connect* connected = Globals().ConnectInstance;
  if (connected && connected != connect_.get()) return;  // the forms are another's
  if (connected) FromHost([&] { connect_->AddinInstance_OnDisconnection(); });
  // The library is to be unloaded now, which a form that stays loaded would prevent.
  FromHost([] { frmHHC::Unload(); });
  FromHost([] { frmMain::Unload(); });
  FromHost([] { frmDecompile::Unload(); });
}

void ConnectObject::ConnectTo(IDispatch* application, LONG connect_mode, IDispatch* instance) {
  connect_->AddinInstance_OnConnection(std::make_shared<ComHost>(ObjectOf(application), connect_),
                                       connect_mode,
                                       std::make_shared<ComAddInInstance>(ObjectOf(instance)));
}

HRESULT ConnectObject::Invoke(DISPID member, REFIID id, LCID locale, WORD kinds,
                              DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                              UINT* wrong_argument) {
  const auto self = ComPtr<IDispatch>::Share(this);
  const OwnControls controls;
  return DispatchObject::Invoke(member, id, locale, kinds, arguments, result, exception,
                                wrong_argument);
}

const DispatchTable& ConnectObject::Table() {
  static const DispatchTable table = [] {
    const auto on_connection = [](DispatchObject& self, const DispatchArguments& arguments) {
      static_cast<ConnectObject&>(self).ConnectTo(arguments.Object(0), arguments.Long(1),
                                                  arguments.Object(2));
      return Variant();
    };
    const auto on_disconnection = [](DispatchObject& self, const DispatchArguments&) {
      static_cast<ConnectObject&>(self).connect_->AddinInstance_OnDisconnection();
      return Variant();
    };
    const auto nothing = [](DispatchObject&, const DispatchArguments&) { return Variant(); };

    DispatchTable members;
    members.Add({1, L"OnConnection", DISPATCH_METHOD, kConnection, on_connection});
    members.Add({2, L"OnDisconnection", DISPATCH_METHOD, kDisconnection, on_disconnection});
    members.Add({3, L"OnAddInsUpdate", DISPATCH_METHOD, kNotice, nothing});
    members.Add({4, L"OnStartupComplete", DISPATCH_METHOD, kNotice, nothing});
    members.Add({5, L"OnBeginShutdown", DISPATCH_METHOD, kNotice, nothing});

    DISPID id = kFirstOperation;
    for (const Command& command : kCommands) {
      members.Add({id++,
                   command.name,
                   DISPATCH_METHOD,
                   {},
                   [run = command.run](DispatchObject& self, const DispatchArguments&) {
                     ((*static_cast<ConnectObject&>(self).connect_).*run)();
                     return Variant();
                   }});
    }
    members.Add({id++, L"AddinInstance_OnConnection", DISPATCH_METHOD, kConnection, on_connection});
    members.Add({id++, L"AddinInstance_OnDisconnection", DISPATCH_METHOD, kDisconnection,
                 on_disconnection});
    for (const ClickHandler& handler : kClickHandlers) {
      members.Add({id++, handler.name, DISPATCH_METHOD, kClickParameters,
                   [run = handler.run](DispatchObject& self, const DispatchArguments& arguments) {
                     Connect& connect = *static_cast<ConnectObject&>(self).connect_;
                     ComControl control(ObjectOf(arguments.Object(0)), {});
                     bool cancel = false;  // no handler sets it
                     (connect.*run)(control, cancel);
                     return Variant();
                   }});
    }
    return members;
  }();
  return table;
}

const DispatchTable& ConnectObject::Members() const { return Table(); }

void* ConnectObject::OtherInterface(REFIID id) {
  return id == kExtensibilityId ? static_cast<Extensibility*>(&host_side_) : nullptr;
}

HRESULT ConnectObject::HostSide::QueryInterface(REFIID id, void** object) {
  return owner_.QueryInterface(id, object);
}

ULONG ConnectObject::HostSide::AddRef() { return owner_.AddRef(); }

ULONG ConnectObject::HostSide::Release() { return owner_.Release(); }

HRESULT ConnectObject::HostSide::GetTypeInfoCount(UINT* count) {
  return owner_.GetTypeInfoCount(count);
}

HRESULT ConnectObject::HostSide::GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) {
  return owner_.GetTypeInfo(index, locale, info);
}

HRESULT ConnectObject::HostSide::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                               DISPID* ids) {
  return owner_.GetIDsOfNames(id, names, count, locale, ids);
}

HRESULT ConnectObject::HostSide::Invoke(DISPID member, REFIID id, LCID locale, WORD kinds,
                                        DISPPARAMS* arguments, VARIANT* result,
                                        EXCEPINFO* exception, UINT* wrong_argument) {
  return owner_.Invoke(member, id, locale, kinds, arguments, result, exception, wrong_argument);
}

HRESULT ConnectObject::HostSide::OnConnection(IDispatch* application, LONG connect_mode,
                                              IDispatch* instance, SAFEARRAY**) {
  const auto self = ComPtr<IDispatch>::Share(&owner_);
  return FromHost([&] { owner_.ConnectTo(application, connect_mode, instance); });
}

HRESULT ConnectObject::HostSide::OnDisconnection(LONG, SAFEARRAY**) {
  const auto self = ComPtr<IDispatch>::Share(&owner_);
  return FromHost([&] { owner_.connect_->AddinInstance_OnDisconnection(); });
}

HRESULT ConnectObject::HostSide::OnAddInsUpdate(SAFEARRAY**) { return S_OK; }

HRESULT ConnectObject::HostSide::OnStartupComplete(SAFEARRAY**) { return S_OK; }

HRESULT ConnectObject::HostSide::OnBeginShutdown(SAFEARRAY**) { return S_OK; }

}  // namespace scrivo
