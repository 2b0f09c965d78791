#include <optional>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "services/directions/route_provider.h"
#include "services/reply.h"
#include "services/service_registry.h"

namespace {

// What the page says about one account; what it leaves out is empty.
struct PageAccount {
  int32_t id = 0;
  bool available = true;
  std::string key;
  std::string language;
  std::string referrer;
};

std::string TextOrNothing(const CJsonValue& element, std::string_view name) {
  const CJsonValue* const value = element.AsObject().Find(name);
  return value ? ReplyText(*value) : std::string();
}

// Nothing for an element that is none, or has a value of a wrong type.
std::optional<PageAccount> ReadAccount(const CJsonValue& element) {
  try {
    PageAccount account;
    account.id = TruncateToInt32(element.Get("id").AsNumber());
    if (const CJsonValue* const available = element.AsObject().Find("available"))
      account.available = available->AsBool();
    account.key = TextOrNothing(element, "key");
    account.language = TextOrNothing(element, "lang");
    account.referrer = TextOrNothing(element, "referer");
    return account;
  } catch (const CJsonException&) {
    return std::nullopt;
  }
}

std::vector<PageAccount> ReadAccounts(std::string_view providers) {
  std::vector<PageAccount> accounts;
  CJsonDocument document;
  if (!HasFewValues(providers, kReplyValues) || document.Parse(providers) != 0 ||
      document.type != kJsonArray)
    return accounts;
  for (const auto& element : document.array) {
    if (auto account = ReadAccount(*element)) accounts.push_back(std::move(*account));
  }
  return accounts;
}

void Apply(CServiceRegistry& registry, const PageAccount& account) {
  if (!account.available) return registry.Remove(account.id);
  // A copy, so that an account of a class of its own keeps what it has besides.
  const std::unique_ptr<CServiceAccount> changed = registry.GetOrCreate(account.id)->Clone();
  changed->key = account.key;
  changed->language = account.language;
  changed->referrer = account.referrer;
  registry.Put(*changed);
}

}  // namespace

void UpdateServiceRegistry(CServiceRegistry& registry, std::string_view providers) {
  bool isSelectedGone = false;
  for (const PageAccount& account : ReadAccounts(providers)) {
    if (!registry.CreateRouteProvider(account.id)) continue;
    Apply(registry, account);
    if (account.id == currentProvider) isSelectedGone = !account.available;
  }
  if (isSelectedGone) currentProvider = registry.LowestId();
}
