#include "services/request_log.h"

#include <algorithm>
#include <chrono>
#include <mutex>

#include "services/request_pace.h"

namespace {

constexpr std::chrono::seconds kGapOfPublicHosts{1};
constexpr std::string_view kPublicNominatim = "https://nominatim.openstreetmap.org";

// A host that others run for everybody, and its pace.
struct PublicHost {
  std::string_view address;
  RequestPace pace{kGapOfPublicHosts};
};

RequestPace* PaceFor(std::string_view url) {
  static PublicHost hosts[] = {{ServiceNamed("osrm").address},
                               {ServiceNamed("photon").address},
                               {ServiceNamed("geoplateforme").address},
                               {kPublicNominatim}};
  for (PublicHost& host : hosts) {
    if (url.starts_with(host.address)) return &host.pace;
  }
  return nullptr;
}

struct Counts {
  std::mutex mutex;
  std::vector<std::pair<const Service*, uint64_t>> byService;
};

Counts& AllCounts() {
  static Counts counts;
  return counts;
}

}  // namespace

void BeforeRequest(const Service& service, std::string_view url) {
  {
    Counts& counts = AllCounts();
    const std::lock_guard lock(counts.mutex);
    const auto found = std::ranges::find(counts.byService, &service,
                                         [](const auto& entry) { return entry.first; });
    if (found == counts.byService.end())
      counts.byService.emplace_back(&service, 1);
    else
      ++found->second;
  }
  if (RequestPace* const pace = PaceFor(url)) pace->Await();
}

std::vector<std::pair<const Service*, uint64_t>> RequestsMade() {
  Counts& counts = AllCounts();
  const std::lock_guard lock(counts.mutex);
  return counts.byService;
}
