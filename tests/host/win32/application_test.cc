#include "tests/host/win32/call_faults.h"
#include "tests/host/win32/model_test.h"

namespace scrivo::host {
namespace {

class ApplicationTest : public ModelTest {
 protected:
  std::string MakeRel(const Variant& base, const std::string& url) {
    return TextOf(application.Get(L"MakeRel", base, Variant::Text(url)));
  }
  std::string MakeAbs(const Variant& base, const std::string& url) {
    return TextOf(application.Get(L"MakeAbs", base, Variant::Text(url)));
  }
};

TEST_F(ApplicationTest, SaysWhoItIs) {
  EXPECT_EQ(Text(application, L"Name"), "Scrivo Host");
  EXPECT_EQ(Text(application, L"Version"), SCRIVO_VERSION);
  EXPECT_EQ(Text(Object(application, L"Application"), L"Name"), "Scrivo Host");
}

TEST_F(ApplicationTest, HasNoActiveObjectsWhileNoWebIsOpen) {
  EXPECT_FALSE(Object(application, L"ActiveWeb"));
  EXPECT_FALSE(Object(application, L"ActiveWebWindow"));
  EXPECT_FALSE(Object(application, L"ActivePageWindow"));
  EXPECT_EQ(Number(Object(application, L"Webs"), L"Count"), 0);
}

TEST_F(ApplicationTest, RefusesNamesAndKindsThatItDoesNotHave) {
  EXPECT_EQ(Invoke(application, L"ActiveSite", kGet).code, DISP_E_UNKNOWNNAME);
  EXPECT_EQ(Invoke(application, L"ActiveWeb", kMethod).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(application, L"MakeRel", kGet).code, DISP_E_MEMBERNOTFOUND);
  const Variant value = Variant::Text("1");
  EXPECT_EQ(Invoke(application, L"Version", kPut, {value.get()}).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(application, L"Version", kGet, {value.get()}).code, DISP_E_BADPARAMCOUNT);
}

TEST_F(ApplicationTest, TakesTextsAndItsOwnObjectsAsBasesOfAddresses) {
  const LateBound web = OpenWeb();
  const std::string url = Text(web, L"Url");
  const LateBound file = ObjectOf(web.Get(L"LocateFile", Variant::Text("docs/my page.htm")));
  EXPECT_EQ(MakeRel(Variant::Object(web.get()), url + "/docs/b.htm"), "docs/b.htm");
  EXPECT_EQ(MakeRel(Variant::Text(url), url + "/docs/b.htm"), "docs/b.htm");
  EXPECT_EQ(MakeRel(Variant::Object(file.get()), url + "/docs/b.htm"), "b.htm");
  EXPECT_EQ(MakeRel(Variant::Object(file.get()), url + "/index.htm"), "../index.htm");
  EXPECT_EQ(MakeRel(Variant::Object(web.get()), "docs/b.htm"), "docs/b.htm");
  EXPECT_EQ(MakeAbs(Variant::Object(web.get()), "docs/b.htm"), url + "/docs/b.htm");
  EXPECT_EQ(MakeAbs(Variant::Object(web.get()), url + "/x.htm"), url + "/x.htm");
}

TEST_F(ApplicationTest, RefusesWhatIsNoBase) {
  const LateBound web = OpenWeb();
  const Variant url = Variant::Text("x"), number = Variant::Long(1);
  const Variant bars = application.Get(L"CommandBars");
  Outcome outcome = Invoke(application, L"MakeRel", kMethod, {number.get(), url.get()});
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.argument, 1u);
  outcome = Invoke(application, L"MakeAbs", kMethod, {bars.get(), url.get()});
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.argument, 1u);
  const Variant base = Variant::Object(web.get());
  outcome = Invoke(application, L"MakeRel", kMethod, {base.get(), base.get()});
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.argument, 0u);
  EXPECT_EQ(Invoke(application, L"MakeRel", kMethod, {base.get()}).code, DISP_E_BADPARAMCOUNT);
}

TEST_F(ApplicationTest, LocatePageOpensAPageAndFailsForOneThatIsNotThere) {
  const LateBound web = OpenWeb();
  const LateBound window =
      ObjectOf(application.Get(L"LocatePage", Variant::Text(Text(web, L"Url") + "/docs/b.htm")));
  EXPECT_EQ(Text(window, L"Caption"), Text(web, L"Url") + "/docs/b.htm");
  EXPECT_EQ(Text(Object(application, L"ActivePageWindow"), L"Caption"), Text(window, L"Caption"));
  const Variant missing = Variant::Text("nowhere.htm");
  const Outcome outcome = Invoke(application, L"LocatePage", kMethod, {missing.get()});
  EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.scode, E_FAIL);
  EXPECT_EQ(outcome.source, "ScrivoHost");
}

TEST_F(ApplicationTest, QuitAsksTheProgramToEnd) {
  int asked = 0;
  world->quit = [&] { ++asked; };
  application.Call(L"Quit");
  EXPECT_EQ(asked, 1);
  world->quit = nullptr;
  application.Call(L"Quit");
}

TEST_F(ApplicationTest, EveryCallCanBeMadeToFail) {
  CallFaults faults(*world);
  faults.FailEvery(2);
  EXPECT_EQ(Invoke(application, L"Name", kGet).code, S_OK);
  const Outcome outcome = Invoke(application, L"Version", kGet);
  EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.description, "The host refuses Application.Version.");
  EXPECT_EQ(Invoke(application, L"Name", kGet).code, S_OK);
  EXPECT_EQ(Invoke(application, L"Name", kGet).code, DISP_E_EXCEPTION);
  EXPECT_EQ(faults.Calls(), 4);
  EXPECT_EQ(faults.Members()[1], "Application.Version");
  faults.FailOnly(1);
  EXPECT_EQ(Invoke(application, L"Name", kGet).code, DISP_E_EXCEPTION);
  EXPECT_EQ(Invoke(application, L"Name", kGet).code, S_OK);
}

TEST_F(ApplicationTest, ObjectsOutliveTheWorldOfTheirProgram) {
  auto other = HostWorld::Make();
  std::weak_ptr<HostWorld> watched = other;
  LateBound kept{other->Application()};
  other.reset();
  EXPECT_EQ(Text(kept, L"Name"), "Scrivo Host");
  EXPECT_EQ(watched.lock()->references, 1);
  kept = LateBound();
  EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace scrivo::host
