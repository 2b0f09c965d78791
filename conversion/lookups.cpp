#include "conversion/lookups.h"

#include <bit>
#include <cstdint>
#include <utility>

#include <fmt/format.h>

#include "base/status.h"

namespace {

constexpr size_t kThreeLetters = 3;

// The kept answer, or what `ask` makes of the question.
template <typename Ask>
LookupAnswer AskOnce(LookupCache& answers, const std::string& question, Ask ask) {
  if (const auto kept = answers.Find(question)) return *kept;
  LookupAnswer answer;
  ask(answer);
  answers.Keep(question, answer);
  return answer;
}

// The best that a geocoder, which may be none, finds.
std::optional<CGpsCoordinate> BestOf(const std::unique_ptr<CGeocoder>& geocoder,
                                     const std::string& text) {
  if (!geocoder || geocoder->Search(text) != kServiceSuccess || geocoder->GetResults().empty())
    return std::nullopt;
  return geocoder->GetResults().front();
}

// Tells apart any two positions that are not the same number.
std::string PositionKey(const CGpsCoordinate& position) {
  return fmt::format("{:x} {:x}", std::bit_cast<uint64_t>(position.latitude),
                     std::bit_cast<uint64_t>(position.longitude));
}

}  // namespace

void Lookups::Prepare() {
  if (const auto fillIn = std::exchange(prepare, {})) fillIn(*this);
}

std::optional<CGpsCoordinate> Lookups::FindAddress(const std::string& address) {
  const auto ask = [&](LookupAnswer& answer) {
    answer.position = BestOf(makeGeocoder(kProviderGoogle), address);
  };
  return AskOnce(*answers, "address " + address, ask).position;
}

std::optional<CGpsCoordinate> Lookups::FindPlace(const std::string& text) {
  const auto ask = [&](LookupAnswer& answer) { answer.position = BestOf(makeFinder(), text); };
  return AskOnce(*answers, "place " + text, ask).position;
}

std::string Lookups::CountryAt(const CGpsCoordinate& position) {
  Prepare();
  if (isOffline || !countries) return {};
  const auto ask = [&](LookupAnswer& answer) {
    std::string code;
    if (countries->GetCountryCode(position.latitude, position.longitude, code) == kStatusSuccess)
      answer.text = ThreeLetters(code);
  };
  return AskOnce(*answers, "country at " + PositionKey(position), ask).text;
}

std::string Lookups::ThreeLetters(const std::string& countryCode) {
  const auto ask = [&](LookupAnswer& answer) {
    CCountryInfo info;
    if (countries->GetCountryInfo(countryCode, info) == kStatusSuccess &&
        info.isoAlpha3.size() == kThreeLetters)
      answer.text = info.isoAlpha3;
  };
  return AskOnce(*answers, "country " + countryCode, ask).text;
}
