#include "planner/planner_bridge.h"

#include <exception>

#include <fmt/format.h>

#include "base/format_text.h"
#include "base/text_ids.h"
#include "markup/json.h"
#include "planner/navigation_filter.h"
#include "planner/network_report.h"
#include "planner/start_json.h"
#include "platform/debug_log.h"

namespace {

constexpr double kVersion = 1.21;
constexpr std::string_view kReadySignal = "ready";
constexpr char kErrorMark = 'I';  // error texts of the page begin with it

constexpr int32_t kReloadTimer = 1;
constexpr int32_t kReloadDelay = 100;  // milliseconds

// The site's software, as the page tells it.
struct SiteSoftware {
  double version = 0.0;
  std::string url;
};

// Throws CJsonException for a text that is no object. A site that tells nothing has nothing newer.
SiteSoftware ReadSoftware(const std::string& text) {
  CJsonDocument document;
  if (const int error = document.Parse(text)) throw CJsonException(error, "");
  SiteSoftware software;
  const CJsonObject& object = document.AsObject();
  const CJsonValue* const version = object.FindPath("software/version");
  const CJsonValue* const url = object.FindPath("software/url");
  if (version && version->type == kJsonNumber) software.version = version->AsNumber();
  if (url && url->type == kJsonString) software.url = url->AsString();
  return software;
}

}  // namespace

PlannerBridge::PlannerBridge(BridgeParts parts) : m_parts(std::move(parts)) {
  const ExternalParts external{m_lists,
                               m_parts.settings,
                               m_parts.window,
                               m_parts.services,
                               m_parts.posts,
                               m_parts.sendPoint,
                               [this] { m_parts.lists[kListItinerary]->ShowSettings(); },
                               m_parts.storeFavorites};
  m_external = std::make_shared<PlannerExternal>(external);
}

PlannerBridge::~PlannerBridge() { Close(); }

void PlannerBridge::SetEngine(IScriptEngine* engine) {
  DisconnectLists();
  m_script = CPlannerScript(engine);
}

void PlannerBridge::Close() {
  if (m_closed) return;
  m_closed = true;
  *m_isThere = false;
  m_external->Close();
  m_script.Detach();
  DisconnectLists();
  for (CPointListView* const view : m_parts.lists) view->Close();
}

void PlannerBridge::CallPage(const std::function<void(CPlannerScript&)>& call) {
  try {
    call(m_script);
  } catch (const std::exception& failure) {
    DebugLog(std::string("page: ") + failure.what());
  }
}

void PlannerBridge::ConnectLists() {
  for (CPointListView* const view : m_parts.lists) {
    m_lists->Add(*view);
    view->planner = &m_script;
  }
}

void PlannerBridge::DisconnectLists() {
  m_lists->Clear();
  for (CPointListView* const view : m_parts.lists) view->planner = nullptr;
}

bool PlannerBridge::OnNavigate(std::string_view url) {
  const NavigationDecision decision = FilterNavigation(url, m_plannerPage);
  switch (decision.action) {
    case Navigation::kLetThrough:
      return true;
    case Navigation::kDrop:
      return false;
    case Navigation::kOpenOutside:
      m_parts.openOutside(std::string(url));
      return false;
    case Navigation::kSignal:
      break;
  }
  if (decision.signal == kReadySignal) {
    // The navigation has to end before the page can be called.
    m_parts.posts.Post([this, isThere = m_isThere, text = decision.payload] {
      if (*isThere) OnReady(text);
    });
  }
  return false;
}

void PlannerBridge::OnNavigationError(uint32_t hresult) {
  if (m_closed) return;
  if (ReportNavigationError(m_parts.window, hresult) != kAnswerRetry || m_closed) return;
  m_parts.window.StartTimer(kReloadTimer, kReloadDelay);
}

void PlannerBridge::OnTimer(int32_t timer) {
  if (timer != kReloadTimer || m_closed) return;
  m_parts.window.StopTimer(kReloadTimer);
  m_parts.window.ReloadPage();
}

void PlannerBridge::DisableMap(std::string_view reason) {
  DisconnectLists();
  m_parts.window.DisableMap(reason);
}

void PlannerBridge::OnReady(const std::string& text) {
  if (m_closed) return;
  if (text.starts_with(kErrorMark)) {
    DisableMap(text);
    return;
  }
  SiteSoftware software;
  try {
    software = ReadSoftware(text);
  } catch (const CJsonException&) {
    DisableMap(text);
    return;
  }
  ConnectLists();
  for (const CPointListView* const view : m_parts.lists)
    CallPage([view](CPlannerScript& page) { page.NewPinList(view->pinListId); });
  TakeMaps();
  TakeProviders();
  const std::optional<UserCountry> country = m_parts.services.FindCountry();
  const std::string json = StartJson(m_parts.settings, m_maps, country);
  CallPage([&json](CPlannerScript& page) { page.InitMap(json); });
  AnnounceVersion(software.version, software.url);
  ShowLists();
}

void PlannerBridge::TakeMaps() {
  m_maps.clear();
  const bool known = LoadMaps(storage::OpenUserStorage(), m_maps) == 0;
  CallPage([this](CPlannerScript& page) { m_pageMaps = ReadPageMaps(page.GetMaps()); });
  // Maps that could not be read must not be replaced by fewer.
  if (MergePageMaps(m_pageMaps, m_maps) && known) SaveMaps(storage::OpenUserStorage(), m_maps);
}

void PlannerBridge::TakeProviders() {
  CallPage([this](CPlannerScript& page) { m_parts.services.UpdateProviders(page.GetProviders()); });
}

void PlannerBridge::AnnounceVersion(double version, const std::string& url) {
  if (version <= kVersion) {
    m_parts.window.ShowNormalTitle();
    return;
  }
  m_parts.window.ShowUpdateNotice(FormatText(kTextNewVersion, fmt::format("{:.2f}", version), url),
                                  url);
  CallPage([](CPlannerScript& page) { page.ShowUpdateWindow(); });
}

void PlannerBridge::ShowLists() {
  bool hasPoints = false;
  for (CPointListView* const view : m_parts.lists) {
    if (!view->list || view->list->points.empty()) continue;
    hasPoints = true;
    view->ShowAllPins();
  }
  if (!hasPoints) return;
  CallPage([](CPlannerScript& page) { page.AutoViewMap(); });
  m_parts.lists[kListItinerary]->UpdateTotals();
}

void PlannerBridge::SettingsChanged() {
  if (m_closed) return;
  m_parts.lists[kListItinerary]->ShowSettings();
  CallPage([](CPlannerScript& page) { page.SettingsChanged(); });
}
