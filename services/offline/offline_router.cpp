#include "services/offline/offline_router.h"

#include <chrono>

#include "base/format_text.h"
#include "base/localized_text.h"
#include "base/status.h"
#include "base/text_ids.h"
#include "net/internet_exception.h"
#include "platform/folder.h"
#include "platform/output_file.h"
#include "platform/path_text.h"
#include "platform/scratch_folder.h"
#include "services/directions/route_options.h"
#include "services/directions/route_reply.h"
#include "services/offline/offline_places.h"
#include "services/offline/road_profile.h"
#include "services/request_text.h"
#include "services/service_table.h"

namespace {

/// A profile in a file, which the engine reads it from, gone with this.
class ProfileFile {
 public:
  explicit ProfileFile(const std::string& profile) {
    if (m_folder.Path().empty()) return;
    const WideString path = JoinedPath(m_folder.Path(), u"profile.xml");
    OutputFile file(path);
    file.Write(profile);
    if (file.Commit() == kStatusSuccess) m_path = PathBytes(path);
  }
  /// Empty when it could not be written.
  const std::string& Path() const { return m_path; }

 private:
  ScratchFolder m_folder;
  std::string m_path;
};

// The name of a stop for the user, with its position.
std::string Described(const CGpsNamedPoint& point) {
  const std::string position = LatLonText(point, ", ");
  return point.name.empty() ? position : point.name + " (" + position + ")";
}

// That no database holds a stop, and which extract would help: the one of the region or country of
// the nearest town, unless that is too far away to lie in the same one.
std::string DescribeMissingDatabase(const CGpsNamedPoint& point) {
  constexpr uint32_t kNearby = 100'000;  // metres
  const std::optional<OfflinePlace> town = OfflinePlaces().Nearest(point);
  if (!town || town->position.DistanceTo(point) > kNearby)
    return FormatText(kTextNoRoadsHold, Described(point));
  return FormatText(kTextNoRoadsHoldNear, Described(point), town->Label());
}

RoadPosition PositionOf(const CGpsCoordinate& point) { return {point.latitude, point.longitude}; }

void TakeWay(const std::vector<RoadPoint>& way, CRouteData& leg) {
  CGpsRouteStep* step = nullptr;
  const RoadPoint* stepStart = nullptr;
  const auto endStep = [&](const RoadPoint& end) {
    if (step)
      step->measure = MakeMeasure(RoundedUint32(end.metres - stepStart->metres),
                                  RoundedUint32(end.seconds - stepStart->seconds));
  };
  for (const RoadPoint& point : way) {
    AppendPoint(leg.shape.points, point.position.latitude, point.position.longitude);
    if (point.instruction.empty()) continue;
    endStep(point);
    step = &leg.steps.emplace_back();
    stepStart = &point;
    step->latitude = point.position.latitude;
    step->longitude = point.position.longitude;
    step->instruction = point.instruction;
  }
  if (way.empty()) return;
  endStep(way.back());
  leg.measure = MakeMeasure(RoundedUint32(way.back().metres), RoundedUint32(way.back().seconds));
  TakePathFromShape(leg);
}

// The engine calls the ends of a way by a word and a number, such as "Waypoint#1".
void NameStop(const CGpsNamedPoint& stop, std::string_view number, std::string& instruction) {
  const size_t mark = instruction.find(number);
  if (stop.name.empty() || mark == std::string::npos) return;
  const size_t blank = instruction.rfind(' ', mark);
  const size_t start = blank == std::string::npos ? 0 : blank + 1;
  instruction.replace(start, mark + number.size() - start, stop.name);
}

void NameEnds(const CGpsNamedPoint& from, const CGpsNamedPoint& to, CRouteData& leg) {
  if (leg.path.points.empty() || leg.steps.empty()) return;
  leg.path.points.front()->name = from.name;
  leg.path.points.back()->name = to.name;
  NameStop(from, "#1", leg.steps.front().instruction);
  NameStop(to, "#2", leg.steps.back().instruction);
}

std::string_view LanguageCode() {
  switch (CurrentLanguage()) {
    case Language::kGerman:
      return "de";
    case Language::kFrench:
      return "fr";
    case Language::kDutch:
      return "nl";
    case Language::kEnglish:
      break;
  }
  return "en";
}

}  // namespace

OfflineRouter::~OfflineRouter() {
  End();
  Stop();
}

void OfflineRouter::End() {
  NoteCancel();
  if (m_thread.joinable() && m_thread.get_id() != std::this_thread::get_id()) m_thread.join();
}

int32_t OfflineRouter::GetId() const { return provider::kOfflineRoads; }

void OfflineRouter::Calculate(std::unique_ptr<CGpsPointList> points, uint32_t travelMode,
                              const CRouteOptions& options) {
  const bool isWithinCompletion = m_thread.get_id() == std::this_thread::get_id();
  End();
  Begin();
  {
    const std::lock_guard lock(m_mutex);
    m_failureText.clear();
  }
  if (points->points.size() < 2) {
    Finish(kRoutePointCount);
    return;
  }
  if (isWithinCompletion) {  // on the thread that would have to be waited for
    Run(*points, travelMode, options);
    return;
  }
  {
    const std::lock_guard lock(m_mutex);
    m_isRunning = true;
  }
  m_thread = std::thread([this, travelMode, list = std::move(points), own = options.Clone()] {
    Run(*list, travelMode, *own);
    const std::lock_guard lock(m_mutex);
    m_isRunning = false;
    m_ended.notify_all();
  });
}

void OfflineRouter::Run(const CGpsPointList& points, uint32_t travelMode,
                        const CRouteOptions& options) {
  if (!RoadEngine()) {
    Finish(Fail(kRouteFailed, std::string(LoadTextUtf8(kTextRoadsNotInstalled))));
    return;
  }
  const std::vector<RoadDatabase> databases = ListRoadDatabases();
  RoadQuery query;
  query.profile = RoadProfile(travelMode, options);
  const ProfileFile profileFile(query.profile);
  query.profileFile = profileFile.Path();
  query.language = LanguageCode();
  query.quickest = options.mode != kShortest;
  const CGpsNamedPoint* from = nullptr;
  for (const auto& to : points.points) {
    if (from) {
      CRouteData leg = MakeLeg(travelMode, options);
      const uint32_t status = CalculateLeg(databases, query, *from, *to, leg);
      if (status != kRouteSuccess) {
        Finish(status);
        return;
      }
      GetLegs().push_back(std::move(leg));
    }
    from = to.get();
  }
  Finish(kRouteSuccess);
}

uint32_t OfflineRouter::CalculateLeg(const std::vector<RoadDatabase>& databases, RoadQuery& query,
                                     const CGpsNamedPoint& from, const CGpsNamedPoint& to,
                                     CRouteData& leg) {
  query.from = PositionOf(from);
  query.to = PositionOf(to);
  bool isBetweenRoads = false;
  for (const RoadDatabase& database : databases) {
    query.database = PathBytes(database.folder);
    std::vector<RoadPoint> way;
    switch (RoadEngine()->FindWay(query, CancelFlag(), way)) {
      case RoadResult::kFound:
        TakeWay(way, leg);
        NameEnds(from, to, leg);
        return kRouteSuccess;
      case RoadResult::kCancelled:
        return TransportStatus(kInternetCancelled);
      case RoadResult::kNotInstalled:
        return Fail(kRouteFailed, std::string(LoadTextUtf8(kTextRoadsNotInstalled)));
      case RoadResult::kNoWay:
        isBetweenRoads = true;
        break;
      case RoadResult::kNoRoadNearStart:
      case RoadResult::kNoRoadNearEnd:
      case RoadResult::kNoDatabase:
        break;
    }
  }
  if (isBetweenRoads) return Fail(kRouteNothingFound, {});
  return ExplainNoDatabase(databases, from, to);
}

// Either a point lies off all roads of an area that a database knows, or no database knows it.
uint32_t OfflineRouter::ExplainNoDatabase(const std::vector<RoadDatabase>& databases,
                                          const CGpsNamedPoint& from, const CGpsNamedPoint& to) {
  RoadQuery query;
  query.profile = RoadProfile(kPedestrian, CRouteOptions());
  const ProfileFile profileFile(query.profile);
  query.profileFile = profileFile.Path();
  query.language = LanguageCode();
  for (const CGpsNamedPoint* const point : {&from, &to}) {
    const RoadPosition position = PositionOf(*point);
    bool isHeld = false;
    bool hasRoad = false;
    for (const RoadDatabase& database : databases) {
      query.database = PathBytes(database.folder);
      isHeld = isHeld || (database.bounds && database.bounds->Holds(position));
      hasRoad = hasRoad || RoadEngine()->HasRoadNear(query, position);
    }
    if (hasRoad) continue;
    if (isHeld) return Fail(kRouteNotFound, FormatText(kTextNoRoadNear, Described(*point)));
    return Fail(kRouteNothingFound, DescribeMissingDatabase(*point));
  }
  // Each has roads nearby, in different databases or not for this vehicle.
  const bool isOneDatabase = databases.size() < 2;
  if (isOneDatabase) return Fail(kRouteNotFound, FormatText(kTextNoRoadNear, Described(from)));
  return Fail(kRouteNothingFound, FormatText(kTextNoRoadsHoldBoth, Described(from), Described(to)));
}

uint32_t OfflineRouter::Fail(uint32_t status, std::string text) {
  const std::lock_guard lock(m_mutex);
  m_failureText = std::move(text);
  return status;
}

uint32_t OfflineRouter::Wait(int32_t timeoutMs) {
  std::unique_lock lock(m_mutex);
  const auto isOver = [this] { return !m_isRunning; };
  if (timeoutMs < 0) {
    m_ended.wait(lock, isOver);
  } else if (!m_ended.wait_for(lock, std::chrono::milliseconds(timeoutMs), isOver)) {
    return kRouteTimedOut;
  }
  return Status();
}

std::string OfflineRouter::FailureText() const {
  const std::lock_guard lock(m_mutex);
  return m_failureText;
}

uint32_t OfflineRouter::BuildRequest(const CGpsPointList& /*chunk*/, uint32_t /*travelMode*/,
                                     const CRouteOptions& /*options*/, CHttpRequestSpec& /*spec*/) {
  return kRouteInvalidRequest;
}

uint32_t OfflineRouter::ParseResponse(std::string_view /*text*/, uint32_t /*travelMode*/,
                                      const CRouteOptions& /*options*/, Legs& /*legs*/) {
  return kRouteInvalidRequest;
}
