#pragma once

#include <cstdint>
#include <stop_token>
#include <string>

#include "net/http_client.h"
#include "services/service_table.h"

/// How the requests to a service are made: our own services are told the product's name, the others
/// what they have always been told.
HttpOptions HttpOptionsFor(const Service& service);

/// Gets `url` from a service, with the referrer of its account, and waits, at most so many
/// milliseconds and until it is to stop. Returns 0, or 100 + the number of the transport's failure.
uint32_t AskService(const Service& service, const std::string& url, std::string& reply,
                    int32_t waitMs = kWaitForever, const std::stop_token& stop = {});
