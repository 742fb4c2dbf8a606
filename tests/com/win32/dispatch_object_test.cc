#include "com/win32/dispatch_object.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "com/win32/com_ptr.h"
#include "com/win32/variant.h"
#include "system/error.h"

namespace scrivo {
namespace {

// A shelf of books: a little of everything that an object can serve.
class Shelf : public DispatchObject {
 public:
  std::string label = "Shelf";
  ComPtr<IDispatch> owner;
  std::string seen;
  const char* refused = nullptr;  // the failure of every member while it is set

 private:
  const DispatchTable& Members() const override { return Table(); }
  void Entering(const DispatchMember&) override {
    if (refused) throw Error(kPermissionDenied, "Shelf", refused);
  }

  static const DispatchTable& Table() {
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Shelf>()
            .Get(DISPID_VALUE, L"Item", {{L"Index", VT_VARIANT}},
                 [](Shelf& self, const Arguments& arguments) {
                   self.seen = "type " + std::to_string(arguments.Value(0).vt);
                   return Variant::Text(self.label + " item");
                 })
            .Get(2, L"Label",
                 [](Shelf& self, const Arguments&) { return Variant::Text(self.label); })
            .Put(2, L"Label", VT_BSTR,
                 [](Shelf& self, const Arguments& arguments) { self.label = arguments.Text(0); })
            .PutRef(3, L"Owner",
                    [](Shelf& self, const Arguments& arguments) {
                      self.owner = ComPtr<IDispatch>::Share(arguments.Object(0));
                    })
            .Get(4, L"Books", [](Shelf& self, const Arguments&) { return Variant::Object(&self); })
            .Call(5, L"Put",
                  {{L"Title", VT_BSTR}, {L"Copies", VT_I4, true}, {L"Lent", VT_BOOL, true}},
                  [](Shelf& self, const Arguments& arguments) {
                    self.seen = arguments.Text(0) + "/" +
                                (arguments.Has(1) ? std::to_string(arguments.Long(1)) : "-") + "/" +
                                (arguments.Has(2) ? std::to_string(arguments.Boolean(2)) : "-");
                  })
            .Call(6, L"Lend", {{L"To", VT_DISPATCH}},
                  [](Shelf& self, const Arguments& arguments) {
                    self.seen = arguments.Object(0) ? "somebody" : "nobody";
                  })
            .Call(7, L"Burn", {}, [](Shelf&, const Arguments&) { throw std::runtime_error("No"); })
            .Call(8, L"Drop", {}, [](Shelf&, const Arguments&) {
              throw Error(kComponentErrorBase + 7, "Shelf", "It is heavy");
            });
    return table;
  }
};

// One call as a late-bound caller makes it; arguments are given first to last.
class Call {
 public:
  explicit Call(IDispatch* object) : object_(object) {}

  Call& Argument(Variant value) {
    arguments_.insert(arguments_.begin(), value.Detach());
    return *this;
  }
  // Names belong to the arguments added last; the order is that of rgdispidNamedArgs.
  Call& Names(std::vector<DISPID> names) {
    names_ = std::move(names);
    return *this;
  }
  HRESULT Run(DISPID member, WORD kinds, REFIID id = IID_NULL) {
    DISPPARAMS parameters{arguments_.data(), names_.data(), static_cast<UINT>(arguments_.size()),
                          static_cast<UINT>(names_.size())};
    return object_->Invoke(member, id, LOCALE_USER_DEFAULT, kinds, &parameters, result.Put(),
                           &exception, &wrong_argument);
  }
  ~Call() {
    for (VARIANT& argument : arguments_) VariantClear(&argument);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
  }

  Variant result;
  EXCEPINFO exception{};
  UINT wrong_argument = 99;

 private:
  IDispatch* object_;
  std::vector<VARIANT> arguments_;
  std::vector<DISPID> names_;
};

constexpr WORD kGetOrCall = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

class DispatchObjectTest : public ::testing::Test {
 protected:
  HRESULT Ids(std::vector<std::wstring> names, std::vector<DISPID>* ids) {
    std::vector<LPOLESTR> pointers;
    for (std::wstring& name : names) pointers.push_back(name.data());
    ids->assign(names.size(), 77);
    return shelf->GetIDsOfNames(IID_NULL, pointers.data(), static_cast<UINT>(pointers.size()),
                                LOCALE_USER_DEFAULT, ids->data());
  }

  ComPtr<Shelf> shelf = MakeObject<Shelf>();
};

TEST_F(DispatchObjectTest, FindsMembersAndTheirParametersWhateverTheirCase) {
  std::vector<DISPID> ids;
  EXPECT_EQ(Ids({L"label"}, &ids), S_OK);
  EXPECT_EQ(ids, (std::vector<DISPID>{2}));
  EXPECT_EQ(Ids({L"PUT", L"lent", L"Title"}, &ids), S_OK);
  EXPECT_EQ(ids, (std::vector<DISPID>{5, 2, 0}));
}

TEST_F(DispatchObjectTest, SaysWhichNamesItDoesNotKnow) {
  std::vector<DISPID> ids;
  EXPECT_EQ(Ids({L"Colour"}, &ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids, (std::vector<DISPID>{DISPID_UNKNOWN}));
  EXPECT_EQ(Ids({L"Put", L"Colour", L"Copies"}, &ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids, (std::vector<DISPID>{5, DISPID_UNKNOWN, 1}));
  EXPECT_EQ(Ids({L"Colour", L"Copies"}, &ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids, (std::vector<DISPID>{DISPID_UNKNOWN, DISPID_UNKNOWN}));
}

TEST_F(DispatchObjectTest, RefusesAnInterfaceIdOtherThanNull) {
  DISPID id = 0;
  wchar_t name[] = L"Label";
  LPOLESTR names = name;
  EXPECT_EQ(shelf->GetIDsOfNames(IID_IDispatch, &names, 1, 0, &id), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(Call(shelf.get()).Run(2, DISPATCH_PROPERTYGET, IID_IDispatch), DISP_E_UNKNOWNINTERFACE);
}

TEST_F(DispatchObjectTest, ReadsAndWritesAProperty) {
  Call put(shelf.get());
  EXPECT_EQ(
      put.Argument(Variant::Text("Oak")).Names({DISPID_PROPERTYPUT}).Run(2, DISPATCH_PROPERTYPUT),
      S_OK);
  Call get(shelf.get());
  EXPECT_EQ(get.Run(2, kGetOrCall), S_OK);
  ASSERT_EQ(get.result.Type(), VT_BSTR);
  EXPECT_EQ(TextOf(get.result.get().bstrVal), "Oak");
}

TEST_F(DispatchObjectTest, ServesAMemberOnlyInItsOwnKindOfCall) {
  EXPECT_EQ(Call(shelf.get()).Run(2, DISPATCH_METHOD), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Call(shelf.get()).Run(7, DISPATCH_PROPERTYGET), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Call(shelf.get()).Run(3, DISPATCH_PROPERTYGET), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Call(shelf.get()).Run(1234, kGetOrCall), DISP_E_MEMBERNOTFOUND);
  Call put(shelf.get());
  put.Argument(Variant::Object(nullptr)).Names({DISPID_PROPERTYPUT});
  EXPECT_EQ(put.Run(3, DISPATCH_PROPERTYPUT), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(put.Run(3, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF), S_OK);
}

TEST_F(DispatchObjectTest, TakesAPutOnlyWithTheNameOfThePutValue) {
  Call unnamed(shelf.get());
  unnamed.Argument(Variant::Text("Oak"));
  EXPECT_EQ(unnamed.Run(2, DISPATCH_PROPERTYPUT), DISP_E_BADPARAMCOUNT);
  Call misnamed(shelf.get());
  misnamed.Argument(Variant::Text("Oak")).Names({0});
  EXPECT_EQ(misnamed.Run(2, DISPATCH_PROPERTYPUT), DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(shelf->label, "Shelf");
}

TEST_F(DispatchObjectTest, BindsArgumentsByPositionLastFirst) {
  Call call(shelf.get());
  call.Argument(Variant::Text("Atlas")).Argument(Variant::Long(3)).Argument(Variant::Boolean(true));
  EXPECT_EQ(call.Run(5, kGetOrCall), S_OK);
  EXPECT_EQ(shelf->seen, "Atlas/3/1");
}

TEST_F(DispatchObjectTest, BindsArgumentsByName) {
  Call call(shelf.get());
  call.Argument(Variant::Text("Atlas")).Argument(Variant::Boolean(true)).Names({2});
  EXPECT_EQ(call.Run(5, DISPATCH_METHOD), S_OK);
  EXPECT_EQ(shelf->seen, "Atlas/-/1");
  Call unknown(shelf.get());
  unknown.Argument(Variant::Text("Atlas")).Argument(Variant::Boolean(true)).Names({3});
  EXPECT_EQ(unknown.Run(5, DISPATCH_METHOD), DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(unknown.wrong_argument, 0u);
  Call twice(shelf.get());
  twice.Argument(Variant::Text("Atlas")).Argument(Variant::Text("Globe")).Names({0});
  EXPECT_EQ(twice.Run(5, DISPATCH_METHOD), DISP_E_PARAMNOTFOUND);
}

TEST_F(DispatchObjectTest, TakesOptionalArgumentsLeftOutInBothWays) {
  Call trailing(shelf.get());
  EXPECT_EQ(trailing.Argument(Variant::Text("Atlas")).Run(5, DISPATCH_METHOD), S_OK);
  EXPECT_EQ(shelf->seen, "Atlas/-/-");
  Call middle(shelf.get());
  middle.Argument(Variant::Text("Atlas"))
      .Argument(Variant::Omitted())
      .Argument(Variant::Boolean(false));
  EXPECT_EQ(middle.Run(5, DISPATCH_METHOD), S_OK);
  EXPECT_EQ(shelf->seen, "Atlas/-/0");
}

TEST_F(DispatchObjectTest, RefusesAWrongNumberOfArguments) {
  EXPECT_EQ(Call(shelf.get()).Run(5, DISPATCH_METHOD), DISP_E_BADPARAMCOUNT);
  Call many(shelf.get());
  for (int i = 0; i < 4; ++i) many.Argument(Variant::Text("1"));
  EXPECT_EQ(many.Run(5, DISPATCH_METHOD), DISP_E_BADPARAMCOUNT);
  Call omitted(shelf.get());
  omitted.Argument(Variant::Omitted()).Argument(Variant::Long(1));
  EXPECT_EQ(omitted.Run(5, DISPATCH_METHOD), DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(omitted.wrong_argument, 1u);
}

TEST_F(DispatchObjectTest, ConvertsAsAutomationDoesAndNamesTheArgumentThatCannotBe) {
  Call number(shelf.get());
  number.Argument(Variant::Long(12)).Argument(Variant::Text("7"));
  EXPECT_EQ(number.Run(5, DISPATCH_METHOD), S_OK);
  EXPECT_EQ(shelf->seen, "12/7/-");
  Call wrong(shelf.get());
  wrong.Argument(Variant::Text("Atlas"))
      .Argument(Variant::Text("many"))
      .Argument(Variant::Boolean(true));
  EXPECT_EQ(wrong.Run(5, DISPATCH_METHOD), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(wrong.wrong_argument, 1u);
  Call object(shelf.get());
  object.Argument(Variant::Object(shelf.get()));
  EXPECT_EQ(object.Run(5, DISPATCH_METHOD), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(object.wrong_argument, 0u);
}

TEST_F(DispatchObjectTest, TakesObjectsOnlyWhereObjectsAreMeant) {
  Call dispatch(shelf.get());
  EXPECT_EQ(dispatch.Argument(Variant::Object(shelf.get())).Run(6, DISPATCH_METHOD), S_OK);
  EXPECT_EQ(shelf->seen, "somebody");
  Call unknown(shelf.get());
  EXPECT_EQ(unknown.Argument(Variant::Unknown(shelf.get())).Run(6, DISPATCH_METHOD), S_OK);
  Call nothing(shelf.get());
  EXPECT_EQ(nothing.Argument(Variant::Object(nullptr)).Run(6, DISPATCH_METHOD), S_OK);
  EXPECT_EQ(shelf->seen, "nobody");
  Call text(shelf.get());
  EXPECT_EQ(text.Argument(Variant::Text("me")).Run(6, DISPATCH_METHOD), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(text.wrong_argument, 0u);
}

TEST_F(DispatchObjectTest, FollowsReferencesToValues) {
  LONG copies = 4;
  VARIANT by_reference;
  by_reference.vt = VT_BYREF | VT_I4;
  by_reference.plVal = &copies;
  Variant title = Variant::Text("Atlas");
  VARIANT arguments[] = {by_reference, title.get()};
  DISPPARAMS parameters{arguments, nullptr, 2, 0};
  EXPECT_EQ(shelf->Invoke(5, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(shelf->seen, "Atlas/4/-");
}

TEST_F(DispatchObjectTest, PassesArgumentsOfAPlainPropertyToTheDefaultMemberOfItsObject) {
  Call item(shelf.get());
  EXPECT_EQ(item.Argument(Variant::Long(0)).Run(4, kGetOrCall), S_OK);
  EXPECT_EQ(TextOf(item.result.get().bstrVal), "Shelf item");
  Call text(shelf.get());
  EXPECT_EQ(text.Argument(Variant::Long(0)).Run(2, kGetOrCall), DISP_E_BADPARAMCOUNT);
}

TEST_F(DispatchObjectTest, TellsItsOwnFailuresAsAnException) {
  Call drop(shelf.get());
  EXPECT_EQ(drop.Run(8, DISPATCH_METHOD), DISP_E_EXCEPTION);
  EXPECT_EQ(drop.exception.scode, kComponentErrorBase + 7);
  EXPECT_EQ(drop.exception.wCode, 0);
  EXPECT_EQ(TextOf(drop.exception.bstrSource), "Shelf");
  EXPECT_EQ(TextOf(drop.exception.bstrDescription), "It is heavy");
  shelf->refused = "Locked";
  Call refused(shelf.get());
  EXPECT_EQ(refused.Run(2, DISPATCH_PROPERTYGET), DISP_E_EXCEPTION);
  EXPECT_EQ(static_cast<ULONG>(refused.exception.scode), 0x800A0046u);
  EXPECT_EQ(TextOf(refused.exception.bstrDescription), "Locked");
}

TEST_F(DispatchObjectTest, LetsNoOtherExceptionOut) {
  Call burn(shelf.get());
  EXPECT_EQ(burn.Run(7, DISPATCH_METHOD), DISP_E_EXCEPTION);
  EXPECT_EQ(TextOf(burn.exception.bstrDescription), "No");
  DISPPARAMS none{};
  EXPECT_EQ(shelf->Invoke(7, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
}

TEST_F(DispatchObjectTest, CountsObjectsAndReferences) {
  const long objects = DispatchObject::LiveObjects(), references = DispatchObject::LiveReferences();
  {
    const auto other = MakeObject<Shelf>();
    other->AddRef();
    EXPECT_EQ(DispatchObject::LiveObjects(), objects + 1);
    EXPECT_EQ(DispatchObject::LiveReferences(), references + 2);
    other->Release();
  }
  EXPECT_EQ(DispatchObject::LiveObjects(), objects);
  EXPECT_EQ(DispatchObject::LiveReferences(), references);
}

TEST_F(DispatchObjectTest, AnswersForItsTwoInterfacesOnly) {
  void* other = shelf.get();
  EXPECT_EQ(shelf->QueryInterface(IID_IClassFactory, &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
  const auto unknown = ComPtr<IDispatch>::Share(shelf.get()).Query<IUnknown>(IID_IUnknown);
  EXPECT_EQ(unknown.get(), shelf.get());
  UINT count = 5;
  EXPECT_EQ(shelf->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 0u);
}

class EnumVariantTest : public ::testing::Test {
 protected:
  EnumVariantTest() {
    std::vector<Variant> items;
    for (LONG i = 1; i <= 3; ++i) items.push_back(Variant::Long(i * 10));
    const Variant made = EnumeratorOver(std::move(items));
    EXPECT_EQ(made.Type(), VT_UNKNOWN);
    enumerator = ComPtr<IUnknown>::Share(made.get().punkVal).Query<IEnumVARIANT>(IID_IEnumVARIANT);
  }

  // The next `count` numbers and the answer.
  std::vector<LONG> Next(ULONG count, HRESULT* answer) {
    std::vector<VARIANT> values(count);
    ULONG fetched = 99;
    *answer = enumerator->Next(count, values.data(), &fetched);
    std::vector<LONG> numbers;
    for (ULONG i = 0; i < fetched; ++i) numbers.push_back(values[i].lVal);
    return numbers;
  }

  ComPtr<IEnumVARIANT> enumerator;
};

TEST_F(EnumVariantTest, GivesItsItemsInOrderAndThenTellsTheEnd) {
  HRESULT answer;
  EXPECT_EQ(Next(2, &answer), (std::vector<LONG>{10, 20}));
  EXPECT_EQ(answer, S_OK);
  EXPECT_EQ(Next(2, &answer), (std::vector<LONG>{30}));
  EXPECT_EQ(answer, S_FALSE);
  EXPECT_EQ(Next(1, &answer), std::vector<LONG>{});
  EXPECT_EQ(answer, S_FALSE);
}

TEST_F(EnumVariantTest, SkipsAndStartsAgain) {
  HRESULT answer;
  EXPECT_EQ(enumerator->Skip(2), S_OK);
  EXPECT_EQ(Next(1, &answer), (std::vector<LONG>{30}));
  EXPECT_EQ(enumerator->Skip(1), S_FALSE);
  EXPECT_EQ(enumerator->Reset(), S_OK);
  EXPECT_EQ(Next(1, &answer), (std::vector<LONG>{10}));
}

TEST_F(EnumVariantTest, CountMayBeLeftOutForOneItemOnly) {
  VARIANT values[2];
  EXPECT_EQ(enumerator->Next(2, values, nullptr), E_POINTER);
  EXPECT_EQ(enumerator->Next(1, values, nullptr), S_OK);
  EXPECT_EQ(values[0].lVal, 10);
}

TEST_F(EnumVariantTest, ACloneGoesOnFromTheSamePlaceByItself) {
  HRESULT answer;
  Next(1, &answer);
  ComPtr<IEnumVARIANT> clone;
  ASSERT_EQ(enumerator->Clone(clone.Put()), S_OK);
  EXPECT_EQ(Next(2, &answer), (std::vector<LONG>{20, 30}));
  std::swap(enumerator, clone);
  EXPECT_EQ(Next(2, &answer), (std::vector<LONG>{20, 30}));
}

}  // namespace

}  // namespace scrivo
