#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "services/service_table.h"

/// To be called right before each request to a service, on the thread that sends it: counts the
/// request, and holds requests to public hosts a second apart, which is what those who run them ask
/// for. `url` is where the request goes.
void BeforeRequest(const Service& service, std::string_view url);

/// How often each service has been asked by this process, in the order of the first requests.
std::vector<std::pair<const Service*, uint64_t>> RequestsMade();
