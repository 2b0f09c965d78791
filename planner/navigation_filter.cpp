#include "planner/navigation_filter.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"
#include "net/url.h"

namespace {

constexpr std::string_view kSignalScheme = "signal:";
constexpr std::string_view kScriptScheme = "javascript:";
constexpr std::string_view kAfterScheme = "://";
constexpr std::string_view kBlankPage = "about:blank";

// What a link of the page may open; everything else could reach files and programs.
constexpr std::string_view kOutsideSchemes[] = {"http", "https", "mailto", "geo", "tel"};

bool MayOpenOutside(std::string_view url) {
  const size_t colon = url.find(':');
  if (colon == std::string_view::npos) return false;
  const std::string scheme = ToLowerAscii(url.substr(0, colon));
  return std::find(std::begin(kOutsideSchemes), std::end(kOutsideSchemes), scheme) !=
         std::end(kOutsideSchemes);
}

// Browsers put a slash behind an address without a path.
bool IsPage(std::string_view url, std::string_view page) {
  if (url == page) return true;
  const size_t scheme = page.find(kAfterScheme);
  const bool hasPath =
      scheme == std::string_view::npos ||
      page.find_first_of("/?#", scheme + kAfterScheme.size()) != std::string_view::npos;
  return !hasPath && url.size() == page.size() + 1 && url.starts_with(page) && url.ends_with('/');
}

}  // namespace

NavigationDecision FilterNavigation(std::string_view url, std::string_view plannerPage) {
  if (url.starts_with(kSignalScheme)) {
    const std::string_view rest = url.substr(kSignalScheme.size());
    const size_t colon = rest.find(':');
    if (rest.substr(0, colon).empty()) return {Navigation::kDrop, {}, {}};
    const std::string_view payload =
        colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    return {Navigation::kSignal, std::string(rest.substr(0, colon)), UrlUnescape(payload)};
  }
  if (url == kBlankPage || url.starts_with(kScriptScheme) || IsPage(url, plannerPage))
    return {Navigation::kLetThrough, {}, {}};
  return {MayOpenOutside(url) ? Navigation::kOpenOutside : Navigation::kDrop, {}, {}};
}
