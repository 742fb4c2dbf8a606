#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "host/win32/host_world.h"
#include "system/services.h"
#include "tests/addin/win32/library.h"
#include "tests/addin/win32/user.h"
#include "tests/doubles/temp_folder.h"

namespace scrivo {

// Scrivo.dll in a host without a window, met through COM alone.
class EndToEndTest : public testing::Test {
 protected:
  EndToEndTest() {
    TheServices() = CreateSystemServices();
    EXPECT_EQ(library.Register(), S_OK);
    world->addins.Read();
    addin = world->addins.Find("Kestrel.Connect");
  }
  ~EndToEndTest() override {
    world->ShutDown();
    addin.reset();
    EXPECT_EQ(world->references, 0) << "every reference to the host's objects is released";
    EXPECT_TRUE(world->objects.empty());
    EXPECT_TRUE(library.CanUnload());
    EXPECT_EQ(library.Unregister(), S_OK);
    TheServices() = {};
  }

  void Connect(LONG mode = host::kAtStartup) { world->addins.Connect(addin, mode); }
  void Disconnect() { world->addins.Disconnect(addin, host::kUserClosed); }

  host::Bar& BarNamed(const std::string& name) { return *world->bars.Find(name); }
  // A button of the add-in's first popup on a bar; null when there is none.
  std::shared_ptr<host::BarControl> Button(const std::string& bar, const std::string& caption) {
    const std::shared_ptr<host::BarControl> popup = BarNamed(bar).Find("Scrivo");
    return popup ? popup->bar->Find(caption) : nullptr;
  }
  void Press(const std::string& bar, const std::string& caption) {
    const std::shared_ptr<host::BarControl> button = Button(bar, caption);
    ASSERT_TRUE(button) << caption;
    world->Press(button);
  }
  // The add-in called by name, while it is connected.
  LateBound ByName() {
    return LateBound(
        ComPtr<IUnknown>::Share(addin->connected.get()).Query<IDispatch>(IID_IDispatch));
  }

  // A small web with two pages in a folder of the test's own, open in the host.
  void OpenWeb() {
    Put("site/index.htm", "<html><head><title>Home</title></head><body>Home</body></html>");
    Put("site/docs/a.htm",
        "<html><head><title>A</title><meta name=\"keywords\" content=\"spring\"></head>"
        "<body>A page</body></html>");
    Put("site/_vti_pvt/structure.cnf",
        "3.0.0.507\r\n1002\r\n1000,index.htm,0,Home,0,1,0\r\n"
        "1001,docs/a.htm,0,First,1000,1,0");
    world->session.Open(folder / "site");
  }
  void Put(const std::string& name, const std::string& content) {
    const std::filesystem::path path = folder / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
  }

  Apartment apartment;
  Library library;
  TempFolder folder;
  User user;
  std::shared_ptr<host::HostWorld> world = host::HostWorld::Make();
  std::shared_ptr<host::Addin> addin;
};

}  // namespace scrivo
