#include "services/request_log.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <string>

#include "base/text.h"
#include "services/request_pace.h"

namespace {

constexpr std::chrono::seconds kGapOfPublicHosts{1};
constexpr std::string_view kPublicNominatim = "https://nominatim.openstreetmap.org";

// The host of an address, which has a scheme; in small letters.
std::string HostOf(std::string_view url) {
  const size_t start = url.find("://");
  if (start != std::string_view::npos) url.remove_prefix(start + 3);
  return ToLowerAscii(url.substr(0, url.find_first_of(":/?#")));
}

// A host that others run for everybody, and its pace.
struct PublicHost {
  explicit PublicHost(std::string_view address) : name(HostOf(address)) {}

  const std::string name;
  RequestPace pace{kGapOfPublicHosts};
};

RequestPace* PaceFor(std::string_view url) {
  static PublicHost hosts[] = {
      PublicHost(ServiceNamed("osrm").address), PublicHost(ServiceNamed("photon").address),
      PublicHost(ServiceNamed("geoplateforme").address), PublicHost(kPublicNominatim)};
  const std::string host = HostOf(url);
  for (PublicHost& known : hosts) {
    if (host == known.name) return &known.pace;
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
