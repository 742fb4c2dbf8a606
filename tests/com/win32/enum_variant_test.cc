#include "com/win32/enum_variant.h"

#include <gtest/gtest.h>

#include "com/win32/com_ptr.h"

namespace scrivo {
namespace {

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
