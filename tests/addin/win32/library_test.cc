// Scrivo.dll as the system and a host see it.

#include "tests/addin/win32/library.h"

#include <gtest/gtest.h>

#include <vector>

#include "addin/registration.h"
#include "tests/addin/win32/scripted_collection.h"

namespace scrivo {
namespace {

const GUID kHostsInterface = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

std::string RegistryText(HKEY root, const std::string& path, const char* name) {
  char text[512] = "";
  DWORD size = sizeof text;
  const LONG status = RegGetValueA(root, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? text : "(none)";
}

bool KeyExists(HKEY root, const std::string& path) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

class LibraryTest : public testing::Test {
 protected:
  LibraryTest() { EXPECT_EQ(library.Register(), S_OK); }
  ~LibraryTest() override {
    EXPECT_TRUE(library.CanUnload()) << "every object is released";
    EXPECT_EQ(ScriptedObject::Living(), 0);
    EXPECT_EQ(library.Unregister(), S_OK);
  }

  ComPtr<IDispatch> Create() const {
    ComPtr<IDispatch> connect;
    EXPECT_EQ(CoCreateInstance(ConnectClass(), nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                               connect.PutVoid()),
              S_OK);
    return connect;
  }
  ComPtr<IClassFactory> Factory() const {
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(library.ClassObject(ConnectClass(), IID_IClassFactory, factory.PutVoid()), S_OK);
    return factory;
  }

  Apartment apartment;
  Library library;
};

TEST_F(LibraryTest, ItExportsWhatTheSystemAsksForWithoutDecoration) {
  ASSERT_NE(library.module(), nullptr);
  for (const char* name : {"DllGetClassObject", "DllCanUnloadNow", "DllInstall",
                           "DllRegisterServer", "DllUnregisterServer"}) {
    EXPECT_NE(library.Export<FARPROC>(name), nullptr) << name;
  }
}

TEST_F(LibraryTest, ItRegistersItsOwnPathAndTheAddIn) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(library.module(), path, MAX_PATH);
  const std::string server =
      std::string("Software\\Classes\\CLSID\\") + kConnectClass + "\\InprocServer32";
  const std::string addin =
      "Software\\Microsoft\\Office\\SharePoint Designer\\Addins\\Kestrel.Connect";
  // Whoever may not write for all users has registered it for himself.
  const HKEY root = KeyExists(HKEY_LOCAL_MACHINE, addin) ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
  EXPECT_EQ(RegistryText(root, server, ""), path);
  EXPECT_EQ(RegistryText(root, server, "ThreadingModel"), "Apartment");
  EXPECT_EQ(RegistryText(root, addin, "FriendlyName"), "ScrivoBuilder");
  EXPECT_EQ(RegistryText(root, addin, "Description"),
            "Front Page site to Microsoft Help Workshop converter");
  DWORD behavior = 0, size = sizeof behavior;
  EXPECT_EQ(RegGetValueA(root, addin.c_str(), "LoadBehavior", RRF_RT_REG_DWORD, nullptr, &behavior,
                         &size),
            ERROR_SUCCESS);
  EXPECT_EQ(behavior, 3u);

  EXPECT_EQ(library.Unregister(), S_OK);
  EXPECT_FALSE(KeyExists(root, addin));
  EXPECT_FALSE(KeyExists(root, std::string("Software\\Classes\\CLSID\\") + kConnectClass));
  EXPECT_FALSE(KeyExists(root, "Software\\Classes\\Kestrel.Connect"));
  EXPECT_EQ(library.Register(), S_OK);
}

TEST_F(LibraryTest, ItRegistersForOneUserWhenThatIsAskedFor) {
  const std::string addin =
      "Software\\Microsoft\\Office\\SharePoint Designer\\Addins\\Kestrel.Connect";
  ASSERT_EQ(library.Unregister(), S_OK);
  EXPECT_EQ(library.Install(true, L"User"), S_OK);
  EXPECT_TRUE(KeyExists(HKEY_CURRENT_USER, addin));
  EXPECT_FALSE(KeyExists(HKEY_LOCAL_MACHINE, addin));

  EXPECT_EQ(library.Register(), S_OK);
  const bool is_for_all = KeyExists(HKEY_LOCAL_MACHINE, addin);
  EXPECT_EQ(library.Install(true, L"user"), S_OK);
  EXPECT_EQ(library.Install(false, L"user"), S_OK);
  EXPECT_FALSE(KeyExists(HKEY_CURRENT_USER, addin));
  EXPECT_EQ(KeyExists(HKEY_LOCAL_MACHINE, addin), is_for_all);
}

TEST_F(LibraryTest, ItInstallsForNobodyElse) {
  EXPECT_EQ(library.Install(true, L"machine"), E_INVALIDARG);
  EXPECT_EQ(library.Install(true, L""), S_OK);
  EXPECT_EQ(library.Install(false, nullptr), S_OK);
  EXPECT_TRUE(Create()) << "it is still registered";
}

TEST_F(LibraryTest, ItIsCreatedByItsProgrammaticIdentifier) {
  const ComPtr<IDispatch> connect = Create();
  ASSERT_TRUE(connect);
  EXPECT_TRUE(connect.Query<IUnknown>(kHostsInterface));
}

TEST_F(LibraryTest, EveryInterfaceOfTheObjectLeadsToEveryOther) {
  const ComPtr<IDispatch> connect = Create();
  const auto identity = connect.Query<IUnknown>(IID_IUnknown);
  const auto host_side = connect.Query<IDispatch>(kHostsInterface);
  EXPECT_NE(static_cast<IUnknown*>(host_side.get()), identity.get());
  EXPECT_EQ(host_side.Query<IUnknown>(IID_IUnknown).get(), identity.get());
  EXPECT_EQ(host_side.Query<IDispatch>(IID_IDispatch).get(), connect.get());
  EXPECT_FALSE(connect.Query<IUnknown>(IID_IConnectionPointContainer));
}

TEST_F(LibraryTest, TheClassCannotBePartOfAnotherObject) {
  const ComPtr<ScriptedObject> outer = ScriptedObject::Make();
  IUnknown* object = outer.get();
  EXPECT_EQ(Factory()->CreateInstance(outer.get(), IID_IUnknown, reinterpret_cast<void**>(&object)),
            CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
}

TEST_F(LibraryTest, OtherClassesAndInterfacesAreNotServed) {
  void* object = this;
  EXPECT_EQ(library.ClassObject(IID_IUnknown, IID_IClassFactory, &object),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
  object = this;
  EXPECT_EQ(library.ClassObject(ConnectClass(), IID_IDispatch, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  object = this;
  EXPECT_EQ(Factory()->CreateInstance(nullptr, IID_IEnumVARIANT, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(library.ClassObject(ConnectClass(), IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(LibraryTest, ItMayBeUnloadedWhenNobodyNeedsItAnyMore) {
  EXPECT_TRUE(library.CanUnload());
  ComPtr<IDispatch> connect = Create();
  EXPECT_FALSE(library.CanUnload());
  connect.Reset();
  EXPECT_TRUE(library.CanUnload());

  ComPtr<IClassFactory> factory = Factory();
  EXPECT_FALSE(library.CanUnload());
  factory->LockServer(TRUE);
  factory.Reset();
  EXPECT_FALSE(library.CanUnload()) << "it is locked";
  Factory()->LockServer(FALSE);
  EXPECT_TRUE(library.CanUnload());
}

TEST_F(LibraryTest, ThePublicOperationsFollowOneAnotherInTheirOrder) {
  const ComPtr<IDispatch> connect = Create();
  const std::vector<const wchar_t*> operations = {
      L"HideKestrel",
      L"ShowKestrel",
      L"ShowDecompile",
      L"HideDecompile",
      L"ShowExample",
      L"AddinInstance_OnConnection",
      L"AddinInstance_OnDisconnection",
      L"cbBtnKestrel_Click",
      L"cbBtnDecompile_Click",
      L"cbBtnHelp_Click",
      L"cbBtnHome_Click",
      L"cbBtnCheckVersion_Click",
      L"cbBtnOpenSample_Click",
      L"cbBtnPanelKestrel_Click",
      L"cbBtnPanelDecompile_Click",
      L"cbBtnPanelHelp_Click",
      L"cbBtnPanelHome_Click",
      L"cbBtnPanelCheckVersion_Click",
      L"cbBtnPanelOpenSample_Click",
  };
  DISPID first = 0;
  for (std::size_t i = 0; i < operations.size(); ++i) {
    auto name = const_cast<wchar_t*>(operations[i]);
    DISPID id = 0;
    EXPECT_EQ(connect->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), S_OK)
        << Narrow(operations[i]);
    if (i == 0) first = id;
    EXPECT_EQ(id, first + static_cast<DISPID>(i)) << Narrow(operations[i]);
  }
}

// A host that counts how often its command bars are asked for, and has none.
struct CountingHost {
  CountingHost() {
    application->On(L"CommandBars", [this](ScriptedCall&) {
      ++asked;
      return E_FAIL;
    });
    instance->GivesText(L"ProgId", L"Kestrel.Connect");
  }
  int asked = 0;
  ComPtr<ScriptedObject> application = ScriptedObject::Make();
  ComPtr<ScriptedObject> instance = ScriptedObject::Make();
};

// Calls the method in a slot of an object's vtable, as a host does that was compiled elsewhere.
template <typename... Arguments>
HRESULT CallSlot(IUnknown* object, int slot, Arguments... arguments) {
  using Method = HRESULT(STDMETHODCALLTYPE*)(IUnknown*, Arguments...);
  return reinterpret_cast<Method>((*reinterpret_cast<void***>(object))[slot])(object, arguments...);
}

ULONG ReferencesTo(const ComPtr<ScriptedObject>& object) {
  object->AddRef();
  return object->Release();
}

TEST_F(LibraryTest, TheHostsInterfaceHasItsMembersInTheHostsOrder) {
  CountingHost host;
  const ComPtr<IDispatch> connect = Create();
  const auto host_side = connect.Query<IUnknown>(kHostsInterface);
  SAFEARRAY* custom = SafeArrayCreateVector(VT_VARIANT, 0, 0);
  IDispatch* application = host.application.get();
  IDispatch* instance = host.instance.get();

  EXPECT_EQ(CallSlot(host_side.get(), 7, application, LONG{1}, instance, &custom), S_OK);
  const int asked_on_connection = host.asked;
  EXPECT_GT(asked_on_connection, 0);
  EXPECT_GT(ReferencesTo(host.application), 1u) << "the add-in keeps the host";
  for (const int slot : {9, 10, 11}) EXPECT_EQ(CallSlot(host_side.get(), slot, &custom), S_OK);
  EXPECT_EQ(host.asked, asked_on_connection);
  EXPECT_EQ(CallSlot(host_side.get(), 8, LONG{0}, &custom), S_OK);
  EXPECT_GT(host.asked, asked_on_connection);
  EXPECT_EQ(ReferencesTo(host.application), 1u);
  EXPECT_EQ(ReferencesTo(host.instance), 1u);
  SafeArrayDestroy(custom);
}

TEST_F(LibraryTest, AHostMayLeaveOutItsOwnDataAndItsObjects) {
  const ComPtr<IDispatch> connect = Create();
  const auto host_side = connect.Query<IUnknown>(kHostsInterface);
  IDispatch* none = nullptr;
  SAFEARRAY** no_data = nullptr;
  EXPECT_EQ(CallSlot(host_side.get(), 7, none, LONG{0}, none, no_data), S_OK);
  EXPECT_EQ(CallSlot(host_side.get(), 8, LONG{0}, no_data), S_OK);
}

TEST_F(LibraryTest, AHostMayConnectByNumberOrByName) {
  CountingHost host;
  const ComPtr<IDispatch> connect = Create();
  const LateBound host_side(connect.Query<IDispatch>(kHostsInterface));
  const LateBound by_name{ComPtr<IDispatch>(connect)};
  const Variant application = Variant::Object(host.application.get());
  const Variant instance = Variant::Object(host.instance.get());

  host_side.GetById(1, application, Variant::Long(0), instance, Variant());
  EXPECT_GT(host.asked, 0);
  host_side.GetById(3, Variant());
  host_side.GetById(4, Variant());
  host_side.GetById(5, Variant());
  host_side.GetById(2, Variant::Long(0), Variant());
  EXPECT_EQ(ReferencesTo(host.application), 1u + 1u) << "the argument itself";

  host.asked = 0;
  by_name.Call(L"AddinInstance_OnConnection", application, Variant::Long(0), instance, Variant());
  EXPECT_GT(host.asked, 0);
  by_name.Call(L"AddinInstance_OnDisconnection", Variant::Long(0), Variant());
  EXPECT_EQ(ReferencesTo(host.application), 1u + 1u);
}

TEST_F(LibraryTest, AHostThatLetsGoWithoutDisconnectingLosesNoReference) {
  CountingHost host;
  {
    const ComPtr<IDispatch> connect = Create();
    LateBound(connect).Call(L"AddinInstance_OnConnection", Variant::Object(host.application.get()),
                            Variant::Long(0), Variant::Object(host.instance.get()));
  }
  EXPECT_EQ(ReferencesTo(host.application), 1u);
}

TEST_F(LibraryTest, ItsVersionResourceNamesIt) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(library.module(), path, MAX_PATH);
  std::vector<char> block(GetFileVersionInfoSizeA(path, nullptr));
  ASSERT_TRUE(GetFileVersionInfoA(path, 0, static_cast<DWORD>(block.size()), block.data()));
  const auto text = [&](const std::string& name) -> std::string {
    void* found = nullptr;
    UINT length = 0;
    const std::string query = "\\StringFileInfo\\040904E4\\" + name;
    if (!VerQueryValueA(block.data(), query.c_str(), &found, &length)) return "(none)";
    return static_cast<const char*>(found);
  };
  EXPECT_EQ(text("ProductName"), "ScrivoBuilder");
  EXPECT_EQ(text("FileDescription"), "Front Page site to Microsoft Help Workshop converter");
  EXPECT_EQ(text("ProductVersion"), SCRIVO_VERSION);
  EXPECT_EQ(text("OriginalFilename"), "Scrivo.dll");
  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueA(block.data(), "\\", reinterpret_cast<void**>(&fixed), &length));
  const std::string numbers = std::to_string(HIWORD(fixed->dwFileVersionMS)) + "." +
                              std::to_string(LOWORD(fixed->dwFileVersionMS)) + "." +
                              std::to_string(HIWORD(fixed->dwFileVersionLS));
  EXPECT_EQ(numbers, SCRIVO_VERSION);
}

}  // namespace
}  // namespace scrivo
