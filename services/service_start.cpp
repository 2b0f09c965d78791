#include <stdexcept>

#include "base/localized_text.h"
#include "base/product.h"
#include "base/text_ids.h"
#include "services/service_registry.h"
#include "services/service_table.h"

namespace {

struct DefaultAccount {
  int32_t id;
  uint32_t languageTextId;  ///< the language as the service spells it, in that of the program
};

// Those in front of HERE, in the order in which they are made. Keys are the user's affair.
constexpr DefaultAccount kFirstAccounts[] = {
    {provider::kBing, kTextLanguageAndCountry}, {provider::kViaMichelin, kTextLanguageOfThree},
    {provider::kOsrm, kTextLanguage},           {provider::kGeonames, kTextLanguage},
    {provider::kTomTom, kTextLanguage},         {provider::kTomTom6, kTextLanguage},
    {provider::kTomTomSearch, kTextLanguage},
};

void Fill(CServiceRegistry& registry, int32_t id, uint32_t languageTextId,
          std::string_view referrer = {}) {
  const std::unique_ptr<CServiceAccount> account = registry.GetOrCreate(id)->Clone();
  account->language = LoadTextUtf8(languageTextId);
  account->referrer = referrer;
  registry.Put(*account);
}

}  // namespace

void FillServiceRegistry(CServiceRegistry& registry) {
  for (const DefaultAccount& row : kFirstAccounts) Fill(registry, row.id, row.languageTextId);

  if (registry.Has(provider::kHere)) throw std::invalid_argument("Provider already exist");
  CHereAccount here(provider::kHere);
  here.language = LoadTextUtf8(kTextLanguageAndCountry);
  registry.Put(here);

  // Its keys are bound to the site that asks.
  Fill(registry, provider::kIgn, kTextLanguage, kProductSite);

  if (!registry.Has(provider::kBing)) throw std::invalid_argument("Not valid provider");
}
