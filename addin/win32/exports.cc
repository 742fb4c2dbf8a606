// What the system asks of the library: its class, whether it may go, its registration.

#include "addin/product.h"
#include "addin/registration.h"
#include "addin/win32/class_factory.h"
#include "addin/win32/connect_object.h"
#include "addin/win32/host_entry.h"
#include "addin/win32/version_component.h"
#include "compiler/frm_hhc.h"
#include "decompile/frm_decompile.h"
#include "generator/frm_main.h"
#include "platform/globals.h"
#include "system/error.h"
#include "system/services.h"
#include "ui/win32/native_window.h"
#include "ui/win32/win32_views.h"

namespace scrivo {
namespace {

// Puts the system and the windows in place, once.
void SetUp() {
  if (TheServices().system) return;
  TheServices() = CreateSystemServices();
  Globals().views = std::make_shared<Win32Views>([] { frmHHC::Unload(); });
}

ComPtr<IDispatch> MakeConnect() {
  SetUp();
  const auto connect =
      std::make_shared<Connect>([] { return MakeVersionComponent(kVersionCheckProgId); });
  return ComPtr<IDispatch>::Take(MakeObject<ConnectObject>(connect).Detach());
}

bool IsConnect(REFCLSID class_id) {
  CLSID own;
  return SUCCEEDED(CLSIDFromString(Wide(kConnectClass).c_str(), &own)) && class_id == own;
}

// This library's path as the registry has it. Raises Error (kPathFileAccessError) when the
// registry, which is written in the ANSI code page, could not name it.
std::string LibraryPath() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(OwnModule(), path.data(), static_cast<DWORD>(path.size())));
  const std::string name = SystemAnsi(path);
  if (path.empty() || WideOfSystemAnsi(name) != path) {
    throw Error(kPathFileAccessError, "Scrivo", "The folder of Scrivo.dll cannot be registered");
  }
  return name;
}

// A form's window runs in this library.
bool IsFormLoaded() {
  return frmMain::IsLoaded() || frmHHC::IsLoaded() || frmDecompile::IsLoaded();
}

}  // namespace
}  // namespace scrivo

STDAPI DllGetClassObject(REFCLSID class_id, REFIID id, void** object) {
  using namespace scrivo;
  if (!object) return E_POINTER;
  *object = nullptr;
  HRESULT answer = CLASS_E_CLASSNOTAVAILABLE;
  const HRESULT made = FromHost([&] {
    if (!IsConnect(class_id)) return;
    answer =
        ComPtr<IClassFactory>::Take(new ClassFactory(&MakeConnect))->QueryInterface(id, object);
  });
  return FAILED(made) ? made : answer;
}

STDAPI DllCanUnloadNow() {
  return scrivo::CanUnloadModule() && !scrivo::IsFormLoaded() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  using namespace scrivo;
  bool registered = false;
  FromHost([&] { registered = RegisterAddin(*CreateSystemServices().registry, LibraryPath()); });
  return registered ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() {
  using namespace scrivo;
  bool removed = false;
  FromHost([&] { removed = UnregisterAddin(*CreateSystemServices().registry); });
  return removed ? S_OK : SELFREG_E_CLASS;
}

// What "regsvr32 /i:TEXT" calls, and with "/u" for the way back. "user" stands for the current user
// alone; without a text there is nothing to do beyond DllRegisterServer, which regsvr32 has called.
STDAPI DllInstall(BOOL install, PCWSTR text) {
  using namespace scrivo;
  if (!text || !*text) return S_OK;
  if (lstrcmpiW(text, L"user") != 0) return E_INVALIDARG;
  bool done = false;
  FromHost([&] {
    const auto registry = CreateSystemServices().registry;
    done = install ? RegisterAddinForThisUser(*registry, LibraryPath())
                   : UnregisterAddinForThisUser(*registry);
  });
  return done ? S_OK : SELFREG_E_CLASS;
}
