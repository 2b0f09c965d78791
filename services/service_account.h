#pragma once

#include <cstdint>
#include <memory>
#include <string>

/// What one online service wants to know about who asks. Texts go into requests, so they are UTF-8.
class CServiceAccount {
 public:
  explicit CServiceAccount(int32_t accountId = 0) : id(accountId) {}
  virtual ~CServiceAccount() = default;
  CServiceAccount(const CServiceAccount&) = default;
  CServiceAccount& operator=(const CServiceAccount&) = default;
  /// A copy of the same class.
  virtual std::unique_ptr<CServiceAccount> Clone() const {
    return std::make_unique<CServiceAccount>(*this);
  }

  int32_t id;            ///< the provider's number
  std::string key;       ///< API key or account name; never shown
  std::string language;  ///< as the service wants it; empty: no language goes out
  std::string referrer;  ///< of the Referer header; may be empty
};

/// The account of HERE's first interfaces; its key is the app code.
class CHereAccount : public CServiceAccount {
 public:
  using CServiceAccount::CServiceAccount;
  std::unique_ptr<CServiceAccount> Clone() const override {
    return std::make_unique<CHereAccount>(*this);
  }

  std::string appId;
};
