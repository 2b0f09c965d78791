#include "services/service_request.h"

#include "base/product.h"
#include "base/text.h"
#include "services/reply.h"
#include "services/request_log.h"
#include "services/service_access.h"

namespace {

constexpr int32_t kFirstOfOurs = 100;

}  // namespace

HttpOptions HttpOptionsFor(const Service& service) {
  HttpOptions options;
  if (ServiceNamed(service.account).id >= kFirstOfOurs) options.userAgent = kProductName;
  return options;
}

uint32_t AskService(const Service& service, const std::string& url, std::string& reply,
                    int32_t waitMs, const std::stop_token& stop) {
  reply.clear();
  HttpOptions options = HttpOptionsFor(service);
  options.waitMs = waitMs;
  options.stop = stop;
  try {
    BeforeRequest(service, url);
    reply = HttpGet(Utf8ToWideLossy(url), AccessTo(service).referrer, {}, options);
    return kServiceSuccess;
  } catch (const CInternetException& failure) {
    return kServiceTransport + failure.code;
  }
}
