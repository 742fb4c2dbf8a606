#include "com/win32/dispatch_call.h"

#include <gtest/gtest.h>

#include "system/error.h"
#include "tests/com/win32/scripted_object.h"
#include "tests/compiler/leak_count.h"

namespace scrivo {
namespace {

class DispatchCallTest : public testing::Test {
 protected:
  ~DispatchCallTest() override {
    host.Reset();
    EXPECT_EQ(ScriptedObject::Living(), 0) << "every reference is released";
  }

  // The error that a call raises.
  template <typename Call>
  static Error ErrorOf(Call&& call) {
    try {
      call();
    } catch (const Error& error) {
      return error;
    }
    ADD_FAILURE() << "no error";
    return Error(0, "", "");
  }
  Error ErrorOfGet(const wchar_t* member) {
    return ErrorOf([&] { Called(host).Get(member); });
  }

  ComPtr<ScriptedObject> host = ScriptedObject::Make();
};

TEST_F(DispatchCallTest, APropertyIsReadWithoutArguments) {
  host->On(L"Caption", [](ScriptedCall& call) {
    EXPECT_EQ(call.flags, DISPATCH_PROPERTYGET | DISPATCH_METHOD);
    EXPECT_EQ(call.Count(), 0u);
    EXPECT_EQ(call.arguments->cNamedArgs, 0u);
    call.result->vt = VT_BSTR;
    call.result->bstrVal = SysAllocString(L"Compile");
    return S_OK;
  });
  EXPECT_EQ(TextOf(Called(host).Get(L"Caption")), "Compile");
}

TEST_F(DispatchCallTest, ArgumentsArriveLastFirstAndLeftOutOnesFillTheirPlaces) {
  host->On(L"Add", [](ScriptedCall& call) {
    EXPECT_EQ(call.Count(), 5u);
    EXPECT_EQ(call.arguments->rgvarg[4].vt, VT_I4) << "the first argument is the last element";
    EXPECT_EQ(call.arguments->rgvarg[4].lVal, 10);
    for (UINT i = 1; i < 4; ++i) {
      EXPECT_EQ(call.Argument(i).vt, VT_ERROR);
      EXPECT_EQ(call.Argument(i).scode, DISP_E_PARAMNOTFOUND);
    }
    EXPECT_EQ(call.arguments->rgvarg[0].vt, VT_BOOL);
    EXPECT_EQ(call.arguments->rgvarg[0].boolVal, VARIANT_TRUE);
    return S_OK;
  });
  Called(host).Get(L"Add", Variant::Long(10), Variant::Omitted(), Variant::Omitted(),
                   Variant::Omitted(), Variant::Boolean(true));
}

TEST_F(DispatchCallTest, AValueIsPutUnderTheNameOfThePut) {
  int puts = 0;
  host->On(L"Caption", [&](ScriptedCall& call) {
    ++puts;
    EXPECT_EQ(call.flags, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(call.Count(), 1u);
    EXPECT_EQ(call.arguments->cNamedArgs, 1u);
    EXPECT_EQ(call.arguments->rgdispidNamedArgs[0], DISPID_PROPERTYPUT);
    EXPECT_EQ(TextOf(call.Argument(0).bstrVal), "H\xC3\xA4user");
    EXPECT_EQ(call.result, nullptr);
    return S_OK;
  });
  Called(host).Put(L"Caption", Variant::Text("H\xC3\xA4user"));
  EXPECT_EQ(puts, 1);
}

TEST_F(DispatchCallTest, AnObjectIsPutByReference) {
  const ComPtr<ScriptedObject> value = ScriptedObject::Make();
  host->On(L"Object", [&](ScriptedCall& call) {
    EXPECT_EQ(call.flags, DISPATCH_PROPERTYPUTREF);
    EXPECT_EQ(call.Argument(0).pdispVal, value.get());
    return S_OK;
  });
  Called(host).Put(L"Object", Variant::Object(value.get()));
}

TEST_F(DispatchCallTest, AMethodIsCalledWithoutAskingForAResult) {
  int calls = 0;
  host->On(L"Refresh", [&](ScriptedCall& call) {
    ++calls;
    EXPECT_EQ(call.flags, DISPATCH_METHOD);
    EXPECT_EQ(call.result, nullptr);
    return S_OK;
  });
  Called(host).Call(L"Refresh");
  EXPECT_EQ(calls, 1);
}

TEST_F(DispatchCallTest, TheDefaultMemberIsCalledByItsNumber) {
  host->OnId(DISPID_VALUE,
             [](ScriptedCall& call) { return VariantCopy(call.result, &call.Argument(0)); });
  EXPECT_EQ(TextOf(Called(host).GetById(DISPID_VALUE, Variant::Text("a.htm"))), "a.htm");
}

TEST_F(DispatchCallTest, NoObjectIsAnErrorOfItsOwn) {
  const Error error = ErrorOf([] { LateBound().Get(L"ActiveWeb"); });
  EXPECT_EQ(error.number, kObjectNotSet);
  EXPECT_NE(error.description.find("ActiveWeb"), std::string::npos);
}

TEST_F(DispatchCallTest, AnUnknownMemberIsNamedInItsError) {
  const Error error = ErrorOfGet(L"LocalPath");
  EXPECT_EQ(error.number, kObjectDoesNotSupportThis);
  EXPECT_NE(error.description.find("LocalPath"), std::string::npos);
  EXPECT_EQ(error.description.find('\r'), std::string::npos);
  EXPECT_EQ(error.source, "Automation");
}

struct ResultCase {
  HRESULT result;
  std::int32_t number;
};

class ResultsOfInvoke : public DispatchCallTest, public testing::WithParamInterface<ResultCase> {};

TEST_P(ResultsOfInvoke, HaveTheirNumber) {
  host->Fails(L"Member", GetParam().result);
  EXPECT_EQ(ErrorOfGet(L"Member").number, GetParam().number);
}
INSTANTIATE_TEST_SUITE_P(
    All, ResultsOfInvoke,
    testing::Values(ResultCase{DISP_E_MEMBERNOTFOUND, 438}, ResultCase{DISP_E_UNKNOWNNAME, 438},
                    ResultCase{DISP_E_TYPEMISMATCH, 13}, ResultCase{DISP_E_OVERFLOW, 6},
                    ResultCase{E_OUTOFMEMORY, 7},
                    ResultCase{DISP_E_BADPARAMCOUNT, DISP_E_BADPARAMCOUNT},
                    ResultCase{DISP_E_BADINDEX, DISP_E_BADINDEX},
                    ResultCase{DISP_E_PARAMNOTOPTIONAL, DISP_E_PARAMNOTOPTIONAL},
                    ResultCase{DISP_E_NONAMEDARGS, DISP_E_NONAMEDARGS}, ResultCase{E_FAIL, E_FAIL},
                    ResultCase{RPC_E_DISCONNECTED, RPC_E_DISCONNECTED}));

// A call that raises an error; its texts are the caller's to free.
ScriptedObject::Answer Raising(WORD code, SCODE scode, const wchar_t* source,
                               const wchar_t* description) {
  return [=](ScriptedCall& call) {
    call.exception->wCode = code;
    call.exception->scode = scode;
    call.exception->bstrSource = source ? SysAllocString(source) : nullptr;
    call.exception->bstrDescription = description ? SysAllocString(description) : nullptr;
    call.exception->bstrHelpFile = SysAllocString(L"host.hlp");
    return DISP_E_EXCEPTION;
  };
}

TEST_F(DispatchCallTest, AnErrorOfTheObjectsOwnKeepsNumberSourceAndDescription) {
  host->On(L"Open", Raising(0, kComponentErrorBase + 17, L"Host.Webs", L"No web h\u00E4re"));
  const Error error = ErrorOfGet(L"Open");
  EXPECT_EQ(error.number, kComponentErrorBase + 17);
  EXPECT_EQ(error.source, "Host.Webs");
  EXPECT_EQ(error.description, "No web h\xC3\xA4re");
}

TEST_F(DispatchCallTest, AShortErrorCodeCountsWhereThereIsNoLongOne) {
  host->On(L"Open", Raising(1004, 0, L"Host", L"Refused"));
  EXPECT_EQ(ErrorOfGet(L"Open").number, 1004);
}

TEST_F(DispatchCallTest, ARunTimeErrorInItsLongFormHasItsShortNumber) {
  host->On(L"Save", Raising(0, static_cast<SCODE>(0x800A0046), L"Host", L"Permission denied"));
  EXPECT_EQ(ErrorOfGet(L"Save").number, kPermissionDenied);
}

TEST_F(DispatchCallTest, AnErrorWithoutANumberOrTextsIsStillAnError) {
  host->On(L"Open", Raising(0, 0, nullptr, nullptr));
  EXPECT_EQ(ErrorOfGet(L"Open").number, DISP_E_EXCEPTION);
  host->On(L"Close", Raising(0, E_FAIL, nullptr, nullptr));
  const Error error = ErrorOfGet(L"Close");
  EXPECT_EQ(error.number, E_FAIL);
  EXPECT_EQ(error.source, "");
  EXPECT_EQ(error.description, "");
}

HRESULT STDMETHODCALLTYPE FillIn(EXCEPINFO* exception) {
  exception->scode = kComponentErrorBase + 5;
  exception->bstrSource = SysAllocString(L"Late");
  exception->bstrDescription = SysAllocString(L"Filled in on request");
  return S_OK;
}

TEST_F(DispatchCallTest, AnErrorThatIsToldOnRequestIsAskedFor) {
  host->On(L"Open", [](ScriptedCall& call) {
    call.exception->pfnDeferredFillIn = &FillIn;
    return DISP_E_EXCEPTION;
  });
  const Error error = ErrorOfGet(L"Open");
  EXPECT_EQ(error.number, kComponentErrorBase + 5);
  EXPECT_EQ(error.source, "Late");
  EXPECT_EQ(error.description, "Filled in on request");
}

TEST_F(DispatchCallTest, TextsThatWereGivenAreFreed) {
  static const std::wstring long_text(64 * 1024, L'x');
  host->On(L"Open", Raising(0, E_FAIL, long_text.c_str(), long_text.c_str()));
  host->GivesText(L"Url", long_text.c_str());
  const LateBound object = Called(host);
  const auto round = [&] {
    ErrorOf([&] { object.Get(L"Open"); });
    TextOf(object.Get(L"Url", Variant::Text("a")));
  };
  for (int i = 0; i < 20; ++i) round();
  const long long before = UsedMemory();
  for (int i = 0; i < 500; ++i) round();  // 200 MB of text
  EXPECT_LT(UsedMemory() - before, 4 * MemorySlack(1));
}

TEST_F(DispatchCallTest, AResultOfAnotherTypeIsConverted) {
  host->Gives(L"Count", PlainVariant(VT_I4, 12));
  host->GivesText(L"CountAsText", L"12");
  host->Gives(L"Flag", PlainVariant(VT_I2, 7));
  host->Gives(L"Empty", PlainVariant(VT_EMPTY));
  const LateBound object = Called(host);
  EXPECT_EQ(TextOf(object.Get(L"Count")), "12");
  EXPECT_EQ(NumberOf(object.Get(L"CountAsText")), 12);
  EXPECT_TRUE(TruthOf(object.Get(L"Flag")));
  EXPECT_EQ(TextOf(object.Get(L"Empty")), "");
  EXPECT_FALSE(TruthOf(object.Get(L"Empty")));
}

TEST_F(DispatchCallTest, AResultByReferenceIsRead) {
  LONG number = 42;
  VARIANT reference{};
  reference.vt = VT_BYREF | VT_I4;
  reference.plVal = &number;
  host->On(L"Count", [&](ScriptedCall& call) {
    *call.result = reference;
    return S_OK;
  });
  EXPECT_EQ(NumberOf(Called(host).Get(L"Count")), 42);
}

TEST_F(DispatchCallTest, AResultThatCannotBeConvertedIsATypeMismatch) {
  host->GivesText(L"Count", L"many");
  host->Gives(L"Title", PlainVariant(VT_NULL));
  EXPECT_EQ(ErrorOf([&] { NumberOf(Called(host).Get(L"Count")); }).number, kTypeMismatch);
  EXPECT_EQ(ErrorOf([&] { TextOf(Called(host).Get(L"Title")); }).number, kTypeMismatch);
}

TEST_F(DispatchCallTest, EveryFormOfNothingIsNoObject) {
  host->Gives(L"Empty", PlainVariant(VT_EMPTY));
  host->Gives(L"Null", PlainVariant(VT_NULL));
  host->Gives(L"NoDispatch", PlainVariant(VT_DISPATCH));
  host->Gives(L"NoUnknown", PlainVariant(VT_UNKNOWN));
  for (const wchar_t* member : {L"Empty", L"Null", L"NoDispatch", L"NoUnknown"}) {
    EXPECT_FALSE(ObjectOf(Called(host).Get(member))) << Narrow(member);
  }
}

TEST_F(DispatchCallTest, AnObjectComesInEitherKindOfReference) {
  const ComPtr<ScriptedObject> web = ScriptedObject::Make();
  host->GivesObject(L"ActiveWeb", web);
  host->On(L"Unknown", [&](ScriptedCall& call) {
    call.result->vt = VT_UNKNOWN;
    call.result->punkVal = ComPtr<ScriptedObject>(web).Detach();
    return S_OK;
  });
  IDispatch* held = web.get();
  host->On(L"Reference", [&](ScriptedCall& call) {
    call.result->vt = VT_BYREF | VT_DISPATCH;
    call.result->ppdispVal = &held;
    return S_OK;
  });
  for (const wchar_t* member : {L"ActiveWeb", L"Unknown", L"Reference"}) {
    EXPECT_EQ(ObjectOf(Called(host).Get(member)).get(), web.get()) << Narrow(member);
  }
}

TEST_F(DispatchCallTest, AValueIsNoObject) {
  host->Gives(L"Count", PlainVariant(VT_I4, 3));
  EXPECT_EQ(ErrorOf([&] { ObjectOf(Called(host).Get(L"Count")); }).number, kTypeMismatch);
}

TEST_F(DispatchCallTest, ResultsOfAFailedCallAreReleasedToo) {
  const ComPtr<ScriptedObject> web = ScriptedObject::Make();
  host->On(L"Open", [&](ScriptedCall& call) {
    call.result->vt = VT_DISPATCH;
    call.result->pdispVal = ComPtr<ScriptedObject>(web).Detach();
    return E_FAIL;
  });
  EXPECT_EQ(ErrorOfGet(L"Open").number, E_FAIL);
}

}  // namespace
}  // namespace scrivo
