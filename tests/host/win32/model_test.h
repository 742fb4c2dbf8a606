#pragma once

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

#include "com/win32/dispatch_call.h"
#include "host/win32/host_world.h"
#include "tests/doubles/real_services.h"

namespace scrivo::host {

// A host without a window and a web on disk for it: two levels of navigation, a label without a
// page, and pages outside the navigation.
class ModelTest : public WithRealServices {
 protected:
  ModelTest() {
    Put("index.htm", "<title>Home page</title><meta name=\"Keywords\" content=\"start, home\">");
    Put("docs/my page.htm", "<title>My page</title>");
    Put("docs/b.htm", "<title>B</title>");
    Put("loose.htm", "<title>Loose</title>");
    Put("images/x.gif", "GIF89a");
    Put("sub/inner.htm", "<title>Inner</title>");
    Put("sub/_vti_pvt/service.cnf", "");
    Put("_vti_pvt/structure.cnf",
        "3.0.0.507\r\n1004\r\n1000,index.htm,0,Home,0,1,0\r\n"
        "1001,docs/my page.htm,0,First,1000,1,0\r\n1002,docs/b.htm,0,Second,1000,1,0\r\n"
        "1003,,0,Heading,0,1,0\r\n");
    application = LateBound(world->Application());
  }
  ~ModelTest() override {
    application = LateBound();
    // The objects and references of a test that has let go of everything it held.
    EXPECT_EQ(world->objects.size(), 0u);
    EXPECT_EQ(world->references, 0);
  }

  void Put(const std::string& location, const std::string& content) {
    const std::filesystem::path path = std::filesystem::path(web_path) / location;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
  }

  // Opens the web through the object model.
  LateBound OpenWeb() {
    return ObjectOf(ObjectOf(application.Get(L"Webs"))
                        .Get(L"Open", Variant::Text(web_path), Variant::Text(""), Variant::Text(""),
                             Variant::Long(0)));
  }

  // How one call goes, in Automation's own terms.
  struct Outcome {
    HRESULT code;
    UINT argument = 99;  // in rgvarg
    HRESULT scode = 0;
    std::string source, description;
  };
  // Calls a member in the given kinds of call; arguments first to last.
  static Outcome Invoke(const LateBound& object, const wchar_t* member, WORD kinds,
                        std::initializer_list<VARIANT> arguments = {}) {
    DISPID id = 0;
    auto* name = const_cast<LPOLESTR>(member);
    Outcome outcome;
    outcome.code = object.get()->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(outcome.code)) return outcome;
    std::vector<VARIANT> reversed(std::rbegin(arguments), std::rend(arguments));
    DISPID put = DISPID_PROPERTYPUT;
    const bool is_put = (kinds & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS parameters{reversed.data(), is_put ? &put : nullptr,
                          static_cast<UINT>(reversed.size()), is_put ? 1u : 0u};
    EXCEPINFO exception{};
    Variant result;
    outcome.code =
        object.get()->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kinds, &parameters,
                             is_put ? nullptr : result.Put(), &exception, &outcome.argument);
    outcome.scode = exception.scode;
    outcome.source = TextOf(exception.bstrSource);
    outcome.description = TextOf(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    return outcome;
  }

  static std::string Text(const LateBound& object, const wchar_t* member) {
    return TextOf(object.Get(member));
  }
  static std::int32_t Number(const LateBound& object, const wchar_t* member) {
    return NumberOf(object.Get(member));
  }
  static LateBound Object(const LateBound& object, const wchar_t* member) {
    return ObjectOf(object.Get(member));
  }
  static LateBound Item(const LateBound& collection, const Variant& key) {
    return ObjectOf(collection.Get(L"Item", key));
  }

  // What an enumerator of the collection gives.
  static std::vector<Variant> Enumerated(const LateBound& collection) {
    const Variant made = collection.GetById(DISPID_NEWENUM);
    const auto enumerator =
        ComPtr<IUnknown>::Share(made.get().punkVal).Query<IEnumVARIANT>(IID_IEnumVARIANT);
    std::vector<Variant> items;
    for (;;) {
      Variant item;
      ULONG fetched = 0;
      if (enumerator->Next(1, item.Put(), &fetched) != S_OK) return items;
      items.push_back(std::move(item));
    }
  }
  // A text of each item, one a line.
  static std::string EnumeratedTexts(const LateBound& collection, const wchar_t* member) {
    std::string texts;
    for (const Variant& item : Enumerated(collection)) {
      texts += Text(ObjectOf(item), member) + "\n";
    }
    return texts;
  }

  static constexpr WORD kMethod = DISPATCH_METHOD, kGet = DISPATCH_PROPERTYGET,
                        kPut = DISPATCH_PROPERTYPUT, kPutRef = DISPATCH_PROPERTYPUTREF;
  static constexpr HRESULT kBadValue = E_INVALIDARG;

  const std::string web_path = InFolder("my web");
  const std::shared_ptr<HostWorld> world = HostWorld::Make();
  LateBound application;
};

}  // namespace scrivo::host
