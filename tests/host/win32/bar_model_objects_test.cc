#include <vector>

#include "com/win32/dispatch_object.h"
#include "host/win32/click_point.h"
#include "tests/host/win32/model_test.h"
// After ole.h, on which it stands.
#include <olectl.h>

namespace scrivo::host {
namespace {

// A sink of the button events that checks how it is called.
class Sink : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool is_known = id == IID_IUnknown || (knows_events && id == kButtonEventsId);
    *object = is_known ? this : nullptr;
    if (is_known) AddRef();
    return is_known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID interface_id, LCID, WORD kinds,
                                   DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override {
    EXPECT_EQ(id, 1);
    EXPECT_EQ(interface_id, IID_NULL);
    EXPECT_EQ(kinds, DISPATCH_METHOD);
    EXPECT_EQ(arguments->cArgs, 2u);
    EXPECT_EQ(arguments->cNamedArgs, 0u);
    EXPECT_EQ(arguments->rgvarg[0].vt, VT_BYREF | VT_BOOL);
    EXPECT_EQ(*arguments->rgvarg[0].pboolVal, VARIANT_FALSE);
    EXPECT_EQ(arguments->rgvarg[1].vt, VT_DISPATCH);
    clicked = arguments->rgvarg[1].pdispVal;
    if (cancels) *arguments->rgvarg[0].pboolVal = VARIANT_TRUE;
    ++clicks;
    if (on_click) on_click();
    return S_OK;
  }

  bool knows_events = true, cancels = false;
  int clicks = 0;
  long references = 1;
  IDispatch* clicked = nullptr;
  std::function<void()> on_click;
};

class BarObjectsTest : public ModelTest {
 protected:
  LateBound Bar(const std::string& name) {
    return Item(Object(application, L"CommandBars"), Variant::Text(name));
  }
  LateBound Controls(const std::string& name) { return Object(Bar(name), L"Controls"); }
  // Adds a control as add-ins do, every argument in its place.
  LateBound Add(const LateBound& controls, LONG type, bool temporary = true) {
    return ObjectOf(controls.Get(L"Add", Variant::Long(type), Variant::Omitted(),
                                 Variant::Omitted(), Variant::Omitted(),
                                 Variant::Boolean(temporary)));
  }
  static ComPtr<IConnectionPoint> ClicksOf(const LateBound& button) {
    const auto container = ComPtr<IDispatch>::Share(button.get())
                               .Query<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ComPtr<IConnectionPoint> point;
    if (container) container->FindConnectionPoint(kButtonEventsId, point.Put());
    return point;
  }
};

TEST_F(BarObjectsTest, FindsBarsByNameAndByNumberFromOne) {
  const LateBound bars = Object(application, L"CommandBars");
  EXPECT_EQ(Number(bars, L"Count"), 3);
  EXPECT_EQ(EnumeratedTexts(bars, L"Name"), "Menu Bar\nStandard\nTools\n");
  EXPECT_EQ(Text(Item(bars, Variant::Long(1)), L"Name"), "Menu Bar");
  EXPECT_EQ(Text(Item(bars, Variant::Text("tools")), L"Name"), "Tools");
  EXPECT_EQ(Text(Object(bars, L"ActiveMenuBar"), L"Name"), "Menu Bar");
  EXPECT_EQ(Text(ObjectOf(bars.GetById(DISPID_VALUE, Variant::Long(3))), L"Name"), "Tools");
  for (const Variant& wrong : {Variant::Long(0), Variant::Long(4), Variant::Text("Format")}) {
    const Outcome outcome = Invoke(bars, L"Item", kGet, {wrong.get()});
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.scode, kBadValue);
  }
}

TEST_F(BarObjectsTest, TheToolsMenuOfTheMenuBarIsTheToolsBar) {
  const LateBound menu = Item(Controls("Menu Bar"), Variant::Text("Tools"));
  EXPECT_EQ(Number(menu, L"Type"), kBarPopup);
  EXPECT_EQ(Number(menu, L"Id"), 30007);
  Add(Object(menu, L"Controls"), kBarButton).Put(L"Caption", Variant::Text("Seen"));
  EXPECT_EQ(EnumeratedTexts(Controls("Tools"), L"Caption"), "Seen\n");
  EXPECT_EQ(Text(Object(menu, L"CommandBar"), L"Name"), "Tools");
}

TEST_F(BarObjectsTest, BarsMayBeMissing) {
  std::erase(world->bars.bars, world->bars.Find("Standard"));
  const Variant name = Variant::Text("Standard");
  EXPECT_EQ(Invoke(Object(application, L"CommandBars"), L"Item", kGet, {name.get()}).code,
            DISP_E_EXCEPTION);
}

TEST_F(BarObjectsTest, AddsAPopupWithButtonsAsAddInsDo) {
  const LateBound popup = Add(Controls("Tools"), kBarPopup);
  popup.Put(L"Caption", Variant::Text("&Scrivo"));
  const LateBound below = Object(popup, L"Controls");
  const LateBound button = Add(below, kBarButton, false);
  button.Put(L"BeginGroup", Variant::Boolean(true));
  button.Put(L"Caption", Variant::Text("Compile"));
  button.Put(L"OnAction", Variant::Text("!<Kestrel.Connect>"));
  button.Put(L"FaceId", Variant::Long(2138));
  button.Put(L"Tag", Variant::Text("t"));
  button.Put(L"Style", Variant::Long(3));
  const auto model = world->bars.Find("Tools")->Find("scrivo")->bar->controls.front();
  EXPECT_TRUE(model->begin_group);
  EXPECT_EQ(model->caption, "Compile");
  EXPECT_EQ(model->on_action, "!<Kestrel.Connect>");
  EXPECT_EQ(model->face, 2138);
  EXPECT_EQ(Text(button, L"Tag"), "t");
  EXPECT_EQ(Number(button, L"Style"), 3);
  EXPECT_EQ(Number(button, L"Id"), 1);
  EXPECT_EQ(Number(button, L"Type"), kBarButton);
  EXPECT_EQ(Number(button, L"Index"), 1);
  EXPECT_TRUE(TruthOf(button.Get(L"Visible")));
  EXPECT_FALSE(TruthOf(button.Get(L"BuiltIn")));
  // An item found by its caption, with or without the mark of its access key.
  EXPECT_EQ(Number(Item(Controls("Tools"), Variant::Text("Scrivo")), L"Type"), kBarPopup);
  EXPECT_EQ(Item(Controls("Tools"), Variant::Text("&scrivo")).get(), popup.get());
  EXPECT_EQ(Text(Object(button, L"Parent"), L"Name"), "");
}

TEST_F(BarObjectsTest, AddTakesItsArgumentsInTheirOrderOnly) {
  const LateBound controls = Controls("Tools");
  const Variant type = Variant::Long(kBarPopup), yes = Variant::Boolean(true),
                none = Variant::Omitted(), text = Variant::Text("x"), distant = Variant::Long(9);
  Outcome outcome = Invoke(controls, L"Add", kMethod,
                           {text.get(), none.get(), none.get(), none.get(), yes.get()});
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.argument, 4u);
  outcome = Invoke(controls, L"Add", kMethod,
                   {type.get(), none.get(), none.get(), none.get(), text.get()});
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.argument, 0u);
  outcome = Invoke(controls, L"Add", kMethod,
                   {type.get(), none.get(), none.get(), none.get(), yes.get(), yes.get()});
  EXPECT_EQ(outcome.code, DISP_E_BADPARAMCOUNT);
  // "Temporary" given as the second argument is taken for an identifier of a built-in control.
  EXPECT_EQ(Invoke(controls, L"Add", kMethod, {type.get(), yes.get()}).scode, kBadValue);
  EXPECT_EQ(Invoke(controls, L"Add", kMethod, {distant.get()}).scode, kBadValue);
  EXPECT_EQ(
      Invoke(controls, L"Add", kMethod, {type.get(), none.get(), none.get(), distant.get()}).scode,
      kBadValue);
  EXPECT_EQ(Invoke(controls, L"Add", kGet, {type.get()}).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Number(controls, L"Count"), 0);
}

TEST_F(BarObjectsTest, AddPutsAControlBeforeAnother) {
  const LateBound controls = Controls("Standard");
  Add(controls, kBarButton).Put(L"Caption", Variant::Text("Last"));
  ObjectOf(controls.Get(L"Add", Variant::Omitted(), Variant::Long(1), Variant::Text("free"),
                        Variant::Long(1)))
      .Put(L"Caption", Variant::Text("First"));
  EXPECT_EQ(EnumeratedTexts(controls, L"Caption"), "First\nLast\n");
  EXPECT_EQ(Text(Item(controls, Variant::Long(1)), L"Parameter"), "free");
}

TEST_F(BarObjectsTest, ButtonsAndPopupsHaveMembersOfTheirOwn) {
  const LateBound button = Add(Controls("Tools"), kBarButton);
  const LateBound popup = Add(Controls("Tools"), kBarPopup);
  const Variant face = Variant::Long(23), bad = Variant::Text("face"), style = Variant::Long(7);
  EXPECT_EQ(Invoke(button, L"Controls", kGet).code, DISP_E_UNKNOWNNAME);
  EXPECT_EQ(Invoke(popup, L"FaceId", kPut, {face.get()}).code, DISP_E_UNKNOWNNAME);
  EXPECT_EQ(Invoke(button, L"FaceId", kPut, {bad.get()}).code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(Invoke(button, L"FaceId", kPutRef, {face.get()}).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(button, L"Style", kPut, {style.get()}).scode, kBadValue);
  EXPECT_EQ(Invoke(button, L"Id", kPut, {face.get()}).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(button, L"Caption", kMethod).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(popup, L"Execute", kMethod).code, DISP_E_EXCEPTION);
}

TEST_F(BarObjectsTest, LeftoversAreFoundVisibleOrHidden) {
  const auto leftover = world->bars.Find("Tools")->Add(kBarPopup);
  leftover->caption = "Scrivo";
  EXPECT_TRUE(TruthOf(Item(Controls("Tools"), Variant::Text("Scrivo")).Get(L"Visible")));
  leftover->visible = false;
  EXPECT_FALSE(TruthOf(Item(Controls("Tools"), Variant::Text("Scrivo")).Get(L"Visible")));
}

TEST_F(BarObjectsTest, ADeletedControlRefusesEveryCall) {
  const LateBound button = Add(Controls("Tools"), kBarButton);
  button.Call(L"Delete", Variant::Omitted());
  EXPECT_EQ(Number(Controls("Tools"), L"Count"), 0);
  const Outcome outcome = Invoke(button, L"Caption", kGet);
  EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.description, "The control has been deleted.");
  EXPECT_EQ(Invoke(button, L"Delete", kMethod).code, DISP_E_EXCEPTION);
}

TEST_F(BarObjectsTest, FindsControlsInMenusByTheirMarks) {
  const LateBound popup = Add(Controls("Standard"), kBarPopup);
  const LateBound button = Add(Object(popup, L"Controls"), kBarButton);
  button.Put(L"Tag", Variant::Text("mine"));
  const LateBound bars = Object(application, L"CommandBars");
  const auto find = [&] {
    return ObjectOf(bars.Get(L"FindControl", Variant::Omitted(), Variant::Omitted(),
                             Variant::Text("mine"), Variant::Boolean(true)));
  };
  EXPECT_EQ(find().get(), button.get());
  button.Put(L"Visible", Variant::Boolean(false));
  EXPECT_FALSE(find());
}

TEST_F(BarObjectsTest, MakesAndDeletesToolbars) {
  const LateBound bars = Object(application, L"CommandBars");
  const LateBound made = ObjectOf(bars.Get(L"Add", Variant::Text("Mine")));
  EXPECT_FALSE(TruthOf(made.Get(L"BuiltIn")));
  const Variant name = Variant::Text("mine");
  EXPECT_EQ(Invoke(bars, L"Add", kMethod, {name.get()}).scode, kBadValue);
  made.Call(L"Delete");
  EXPECT_EQ(Number(bars, L"Count"), 3);
  EXPECT_EQ(Invoke(Bar("Tools"), L"Delete", kMethod).code, DISP_E_EXCEPTION);
}

TEST_F(BarObjectsTest, AClickReachesEverySinkOfTheButton) {
  const LateBound button = Add(Controls("Tools"), kBarButton);
  Sink one, other;
  const auto point = ClicksOf(button);
  ASSERT_TRUE(point);
  DWORD cookie = 0, other_cookie = 0;
  ASSERT_EQ(point->Advise(&one, &cookie), S_OK);
  ASSERT_EQ(point->Advise(&other, &other_cookie), S_OK);
  button.Call(L"Execute");
  EXPECT_EQ(one.clicks, 1);
  EXPECT_EQ(one.clicked, button.get());
  EXPECT_EQ(other.clicks, 1);
  EXPECT_EQ(point->Unadvise(cookie), S_OK);
  EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
  world->Press(world->bars.Find("Tools")->controls.front());
  EXPECT_EQ(one.clicks, 1);
  EXPECT_EQ(one.references, 1);
  EXPECT_EQ(other.clicks, 2);
  point->Unadvise(other_cookie);
}

TEST_F(BarObjectsTest, OnlyButtonsHaveClicksAndOnlySinksOfClicksConnect) {
  const LateBound button = Add(Controls("Tools"), kBarButton);
  EXPECT_FALSE(ClicksOf(Add(Controls("Tools"), kBarPopup)));
  const auto container = ComPtr<IDispatch>::Share(button.get())
                             .Query<IConnectionPointContainer>(IID_IConnectionPointContainer);
  ASSERT_TRUE(container);
  ComPtr<IConnectionPoint> none;
  EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, none.Put()), CONNECT_E_NOCONNECTION);
  // The container is the button, seen in another way.
  EXPECT_EQ(container.Query<IUnknown>(IID_IUnknown).get(), button.get());
  Sink stranger;
  stranger.knows_events = false;
  DWORD cookie = 7;
  EXPECT_EQ(ClicksOf(button)->Advise(&stranger, &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0u);
}

TEST_F(BarObjectsTest, ADroppedButtonStopsItsEvents) {
  Sink sink;
  DWORD cookie = 0;
  ComPtr<IConnectionPoint> point;
  {
    const LateBound button = Add(Controls("Tools"), kBarButton);
    point = ClicksOf(button);
    ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
  }
  EXPECT_EQ(sink.references, 1);
  world->Press(world->bars.Find("Tools")->controls.front());
  EXPECT_EQ(sink.clicks, 0);
  EXPECT_EQ(point->Advise(&sink, &cookie), E_UNEXPECTED);
}

TEST_F(BarObjectsTest, ASinkMayCancelABuiltInCommand) {
  int runs = 0;
  const auto tools = world->bars.Find("Tools");
  const auto command = BarModel::AddCommand(tools.get(), 459, "Refresh", 459, [&] { ++runs; });
  const LateBound button = Item(Controls("Tools"), Variant::Text("Refresh"));
  EXPECT_TRUE(TruthOf(button.Get(L"BuiltIn")));
  Sink sink;
  DWORD cookie = 0;
  const auto point = ClicksOf(button);
  point->Advise(&sink, &cookie);
  world->Press(command);
  EXPECT_EQ(runs, 1);
  sink.cancels = true;
  world->Press(command);
  EXPECT_EQ(runs, 1);
  EXPECT_EQ(sink.clicks, 2);
  point->Unadvise(cookie);
}

TEST_F(BarObjectsTest, ASinkMayLetGoOfEverythingWhileItIsTold) {
  auto button = std::make_unique<LateBound>(Add(Controls("Tools"), kBarButton));
  Sink sink;
  DWORD cookie = 0;
  auto point = ClicksOf(*button);
  point->Advise(&sink, &cookie);
  sink.on_click = [&] {
    point->Unadvise(cookie);
    point.Reset();
    button.reset();
  };
  world->Press(world->bars.Find("Tools")->controls.front());
  EXPECT_EQ(sink.clicks, 1);
  EXPECT_EQ(sink.references, 1);
}

TEST_F(BarObjectsTest, TheButtonLivesUntilTheLastSinkIsTold) {
  auto button = std::make_unique<LateBound>(Add(Controls("Tools"), kBarButton));
  button->Put(L"Caption", Variant::Text("Pressed"));
  Sink first, second;
  DWORD cookie = 0;
  auto point = ClicksOf(*button);
  point->Advise(&first, &cookie);
  point->Advise(&second, &cookie);
  first.on_click = [&] {
    world->bars.Find("Tools")->controls.clear();
    point.Reset();
    button.reset();
  };
  std::string caption;
  second.on_click = [&] {
    caption = Text(LateBound(ComPtr<IDispatch>::Share(second.clicked)), L"Caption");
  };
  world->Press(std::shared_ptr(world->bars.Find("Tools")->controls.front()));
  EXPECT_EQ(caption, "Pressed");
}

TEST_F(BarObjectsTest, ADisabledButtonCannotBePressed) {
  const LateBound button = Add(Controls("Tools"), kBarButton);
  button.Put(L"Enabled", Variant::Boolean(false));
  EXPECT_EQ(Invoke(button, L"Execute", kMethod).description, "The control is disabled.");
}

TEST_F(BarObjectsTest, TemporaryControlsGoWhenTheHostCloses) {
  const LateBound tools = Controls("Tools");
  const LateBound temporary = Add(tools, kBarButton, true);
  const LateBound lasting = Add(tools, kBarButton, false);
  world->ShutDown();
  EXPECT_EQ(Number(tools, L"Count"), 1);
  EXPECT_EQ(Invoke(temporary, L"Caption", kGet).code, DISP_E_EXCEPTION);
  EXPECT_EQ(Invoke(lasting, L"Caption", kGet).code, S_OK);
}

TEST_F(BarObjectsTest, EveryChangeIsToldToTheWindow) {
  int changes = 0;
  world->bars.on_change = [&] { ++changes; };
  const LateBound button = Add(Controls("Tools"), kBarButton);
  button.Put(L"Caption", Variant::Text("x"));
  button.Put(L"Visible", Variant::Boolean(false));
  button.Call(L"Delete");
  EXPECT_EQ(changes, 4);
  world->bars.on_change = nullptr;
}

}  // namespace
}  // namespace scrivo::host
