// The road engine on top of libroutino. Its library keeps profiles, translations and the last error
// in variables of its own, so that everything here runs under one lock.

#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>

#include <routino.h>

#include "services/offline/road_engine.h"

namespace {

constexpr char kTranslations[] = "/usr/share/routino/translations.xml";
constexpr char kProfileName[] = "way";
constexpr double kDegreesPerRadian = 57.29577951308232;

struct CloseDatabase {
  void operator()(Routino_Database* database) const { Routino_UnloadDatabase(database); }
};
using Database = std::unique_ptr<Routino_Database, CloseDatabase>;

struct DeleteRoute {
  void operator()(Routino_Output* route) const { Routino_DeleteRoute(route); }
};
using Route = std::unique_ptr<Routino_Output, DeleteRoute>;

/// What the C library allocates and leaves to its caller.
struct FreeMemory {
  void operator()(Routino_Waypoint* waypoint) const { std::free(waypoint); }
};
using Waypoint = std::unique_ptr<Routino_Waypoint, FreeMemory>;

const std::atomic<bool>* cancellation = nullptr;

int GoesOn(double /*complete*/) { return cancellation == nullptr || !*cancellation ? 1 : 0; }

class RoutinoEngine final : public RoutingEngine {
 public:
  bool HasRoadNear(const RoadQuery& query, const RoadPosition& position) override {
    const std::lock_guard lock(m_mutex);
    return Prepare(query) == RoadResult::kFound && FindWaypoint(position) != nullptr;
  }

  RoadResult FindWay(const RoadQuery& query, const std::atomic<bool>& cancelled,
                     std::vector<RoadPoint>& way) override {
    const std::lock_guard lock(m_mutex);
    const RoadResult prepared = Prepare(query);
    if (prepared != RoadResult::kFound) return prepared;
    const Waypoint from = FindWaypoint(query.from);
    if (!from) return RoadResult::kNoRoadNearStart;
    const Waypoint to = FindWaypoint(query.to);
    if (!to) return RoadResult::kNoRoadNearEnd;

    Routino_Waypoint* waypoints[] = {from.get(), to.get()};
    const int options = ROUTINO_ROUTE_LIST_HTML_ALL | (query.quickest ? ROUTINO_ROUTE_QUICKEST : 0);
    cancellation = &cancelled;
    const Route route(Routino_CalculateRoute(m_database, m_profile, m_translation, waypoints,
                                             static_cast<int>(std::size(waypoints)), options,
                                             GoesOn));
    cancellation = nullptr;
    if (!route)
      return Routino_errno == ROUTINO_ERROR_PROGRESS_ABORTED ? RoadResult::kCancelled
                                                             : RoadResult::kNoWay;
    TakeRoute(*route, way);
    return RoadResult::kFound;
  }

  void CloseDatabase(const std::string& folder) override {
    const std::lock_guard lock(m_mutex);
    const auto found = m_databases.find(folder);
    if (found == m_databases.end()) return;
    if (m_database == found->second.get()) Forget();
    m_databases.erase(found);
  }

 private:
  Waypoint FindWaypoint(const RoadPosition& position) const {
    return Waypoint(
        Routino_FindWaypoint(m_database, m_profile, position.latitude, position.longitude));
  }

  void Forget() {
    m_database = nullptr;
    m_profileText.clear();
  }

  // Opens the database and has the profile checked against it, unless that was done for the query
  // before.
  RoadResult Prepare(const RoadQuery& query) {
    if (Routino_CheckAPIVersion() != ROUTINO_ERROR_NONE) return RoadResult::kNotInstalled;
    if (!PrepareLanguage(query.language)) return RoadResult::kNotInstalled;
    Database& database = m_databases[query.database];
    if (!database) database.reset(Routino_LoadDatabase(query.database.c_str(), nullptr));
    if (!database) {
      m_databases.erase(query.database);
      return RoadResult::kNoDatabase;
    }
    if (m_database == database.get() && m_profileText == query.profile) return RoadResult::kFound;
    Forget();
    if (!LoadProfile(query.profileFile)) return RoadResult::kNotInstalled;
    // A database that holds no road for the profile's vehicle.
    if (Routino_ValidateProfile(database.get(), m_profile) != ROUTINO_ERROR_NONE)
      return RoadResult::kNoWay;
    m_database = database.get();
    m_profileText = query.profile;
    return RoadResult::kFound;
  }

  bool PrepareLanguage(const std::string& language) {
    if (m_translation != nullptr && m_language == language) return true;
    if (!m_hasTranslations) {
      if (Routino_ParseXMLTranslations(kTranslations) != ROUTINO_ERROR_NONE) return false;
      m_hasTranslations = true;
    }
    m_translation = Routino_GetTranslation(language.c_str());
    if (m_translation == nullptr) m_translation = Routino_GetTranslation("");
    m_language = language;
    return m_translation != nullptr;
  }

  bool LoadProfile(const std::string& file) {
    if (m_hasProfile) Routino_FreeXMLProfiles();
    m_hasProfile = false;
    m_profile = nullptr;
    if (Routino_ParseXMLProfiles(file.c_str()) != ROUTINO_ERROR_NONE) return false;
    m_hasProfile = true;
    m_profile = Routino_GetProfile(kProfileName);
    return m_profile != nullptr;
  }

  static void TakeRoute(const Routino_Output& route, std::vector<RoadPoint>& way) {
    constexpr double kMetres = 1000.0;
    constexpr double kSecondsPerMinute = 60.0;  // minutes they are, whatever the header says
    for (const Routino_Output* node = &route; node != nullptr; node = node->next) {
      RoadPoint& point = way.emplace_back();
      point.position.latitude = static_cast<double>(node->lat) * kDegreesPerRadian;
      point.position.longitude = static_cast<double>(node->lon) * kDegreesPerRadian;
      point.metres = static_cast<double>(node->dist) * kMetres;
      point.seconds = static_cast<double>(node->time) * kSecondsPerMinute;
      if (node->desc1 != nullptr) point.instruction = node->desc1;
      // Where the way ends, the second part repeats the totals.
      if (node->desc2 != nullptr && node->next != nullptr)
        point.instruction.append(". ").append(node->desc2);
    }
  }

  std::mutex m_mutex;
  std::map<std::string, Database> m_databases;
  Routino_Database* m_database = nullptr;  ///< that the profile was checked against
  Routino_Profile* m_profile = nullptr;
  std::string m_profileText;
  bool m_hasProfile = false;
  Routino_Translation* m_translation = nullptr;
  std::string m_language;
  bool m_hasTranslations = false;
};

}  // namespace

extern "C" RoutingEngine* CorvaneRoadModule() {
  static auto* const engine = new RoutinoEngine;
  return engine;
}
