#include <gtest/gtest.h>

#include "com/win32/dispatch_call.h"
#include "system/error.h"
#include "tests/addin/win32/scripted_collection.h"

namespace scrivo {
namespace {

class CollectionTest : public testing::Test {
 protected:
  ~CollectionTest() override {
    EXPECT_EQ(ScriptedObject::Living(), 0);
    EXPECT_EQ(ScriptedEnumerator::Living(), 0);
  }

  static std::string Urls(const ComPtr<ScriptedObject>& collection) {
    std::string urls;
    for (const LateBound& item : ItemsOf(Called(collection))) {
      urls += TextOf(item.Get(L"Url")) + " ";
    }
    return urls;
  }
  // A collection of three with an enumerator made by a test.
  static ComPtr<ScriptedObject> With(const std::function<HRESULT(ScriptedCall&)>& new_enum) {
    ComPtr<ScriptedObject> collection = ScriptedObject::Make();
    collection->OnId(DISPID_NEWENUM, new_enum);
    return collection;
  }
};

TEST_F(CollectionTest, ItemsComeInTheHostsOrder) {
  EXPECT_EQ(Urls(Enumerable(NumberedObjects(3))), "0 1 2 ");
}

TEST_F(CollectionTest, TheEnumeratorIsAskedForAsPropertyAndMethodWithoutArguments) {
  const ComPtr<ScriptedObject> collection = With([](ScriptedCall& call) {
    EXPECT_EQ(call.flags, DISPATCH_PROPERTYGET | DISPATCH_METHOD);
    EXPECT_EQ(call.Count(), 0u);
    call.result->vt = VT_UNKNOWN;
    call.result->punkVal = new ScriptedEnumerator(NumberedObjects(1));
    return S_OK;
  });
  EXPECT_EQ(Urls(collection), "0 ");
}

TEST_F(CollectionTest, TheEnumeratorMayComeAsAnObjectThatIsCalledByName) {
  const ComPtr<ScriptedObject> collection = With([](ScriptedCall& call) {
    ComPtr<ScriptedObject> enumerator = ScriptedObject::Make();
    enumerator->other = ComPtr<IUnknown>::Take(new ScriptedEnumerator(NumberedObjects(2)));
    call.result->vt = VT_DISPATCH;
    call.result->pdispVal = enumerator.Detach();
    return S_OK;
  });
  EXPECT_EQ(Urls(collection), "0 1 ");
}

TEST_F(CollectionTest, ItemsMayComeAsUnknownObjects) {
  const ComPtr<ScriptedObject> collection = With([](ScriptedCall& call) {
    auto* enumerator = new ScriptedEnumerator(NumberedObjects(2));
    enumerator->type = VT_UNKNOWN;
    call.result->vt = VT_UNKNOWN;
    call.result->punkVal = enumerator;
    return S_OK;
  });
  EXPECT_EQ(Urls(collection), "0 1 ");
}

TEST_F(CollectionTest, WithoutAnEnumeratorTheItemsAreCountedFromZero) {
  EXPECT_EQ(Urls(Countable(NumberedObjects(3))), "0 1 2 ");
}

class NoEnumerators : public CollectionTest, public testing::WithParamInterface<VARTYPE> {};

TEST_P(NoEnumerators, LeaveTheItemsToBeCounted) {
  const ComPtr<ScriptedObject> collection = Countable(NumberedObjects(2));
  collection->OnId(DISPID_NEWENUM, ScriptedObject::Giving(PlainVariant(GetParam())));
  EXPECT_EQ(Urls(collection), "0 1 ");
}
INSTANTIATE_TEST_SUITE_P(All, NoEnumerators,
                         testing::Values(VT_EMPTY, VT_NULL, VT_UNKNOWN, VT_DISPATCH, VT_I4));

TEST_F(CollectionTest, AnObjectThatIsNoEnumeratorLeavesTheItemsToBeCounted) {
  const ComPtr<ScriptedObject> collection = Countable(NumberedObjects(2));
  collection->OnId(DISPID_NEWENUM, [](ScriptedCall& call) {
    call.result->vt = VT_DISPATCH;
    call.result->pdispVal = ScriptedObject::Make().Detach();
    return S_OK;
  });
  EXPECT_EQ(Urls(collection), "0 1 ");
}

TEST_F(CollectionTest, ACountOfAnotherTypeIsANumberToo) {
  const ComPtr<ScriptedObject> collection = ScriptedObject::Make();
  collection->GivesText(L"Count", L"1");
  collection->GivesObject(L"Item", NumberedObjects(1)[0]);
  EXPECT_EQ(Urls(collection), "0 ");
}

TEST_F(CollectionTest, ItemsAreFoundByTheDefaultMemberWhereItHasNoName) {
  const ComPtr<ScriptedObject> collection = ScriptedObject::Make();
  collection->Gives(L"Count", PlainVariant(VT_I4, 1));
  collection->OnId(DISPID_VALUE, [](ScriptedCall& call) {
    EXPECT_EQ(call.Argument(0).lVal, 0);
    call.result->vt = VT_DISPATCH;
    call.result->pdispVal = ComPtr<ScriptedObject>(NumberedObjects(1)[0]).Detach();
    return S_OK;
  });
  EXPECT_EQ(Urls(collection), "0 ");
}

TEST_F(CollectionTest, NoCollectionHasNoItems) { EXPECT_TRUE(ItemsOf(LateBound()).empty()); }

TEST_F(CollectionTest, AnEmptyCollectionHasNoItems) {
  EXPECT_EQ(Urls(Enumerable({})), "");
  EXPECT_EQ(Urls(Countable({})), "");
}

TEST_F(CollectionTest, AnItemThatCannotBeHadIsAnErrorAndNotAnEnd) {
  const ComPtr<ScriptedObject> collection = With([](ScriptedCall& call) {
    auto* enumerator = new ScriptedEnumerator(NumberedObjects(3));
    enumerator->fails_at = 1;
    call.result->vt = VT_UNKNOWN;
    call.result->punkVal = enumerator;
    return S_OK;
  });
  EXPECT_THROW(Urls(collection), Error);
}

TEST_F(CollectionTest, AnItemThatIsNoObjectIsAnError) {
  EXPECT_THROW(Urls(Enumerable({ComPtr<ScriptedObject>()})), Error);
  EXPECT_THROW(Urls(Countable({ComPtr<ScriptedObject>()})), Error);
}

TEST_F(CollectionTest, AnItemIsFoundByItsName) {
  const ComPtr<ScriptedObject> bars = ScriptedObject::Make();
  bars->On(L"Item", [](ScriptedCall& call) {
    EXPECT_EQ(call.Argument(0).vt, VT_BSTR);
    EXPECT_EQ(TextOf(call.Argument(0).bstrVal), "Tools");
    call.result->vt = VT_DISPATCH;
    call.result->pdispVal = ComPtr<ScriptedObject>(NumberedObjects(1)[0]).Detach();
    return S_OK;
  });
  EXPECT_TRUE(ObjectOf(ItemOf(Called(bars), Variant::Text("Tools"))));
}

TEST_F(CollectionTest, AMissingItemIsTheHostsOwnError) {
  const ComPtr<ScriptedObject> bars = ScriptedObject::Make();
  bars->Fails(L"Item", DISP_E_BADINDEX);
  bars->OnId(DISPID_VALUE, [](ScriptedCall&) {
    ADD_FAILURE() << "the item was asked for under its name already";
    return S_OK;
  });
  EXPECT_THROW(ItemOf(Called(bars), Variant::Text("Tools")), Error);
}

}  // namespace
}  // namespace scrivo
