#include "services/service_registry.h"

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "base/product.h"
#include "services/service_table.h"

namespace {

std::string MessageOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::invalid_argument& failure) {
    return failure.what();
  }
  return "no failure";
}

TEST(ServiceRegistry, GivesTheAccountsThatAreThere) {
  CServiceRegistry registry;
  EXPECT_FALSE(registry.Has(3));
  EXPECT_EQ(registry.Find(3), nullptr);
  EXPECT_EQ(MessageOf([&] { static_cast<void>(registry.Get(3)); }), "Not valid provider");

  const CServiceRegistry::Account fresh = registry.GetOrCreate(3);
  EXPECT_EQ(fresh->id, 3);
  EXPECT_EQ(fresh->key + fresh->language + fresh->referrer, "");
  EXPECT_EQ(registry.Get(3), fresh);
  EXPECT_EQ(registry.GetOrCreate(3), fresh);
  EXPECT_TRUE(registry.Has(3));

  registry.Remove(3);
  EXPECT_FALSE(registry.Has(3));
  registry.Remove(3);
}

TEST(ServiceRegistry, IsOneForTheProcess) {
  EXPECT_EQ(&CServiceRegistry::Instance(), &CServiceRegistry::Instance());
}

TEST(ServiceRegistry, KnowsTheLowestNumber) {
  CServiceRegistry registry;
  EXPECT_EQ(registry.LowestId(), 0);
  registry.GetOrCreate(19);
  registry.GetOrCreate(5);
  EXPECT_EQ(registry.LowestId(), 5);
}

TEST(ServiceRegistry, LeavesAnAccountThatWasHandedOutAsItWas) {
  CServiceRegistry registry;
  CServiceAccount account(5);
  account.key = "first";
  registry.Put(account);
  const CServiceRegistry::Account before = registry.Get(5);
  account.key = "second";
  registry.Put(account);
  registry.Remove(9);
  EXPECT_EQ(before->key, "first");
  EXPECT_EQ(registry.Get(5)->key, "second");
}

TEST(ServiceRegistry, KeepsTheClassOfAnAccount) {
  CServiceRegistry registry;
  CHereAccount here(19);
  here.appId = "application";
  registry.Put(here);
  const auto* const kept = dynamic_cast<const CHereAccount*>(registry.Get(19).get());
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(kept->appId, "application");
}

// Each language of the program sends its own codes.
struct Codes {
  Language language;
  const char* two;
  const char* withCountry;
  const char* three;
};

class ServiceStart : public testing::TestWithParam<Codes> {
 public:
  ~ServiceStart() override { SetLanguage(Language::kEnglish); }
};

INSTANTIATE_TEST_SUITE_P(Languages, ServiceStart,
                         testing::Values(Codes{Language::kEnglish, "en", "en-US", "eng"},
                                         Codes{Language::kFrench, "fr", "fr-FR", "fra"},
                                         Codes{Language::kGerman, "de", "de-DE", "deu"},
                                         Codes{Language::kDutch, "nl", "nl-NL", "nld"}));

TEST_P(ServiceStart, FillsTheAccounts) {
  SetLanguage(GetParam().language);
  CServiceRegistry registry;
  FillServiceRegistry(registry);

  const struct {
    int32_t id;
    const char* language;
  } kExpected[] = {{3, GetParam().withCountry}, {5, GetParam().two},  {6, GetParam().two},
                   {7, GetParam().two},         {8, GetParam().two},  {9, GetParam().three},
                   {10, GetParam().two},        {11, GetParam().two}, {19, GetParam().withCountry}};
  for (const auto& row : kExpected) {
    EXPECT_EQ(registry.Get(row.id)->language, row.language) << row.id;
    EXPECT_EQ(registry.Get(row.id)->key, "") << row.id;
    EXPECT_EQ(registry.Get(row.id)->referrer, row.id == 11 ? kProductSite : "") << row.id;
  }
  for (const int32_t absent : {0, 2, 4, 17, 18, 20, 21, 102}) EXPECT_FALSE(registry.Has(absent));
  EXPECT_NE(dynamic_cast<const CHereAccount*>(registry.Get(19).get()), nullptr);
}

TEST(ServiceStartTwice, IsRefused) {
  CServiceRegistry registry;
  FillServiceRegistry(registry);
  EXPECT_EQ(MessageOf([&] { FillServiceRegistry(registry); }), "Provider already exist");
}

TEST(ServiceStartWithHere, KeepsTheAccountsInFrontOfIt) {
  CServiceRegistry registry;
  registry.GetOrCreate(19);
  EXPECT_EQ(MessageOf([&] { FillServiceRegistry(registry); }), "Provider already exist");
  EXPECT_TRUE(registry.Has(7));
  EXPECT_FALSE(registry.Has(11));
}

TEST(ServiceRegistry, IsReadWhileItChanges) {
  CServiceRegistry registry;
  FillServiceRegistry(registry);
  std::atomic<bool> done = false;
  size_t read = 0;
  std::thread reader([&] {
    while (!done) {
      const CServiceRegistry::Account account = registry.Find(5);
      if (account) read += account->key.size() == account->language.size() ? 1 : 0;
    }
  });
  CServiceAccount account(5);
  for (int i = 0; i < 2000; ++i) {
    account.key = std::string(static_cast<size_t>(i % 50), 'k');
    account.language = std::string(static_cast<size_t>(i % 50), 'l');
    registry.Put(account);
    if (i % 7 == 0) registry.Remove(5);
  }
  done = true;
  reader.join();
  EXPECT_EQ(registry.Get(5)->key.size(), 49u);
}

}  // namespace
