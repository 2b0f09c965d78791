#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "services/service_table.h"
#include "settings/service_values.h"

/// Puts the user's values in force for all requests from now on. Any thread.
void SetServiceValues(ServiceValuesByName values);

/// All that a request to a service needs: the user's values, above those of the registry's account,
/// above the compiled-in address. Missing parts are empty.
struct ServiceAccess {
  std::string url;       ///< scheme, host, port and perhaps a path, without a slash at the end
  std::string key;       ///< never shown
  std::string appId;     ///< never shown
  std::string language;  ///< empty: none goes out
  std::string referrer;  ///< empty: none goes out
};

/// Any thread. The account may be absent from the registry, then it counts as empty.
ServiceAccess AccessTo(const Service& service);
/// The same by a name that stands in the table.
ServiceAccess AccessTo(std::string_view name);

/// Whether a service is on this machine, so that nothing leaves it.
bool IsOnThisMachine(const Service& service);

/// True when the user has set the address of the service, whichever it is.
bool HasAddressOfUser(const Service& service);

/// Names of the settings without which the service cannot be used ("url", "key", "app-id"); none
/// when it can be used now.
std::vector<std::string_view> MissingSettings(const Service& service);

/// "Can this service be used now?"
bool IsUsable(const Service& service);
