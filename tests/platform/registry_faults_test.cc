// Every call of the registry made to fail once, and what CRegistry makes of it.

#include "platform/registry.h"
#include "tests/doubles/expect_error.h"
#include "tests/doubles/failing_registry.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

const std::string kKey = "Software\\Scrivo";

class RegistryFaults : public WithFakeServices {
 protected:
  RegistryFaults() {
    CRegistry writer;
    writer.Init(kHkeyCurrentUser);
    writer.SetValue(kKey, "text", "x", 1);
    writer.SetValue(kKey, "expandable", "%A B%", 1);
    writer.CreateKey(kKey + "\\one");
    writer.CreateKey(kKey + "\\two");
    registry_.Init(kHkeyCurrentUser);
    TheServices().registry = failing;
  }

  void Fail(const std::string& call, int skip = 0, RegistryStatus status = kRegistryAccessDenied) {
    failing->call = call;
    failing->skip = skip;
    failing->status = status;
  }

  RegistryValue Get(const std::string& name) {
    return registry_.GetValue(kKey, name, RegistryValue("default"));
  }

  std::shared_ptr<FailingRegistry> failing = std::make_shared<FailingRegistry>(registry);
  CRegistry registry_;
  std::vector<std::string> names = {"left over"};
};

TEST_F(RegistryFaults, AKeyThatCannotBeOpenedGivesTheEmptyResult) {
  const std::vector<std::function<bool()>> empty = {
      [&] { return Get("text") == RegistryValue("default"); },
      [&] { return !registry_.DeleteValue(kKey, "text"); },
      [&] { return registry_.GetAllSubKeys(kKey, &names) == 0 && names.empty(); },
      [&] { return registry_.GetAllValueNames(kKey, &names) == 0 && names.empty(); },
      [&] { return !registry_.KeyExists(kKey); },
      [&] { return registry_.ValueType(kKey, "text") == 0; },
  };
  for (std::size_t member = 0; member < empty.size(); ++member) {
    Fail("OpenKey");
    EXPECT_TRUE(empty[member]()) << member;
  }
}

TEST_F(RegistryFaults, AKeyThatCannotBeMadeGivesFalse) {
  Fail("CreateKey");
  EXPECT_FALSE(registry_.CreateKey(kKey + "\\three"));
  Fail("CreateKey");
  EXPECT_FALSE(registry_.SetValue(kKey, "text", "y", 1));
}

TEST_F(RegistryFaults, ARefusedDeletionGivesFalse) {
  Fail("DeleteKey");
  EXPECT_FALSE(registry_.DeleteKey(kKey + "\\one"));
  Fail("DeleteValue");
  EXPECT_FALSE(registry_.DeleteValue(kKey, "text"));
}

TEST_F(RegistryFaults, ARefusedWriteGivesFalseAndClosesTheKey) {
  const std::size_t open = registry->OpenKeys();
  Fail("SetValue");
  EXPECT_FALSE(registry_.SetValue(kKey, "text", "y", 1));
  Fail("SetValue");
  EXPECT_FALSE(registry_.SetValue(kKey, "text", ByteArray{{1, 2, 3}}, 3));
  Fail("SetValue");
  EXPECT_FALSE(registry_.SetValue(kKey, "text", std::int32_t{1}, 4));
  EXPECT_EQ(registry->OpenKeys(), open);
  EXPECT_EQ(Get("text"), RegistryValue("x"));
}

TEST_F(RegistryFaults, AFailedQuestionForTheSizeGivesTheDefault) {
  Fail("QueryValue");
  EXPECT_EQ(Get("text"), RegistryValue("default"));
  Fail("QueryValue");
  EXPECT_EQ(registry_.ValueType(kKey, "text"), 0u);
}

TEST_F(RegistryFaults, AFailedReadBehindTheQuestionGivesTheDefault) {
  Fail("QueryValue", 1);
  EXPECT_EQ(Get("text"), RegistryValue("default"));
}

// A registry that answers a question without a buffer as if there were one that is too small.
class AnswersMoreData : public FailingRegistry {
 public:
  using FailingRegistry::FailingRegistry;

  RegistryStatus QueryValue(RegistryHandle key, const std::string& name, std::uint32_t* type,
                            std::uint8_t* data, std::uint32_t* size) override {
    const RegistryStatus status = FailingRegistry::QueryValue(key, name, type, data, size);
    return status == kRegistrySuccess && !data ? kRegistryMoreData : status;
  }
};

TEST_F(RegistryFaults, MoreDataIsAsGoodAnAnswerAsSuccess) {
  TheServices().registry = std::make_shared<AnswersMoreData>(registry);
  EXPECT_EQ(Get("text"), RegistryValue("x"));
  EXPECT_EQ(registry_.ValueType(kKey, "text"), 1u);
}

TEST_F(RegistryFaults, AnExpansionThatFailsGivesTheDefault) {
  Fail("ExpandEnvironment");
  EXPECT_EQ(Get("expandable"), RegistryValue("default"));
  Fail("ExpandEnvironment", 1);
  EXPECT_EQ(Get("expandable"), RegistryValue("default"));
}

// A registry whose question for the expanded size is answered with another figure than the
// expansion needs.
class AsksForAnotherSize : public FailingRegistry {
 public:
  AsksForAnotherSize(std::shared_ptr<RegistryStore> store, int difference)
      : FailingRegistry(std::move(store)), difference_(difference) {}

  std::uint32_t ExpandEnvironment(const std::string& source, char* buffer,
                                  std::uint32_t size) override {
    const std::uint32_t needed = FailingRegistry::ExpandEnvironment(source, buffer, size);
    return buffer ? needed : needed + static_cast<std::uint32_t>(difference_);
  }

 private:
  int difference_;
};

TEST_F(RegistryFaults, AnExpansionEndsAtItsNul) {
  const RegistryValue as_it_is = Get("expandable");
  TheServices().registry = std::make_shared<AsksForAnotherSize>(registry, 5);
  EXPECT_EQ(Get("expandable"), as_it_is);
}

TEST_F(RegistryFaults, AnExpansionThatHasGrownSinceItsSizeWasAskedGivesTheDefault) {
  TheServices().registry = std::make_shared<AsksForAnotherSize>(registry, -1);
  EXPECT_EQ(Get("expandable"), RegistryValue("default"));
}

// A registry that remembers with which rights its keys were opened and made.
class RemembersRights : public FailingRegistry {
 public:
  using FailingRegistry::FailingRegistry;

  RegistryStatus OpenKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                         RegistryHandle* key) override {
    asked.push_back(rights);
    return FailingRegistry::OpenKey(parent, path, rights, key);
  }
  RegistryStatus CreateKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                           RegistryHandle* key) override {
    asked.push_back(rights);
    return FailingRegistry::CreateKey(parent, path, rights, key);
  }

  std::vector<std::uint32_t> asked;
};

TEST_F(RegistryFaults, EachMemberAsksForTheRightsItNeedsAndNoMore) {
  const auto store = std::make_shared<RemembersRights>(registry);
  TheServices().registry = store;
  registry_.CreateKey(kKey);
  registry_.SetValue(kKey, "text", "y", 1);
  registry_.DeleteValue(kKey, "text");
  registry_.GetAllSubKeys(kKey, &names);
  registry_.GetAllValueNames(kKey, &names);
  Get("text");
  registry_.KeyExists(kKey);
  registry_.ValueType(kKey, "text");
  EXPECT_EQ(store->asked, (std::vector<std::uint32_t>{0x3F, 0x3F, 0x3F, 8, 1, 1, 1, 1}));
}

// A registry that remembers how long a name of a sub-key it may give.
class RemembersLengths : public FailingRegistry {
 public:
  using FailingRegistry::FailingRegistry;

  RegistryStatus EnumKey(RegistryHandle key, std::uint32_t index, char* buffer,
                         std::uint32_t length) override {
    lengths.push_back(length);
    return FailingRegistry::EnumKey(key, index, buffer, length);
  }

  std::vector<std::uint32_t> lengths;
};

TEST_F(RegistryFaults, NamesOfSubKeysAreAskedForWithRoomForTheLongest) {
  const auto store = std::make_shared<RemembersLengths>(registry);
  TheServices().registry = store;
  EXPECT_EQ(registry_.GetAllSubKeys(kKey, &names), 2);
  EXPECT_EQ(store->lengths, (std::vector<std::uint32_t>{256, 256, 256}));
}

TEST_F(RegistryFaults, ATextLosesItsLastByteWhateverThatIs) {
  RegistryHandle key = 0;
  ASSERT_EQ(registry->OpenKey(kHkeyCurrentUser, kKey, kRightAllAccess, &key), kRegistrySuccess);
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>("abc");
  for (const std::uint32_t type : {kRegSz, kRegExpandSz, kRegMultiSz}) {
    ASSERT_EQ(registry->SetValue(key, "open", type, bytes, 3), kRegistrySuccess);
    EXPECT_EQ(Get("open"), RegistryValue("ab")) << type;
  }
}

TEST_F(RegistryFaults, AListEndsWhereItFails) {
  Fail("EnumKey", 1);
  EXPECT_EQ(registry_.GetAllSubKeys(kKey, &names), 1);
  EXPECT_EQ(names, std::vector<std::string>{"one"});
  Fail("EnumValue", 1);
  EXPECT_EQ(registry_.GetAllValueNames(kKey, &names), 1);
  EXPECT_EQ(names, std::vector<std::string>{"text"});
}

TEST_F(RegistryFaults, ANameThatIsTooLongEndsTheListOfSubKeys) {
  Fail("EnumKey", 1, kRegistryMoreData);
  EXPECT_EQ(registry_.GetAllSubKeys(kKey, &names), 1);
}

TEST_F(RegistryFaults, WithoutTheLongestNameThereAreNoValueNames) {
  Fail("LongestValueName");
  EXPECT_EQ(registry_.GetAllValueNames(kKey, &names), 0);
  EXPECT_TRUE(names.empty());
}

TEST_F(RegistryFaults, AKeyThatCannotBeClosedChangesNothing) {
  Fail("CloseKey");
  EXPECT_TRUE(registry_.CreateKey(kKey));
  Fail("CloseKey");
  EXPECT_TRUE(registry_.KeyExists(kKey));
  Fail("CloseKey");
  EXPECT_TRUE(registry_.SetValue(kKey, "text", "y", 1));
  Fail("CloseKey");
  EXPECT_EQ(registry_.GetAllSubKeys(kKey, &names), 2);
}

TEST_F(RegistryFaults, AnUnexpectedFailureInAnyMemberIsTheComponentFailure) {
  const std::vector<std::pair<const char*, std::function<void()>>> members = {
      {"CreateKey", [&] { registry_.CreateKey(kKey); }},
      {"DeleteKey", [&] { registry_.DeleteKey(kKey); }},
      {"DeleteValue", [&] { registry_.DeleteValue(kKey, "text"); }},
      {"EnumKey", [&] { registry_.GetAllSubKeys(kKey, &names); }},
      {"EnumValue", [&] { registry_.GetAllValueNames(kKey, &names); }},
      {"QueryValue", [&] { Get("text"); }},
      {"OpenKey", [&] { registry_.KeyExists(kKey); }},
      {"SetValue", [&] { registry_.SetValue(kKey, "text", "y", 1); }},
      {"QueryValue", [&] { registry_.ValueType(kKey, "text"); }},
  };
  failing->throws = true;
  for (const auto& [call, member] : members) {
    Fail(call);
    ExpectError(member, kComponentErrorBase + 18003, "Scrivo.CRegistry",
                "CRegistry component failure");
  }
}

}  // namespace
}  // namespace scrivo
