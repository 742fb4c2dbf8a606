#include "addin/win32/version_component.h"

#include <gtest/gtest.h>

#include "addin/win32/class_factory.h"
#include "system/error.h"
#include "tests/addin/win32/library.h"
#include "tests/com/win32/scripted_object.h"

namespace scrivo {
namespace {

constexpr char kProgId[] = "Scrivo.TestedVersionCheck";
const GUID kClass = {0x5D0E7C14, 0x2E6B, 0x4B0A, {0x9C, 0x57, 0x61, 0x0F, 0x3C, 0x1B, 0x7A, 0x20}};

class VersionComponentTest : public testing::Test {
 protected:
  ~VersionComponentTest() override {
    for (const HKEY root : kRoots) RegDeleteTreeA(root, Key().c_str());
    component.Reset();
    EXPECT_EQ(ScriptedObject::Living(), 0);
  }

  // The system's own classes may be locked, and Wine looks for classes nowhere else.
  static inline const HKEY kRoots[] = {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};

  static std::string Key() { return std::string("Software\\Classes\\") + kProgId; }
  static void RegisterName() {
    const char id[] = "{5D0E7C14-2E6B-4B0A-9C57-610F3C1B7A20}";
    for (const HKEY root : kRoots) {
      RegSetKeyValueA(root, (Key() + "\\CLSID").c_str(), "", REG_SZ, id, sizeof id);
    }
  }
  ScriptedObject::Answer Noting(const char* what) {
    return [this, what](ScriptedCall& call) {
      seen += what;
      if (call.Count() > 0) seen += "=" + TextOf(call.Argument(0).bstrVal);
      seen += " ";
      return S_OK;
    };
  }

  Apartment apartment;
  ComPtr<ScriptedObject> component = ScriptedObject::Make();
  std::string seen;
};

TEST_F(VersionComponentTest, IsNothingWhileItIsNotRegistered) {
  EXPECT_EQ(MakeVersionComponent(kProgId), nullptr);
}

TEST_F(VersionComponentTest, FailsWhenItIsRegisteredAndCannotBeCreated) {
  RegisterName();
  EXPECT_THROW(MakeVersionComponent(kProgId), Error);
}

TEST_F(VersionComponentTest, IsCalledByName) {
  RegisterName();
  component->On(L"ProductName", Noting("ProductName"));
  component->On(L"Server", Noting("Server"));
  component->On(L"Check", Noting("Check"));
  component->GivesText(L"Result", L"newer");
  const auto factory = ComPtr<IClassFactory>::Take(
      new ClassFactory([this] { return ComPtr<IDispatch>::Share(component.get()); }));
  DWORD cookie = 0;
  ASSERT_EQ(CoRegisterClassObject(kClass, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                  &cookie),
            S_OK);
  const std::shared_ptr<VersionChecker> checker = MakeVersionComponent(kProgId);
  CoRevokeClassObject(cookie);
  ASSERT_TRUE(checker);
  checker->ProductName("ScrivoBuilder");
  checker->Server("www.scrivo.example");
  EXPECT_EQ(checker->Result(), "newer");
  checker->Check();
  EXPECT_EQ(seen, "ProductName=ScrivoBuilder Server=www.scrivo.example Check ");
}

}  // namespace
}  // namespace scrivo
