#include "services/links/link_reading.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/localized_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_frame.h"
#include "conversion/read_trip.h"
#include "markup/profile_file.h"
#include "services/links/google_link.h"
#include "services/links/here_link.h"
#include "services/links/link_text.h"
#include "services/links/mydrive_link.h"
#include "services/links/viamichelin_link.h"
#include "services/places/google.h"
#include "services/places/viamichelin.h"
#include "services/service_access.h"
#include "services/service_request.h"

namespace {

/// A web planner whose links are understood.
struct LinkKind {
  bool (*isHost)(std::string_view host);
  MapLink (*parse)(std::string_view link);
};

constexpr LinkKind kKinds[] = {
    {IsGoogleMapsHost, ParseGoogleLink},
    {IsHereHost, ParseHereLink},
    {IsViaMichelinHost, ParseViaMichelinLink},
    {IsMyDriveHost, ParseMyDriveLink},
};

const LinkKind* KindOf(std::string_view link) {
  const LinkPieces pieces = SplitLink(link);
  for (const LinkKind& kind : kKinds) {
    if (kind.isHost(pieces.host)) return &kind;
  }
  return nullptr;
}

// Appends a part of a link to the address of another host. What looks like a further address within
// it is escaped: it must not decide who is asked.
void AppendOwnPart(std::string& url, std::string_view part) {
  constexpr std::string_view kMark = "://";
  for (size_t mark = part.find(kMark); mark != std::string_view::npos; mark = part.find(kMark)) {
    url.append(part.substr(0, mark)).append("%3A//");
    part.remove_prefix(mark + kMark.size());
  }
  url.append(part);
}

// The stops of a map that its owner has saved, from the page script that the site has for it.
std::vector<LinkStop> FetchSavedMap(std::string_view link, ConversionContext& context) {
  if (context.lookups.MayFetch()) {
    const Service& site = ServiceNamed("google-site");
    const LinkPieces pieces = SplitLink(link);
    std::string url = AccessTo(site).url;
    AppendOwnPart(url, pieces.path);
    AppendOwnPart(url.append("?"), pieces.query);
    url.append("&output=js");
    std::string script;
    if (AskService(site, url, script) == kServiceSuccess) return ParseSavedMap(script);
  }
  context.Note(ConversionNote::kPageNotFetched);
  return {};
}

// What a service says to a question that only it can be asked, once in a run.
template <typename ReadReply>
std::optional<CGpsCoordinate> AskOnce(const std::string& question, const Service& service,
                                      const std::string& url, ReadReply readReply,
                                      Lookups& lookups) {
  if (const auto kept = lookups.answers->Find(question)) return kept->position;
  LookupAnswer answer;
  std::string reply;
  PlaceList places;
  if (AskService(service, url, reply) == kServiceSuccess &&
      readReply(reply, places) == kServiceSuccess) {
    answer.position = places.front();
  }
  lookups.answers->Keep(question, answer);
  return answer.position;
}

// The place that ViaMichelin has under the id in its links.
std::optional<CGpsCoordinate> FindById(const std::string& placeId, Lookups& lookups) {
  const Service& service = ServiceNamed("viamichelin");
  const auto readReply = [](std::string_view reply, PlaceList& places) {
    return ReadViaMichelinPlaces(reply, places);
  };
  return AskOnce("viamichelin id " + placeId, service,
                 ViaMichelinPlaceUrl(AccessTo(service), placeId), readReply, lookups);
}

// Google is asked in the language of the page that the link opens.
std::optional<CGpsCoordinate> FindInLanguage(const std::string& address,
                                             const std::string& language, Lookups& lookups) {
  const Service& service = ServiceNamed("google");
  ServiceAccess access = AccessTo(service);
  access.language = language;
  return AskOnce("google " + language + " " + address, service, GoogleGeocodingUrl(access, address),
                 ReadGooglePlaces, lookups);
}

// The services of the links themselves can tell more, but are asked only where they are the finder
// in use: nobody else has been chosen to hear of the user's stops.
std::optional<CGpsCoordinate> Find(const LinkStop& stop, const std::string& language,
                                   Lookups& lookups) {
  const bool hasId = !stop.placeId.empty();
  if (hasId || !language.empty()) {
    const std::unique_ptr<CGeocoder> finder = lookups.makeFinder();
    const int32_t id = finder ? finder->GetId() : kNoProviderId;
    if (hasId && id == provider::kViaMichelin) {
      if (auto place = FindById(stop.placeId, lookups)) return place;
    }
    if (!language.empty() && id == provider::kGoogle)
      return FindInLanguage(stop.name, language, lookups);
  }
  return stop.name.empty() ? std::nullopt : lookups.FindPlace(stop.name);
}

std::optional<CGpsCoordinate> LookUp(const LinkStop& stop, const std::string& language,
                                     ConversionContext& context) {
  if (!context.lookups.HasFinder()) {
    context.Note(ConversionNote::kPlaceNotAsked);
    return std::nullopt;
  }
  context.Note(ConversionNote::kStopLookedUp);
  std::optional<CGpsCoordinate> place = Find(stop, language, context.lookups);
  if (!place) context.Note(ConversionNote::kStopNotFound);
  return place;
}

void AddStop(const LinkStop& stop, const std::string& language, CGpsRoute& route,
             ConversionContext& context) {
  const auto position = stop.position ? stop.position : LookUp(stop, language, context);
  if (!position) return;
  CGpsPoint point;
  point.latitude = position->latitude;
  point.longitude = position->longitude;
  point.name = stop.name;
  point.comment = stop.comment;
  route.points.push_back(std::move(point));
}

uint32_t TakeLink(const LinkKind& kind, std::string_view link, PointLists& lists,
                  ConversionContext& context) {
  MapLink map = kind.parse(link);
  if (map.isSavedMap) {
    for (LinkStop& stop : FetchSavedMap(link, context)) map.stops.push_back(std::move(stop));
  }
  auto route = std::make_unique<CGpsRoute>();
  for (const LinkStop& stop : map.stops) AddStop(stop, map.language, *route, context);
  if (route->points.empty()) return kStatusFailure;
  lists.push_back(std::move(route));
  return kStatusSuccess;
}

// Text that somebody may have meant otherwise is no link unless there is something in it.
template <size_t kind>
bool AcceptsLink(const WideString& text) {
  const std::string link = WideToUtf8Lossy(text);
  if (!kKinds[kind].isHost(SplitLink(link).host)) return false;
  const MapLink map = kKinds[kind].parse(link);
  return map.isSavedMap || !map.stops.empty();
}

// There is no file that an itinerary out of a link could be named after.
void NameLists(PointLists& lists) {
  for (const auto& list : lists) list->name = LoadTextUtf8(kTextItinerary);
}

template <size_t kind>
uint32_t ReadLink(const WideString& link, PointLists& lists, bool) {
  ContextInPlace context;
  const uint32_t status = TakeLink(kKinds[kind], WideToUtf8Lossy(link), lists, context);
  NameLists(lists);
  return status;
}

template <size_t kind>
LinkReader ReaderOf() {
  return {AcceptsLink<kind>, {u"url", 0, ReadLink<kind>, nullptr, 0}};
}

}  // namespace

uint32_t ParseMapLink(std::string_view link, PointLists& lists, ConversionContext& context) {
  if (const LinkKind* const kind = KindOf(link)) return TakeLink(*kind, link, lists, context);
  if (IsShortGoogleLink(link)) context.failure.adviceTextId = kTextShortLink;
  return kStatusFailure;
}

uint32_t ParseUrlFile(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  const ProfileFile file(bytes, ProfileText::kUtf8OrNarrow);
  return ParseMapLink(file.Section("InternetShortcut").GetText("URL", ""), lists, context);
}

uint32_t ReadUrlFile(const WideString& path, PointLists& lists, bool silent) {
  if (!IsWebAddress(path)) return ReadFileOf<ParseUrlFile>(path, lists, silent);
  ContextInPlace context;
  const uint32_t status = ParseMapLink(WideToUtf8Lossy(path), lists, context);
  NameLists(lists);
  return status;
}

std::vector<LinkReader> MapLinkReaders() {
  return {ReaderOf<0>(), ReaderOf<1>(), ReaderOf<2>(), ReaderOf<3>()};
}
