#include "ui/workspace.h"

#include "base/format_text.h"
#include "base/status.h"
#include "base/text_ids.h"
#include "planner/hand_off.h"
#include "planner/online_services.h"
#include "planner/whole_format_table.h"
#include "platform/open_link.h"
#include "services/links/link_reading.h"
#include "services/links/link_rows.h"
#include "settings/favorites.h"
#include "settings/settings.h"

namespace {

// What the window reads and writes. Companion programs that are not on this desktop are left out.
FormatTable WindowFormats() {
  FormatTable table = WholeFormatTable();
  AddLinkFunctions(table);
  ListCompanionRows(table);
  return table;
}

}  // namespace

Workspace::Workspace(CSettings& settings, const WorkspaceParts& parts)
    : m_posts([this] {
        QMetaObject::invokeMethod(
            &m_pump, [this] { m_posts.Pump(); }, Qt::QueuedConnection);
      }),
      front(parts.widget, settings, m_context, parts.events),
      driver(WindowFormats(), front, m_context),
      itineraryView(kListItinerary, PinKind::kItinerary, parts.stops, settings),
      resultsView(kListSearchResults, PinKind::kSearchResults, parts.results, settings),
      favoritesView(kListFavorites, PinKind::kFavorites, parts.favorites, settings),
      poisView(kListPois, PinKind::kPois, parts.pois, settings),
      services(std::make_unique<OnlineServices>(settings, m_posts)) {
  itineraryView.list = &driver.current;
  resultsView.list = &results;
  favoritesView.list = &favorites;
  poisView.list = &pois;
  itineraryView.progress = &parts.progress;
  itineraryView.statusField = &parts.status;
  itineraryView.SetCalculation(services->Directions(), &parts.window);
  itineraryView.later = [this](std::function<void()> work) { m_posts.Post(std::move(work)); };
  driver.checksExports = true;
  driver.linkReaders = MapLinkReaders();
  bridge = std::make_unique<PlannerBridge>(BridgeParts{
      parts.window,
      settings,
      *services,
      m_posts,
      {&itineraryView, &resultsView, &favoritesView, &poisView},
      [](const std::string& url) { OpenLink(url); },
      [&window = parts.window](int32_t target, const CGpsPoint& point) {
        const DeviceTarget* const device = FindDeviceTarget(target);
        if (!device || (IsTargetInstalled(target) && SendPointToTarget(target, point) == 0)) return;
        window.ShowBox(FormatText(kTextTargetNotInstalled, std::string(device->name)),
                       kBoxOk | kBoxWarningIcon);
      },
      [this](const CGpsPointArray&) { return StoreFavorites(); }});
}

Workspace::~Workspace() { Close(); }

void Workspace::Close() {
  bridge->Close();
  itineraryView.SetCalculation(nullptr, nullptr);
  m_posts.Close();
}

uint32_t Workspace::LoadFavorites() {
  const uint32_t status = ::LoadFavorites(storage::OpenUserStorage(), favorites);
  m_knowsFavorites = status == kStatusSuccess;
  favoritesView.Rebuild();
  return status;
}

void Workspace::SaveFavorites() { favoritesStored(StoreFavorites()); }

uint32_t Workspace::StoreFavorites() {
  // Favourites that could not be read at the start must not be replaced by fewer.
  if (!m_knowsFavorites) {
    CGpsWaypointList stored;
    const uint32_t status = ::LoadFavorites(storage::OpenUserStorage(), stored);
    if (status != kStatusSuccess) return status;
    m_knowsFavorites = true;
    favorites.TakePoints(stored);
    favorites.SortByName();
    favoritesView.Rebuild();
  }
  return ::SaveFavorites(storage::OpenUserStorage(), favorites);
}

void Workspace::ShowResults(const std::vector<CGpsNamedPoint>& places) {
  results.Clear();
  for (const CGpsNamedPoint& place : places) results.InsertAt(results.Count(), CGpsPoint(place));
  resultsView.Rebuild();
}

void Workspace::AddToItinerary(const CGpsPointArray& list, const std::vector<size_t>& rows) {
  std::vector<CGpsPoint> points;
  for (const size_t row : rows) {
    if (row < list.Count())
      points.emplace_back(static_cast<const CGpsNamedPoint&>(list.points[row]));
  }
  if (points.empty()) return;
  const int64_t selected = itineraryView.FirstSelectedRow();
  const size_t index =
      selected == kNoRow ? driver.current.Count() : static_cast<size_t>(selected) + 1;
  itineraryView.InsertPoints(index, std::move(points));
}

void Workspace::AddFavorites(const std::vector<size_t>& rows) {
  for (const size_t row : rows) {
    const CGpsPoint& stop = driver.current.At(row);
    favorites.InsertAt(favorites.Count(), CGpsPoint(static_cast<const CGpsNamedPoint&>(stop)));
  }
  favorites.SortByName();
  favoritesView.Rebuild();
  SaveFavorites();
}

void Workspace::ViewOnMap(const CPointListView& view, int64_t row) {
  if (!view.planner || row < 0) return;
  try {
    view.planner->ViewPushPin(view.pinListId, static_cast<int32_t>(row));
  } catch (const ScriptError&) {
    // A page that fails shows less; the list is as it is.
  }
}
