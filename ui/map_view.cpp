#include "ui/map_view.h"

#include <QLabel>
#include <QPushButton>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <QWebEngineCookieStore>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineView>
#include <algorithm>

#include "base/product.h"
#include "base/text_ids.h"
#include "planner/external.h"
#include "planner/planner_bridge.h"
#include "planner/tile_layers.h"
#include "platform/end_process.h"
#include "ui/page_engine.h"
#include "ui/page_files.h"
#include "ui/page_watch.h"
#include "ui/planner_page.h"
#include "ui/text.h"

/// Lets our own page ask for map tiles and nothing else; another page may ask the web.
class MapRequests : public QWebEngineUrlRequestInterceptor {
 public:
  bool isOwnPage = true;
  /// The servers of tiles that the user allows.
  std::vector<std::string> origins;

  void interceptRequest(QWebEngineUrlRequestInfo& request) override {
    const QUrl address = request.requestUrl();
    const QString scheme = address.scheme();
    const bool isInside = scheme == OwnPlannerPage().scheme() || scheme == QLatin1String("data") ||
                          scheme == QLatin1String("blob") || scheme == QLatin1String("signal");
    if (isInside || (!isOwnPage && IsWeb(scheme))) return;
    if (!isOwnPage || !IsTile(address)) {
      request.block(true);
      return;
    }
    // Tile servers want to know who asks, and the engine tells them nothing of a page with a scheme
    // of its own. The page's referrer policy must allow it: otherwise the request is cancelled.
    request.setHttpHeader("Referer", QByteArray::fromStdString(std::string(kProductSite)));
  }

 private:
  static bool IsWeb(const QString& scheme) {
    return scheme == QLatin1String("http") || scheme == QLatin1String("https");
  }
  bool IsTile(const QUrl& address) const {
    const QUrl origin = address.adjusted(QUrl::RemoveUserInfo | QUrl::RemovePath |
                                         QUrl::RemoveQuery | QUrl::RemoveFragment);
    return std::ranges::find(origins, ToUtf8(origin.toString())) != origins.end();
  }
};

namespace {

constexpr int kMargin = 16;

// Keeps nothing on disk, and takes nothing from anybody.
std::unique_ptr<QWebEngineProfile> MakeProfile(PageFiles& files, MapRequests& requests) {
  auto profile = std::make_unique<QWebEngineProfile>();
  profile->setHttpUserAgent(FromUtf8(kCreatorTag));
  profile->setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
  profile->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
  profile->cookieStore()->setCookieFilter(
      [](const QWebEngineCookieStore::FilterRequest&) { return false; });
  profile->setSpellCheckEnabled(false);
  profile->installUrlSchemeHandler(OwnPlannerPage().scheme().toLatin1(), &files);
  profile->setUrlRequestInterceptor(&requests);
  QObject::connect(profile.get(), &QWebEngineProfile::downloadRequested, profile.get(),
                   [](QWebEngineDownloadRequest* download) { download->cancel(); });
  return profile;
}

QWidget* MakeDarkGround(QLabel& text, const std::function<void()>& reload) {
  auto* const ground = new QWidget;
  ground->setObjectName(QStringLiteral("darkMap"));
  ground->setAutoFillBackground(true);
  text.setAlignment(Qt::AlignCenter);
  text.setWordWrap(true);
  auto* const button = new QPushButton(Text(kTextLoadMapAgain));
  QObject::connect(button, &QPushButton::clicked, ground, reload);
  auto* const layout = new QVBoxLayout(ground);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kMargin);
  layout->addStretch();
  layout->addWidget(&text);
  layout->addWidget(button, 0, Qt::AlignCenter);
  layout->addStretch();
  return ground;
}

}  // namespace

MapView::MapView(QWidget* parent)
    : QWidget(parent),
      m_files(std::make_unique<PageFiles>()),
      m_requests(std::make_unique<MapRequests>()),
      m_layout(new QStackedLayout(this)),
      m_view(new QWebEngineView),
      m_darkText(new QLabel) {
  m_profile = MakeProfile(*m_files, *m_requests);
  m_page = std::make_unique<PlannerPage>(*m_profile, nullptr);
  m_engine = std::make_unique<PageEngine>(*m_page);
  m_page->engine = m_engine.get();
  m_watch = std::make_unique<PageWatch>(*m_page, *m_engine, [this] { PageIsSilent(); });
  m_view->setPage(m_page.get());
  m_view->setContextMenuPolicy(Qt::NoContextMenu);
  m_view->setAcceptDrops(false);
  m_view->setAccessibleName(Text(kTextMapLabel));
  m_dark = MakeDarkGround(*m_darkText, [this] { Reload(); });
  m_layout->addWidget(m_view);
  m_layout->addWidget(m_dark);
  setMinimumSize(240, 200);
  connect(m_page.get(), &QWebEnginePage::renderProcessTerminated, this, [this] { PageEnded(); });
}

MapView::~MapView() {
  Close();
  // The page must go before its profile, and the view before its page.
  delete m_view;
  m_page->engine = nullptr;
}

void MapView::SetBridge(PlannerBridge& bridge) {
  m_bridge = &bridge;
  m_page->mayNavigate = [this](std::string_view url) {
    return m_bridge && m_bridge->OnNavigate(url);
  };
  m_engine->SetExternal(bridge.External());
}

void MapView::Load(const QUrl& address) {
  if (!m_bridge) return;
  m_address = address.isEmpty() ? OwnPlannerPage() : address;
  m_requests->isOwnPage = m_address == OwnPlannerPage();
  m_bridge->SetPlannerPage(m_address.toEncoded().toStdString());
  Reload();
}

void MapView::Reload() {
  if (!m_bridge) return;
  m_files->layers = LoadPageLayers(storage::OpenUserStorage());
  m_requests->origins = m_files->layers.origins;
  m_bridge->SetEngine(m_engine.get());
  m_engine->BeginLoad(m_address);
  m_layout->setCurrentWidget(m_view);
  m_darkText->setText(Text(kTextMapEnded));
  m_page->load(m_address);
  m_watch->Start();
}

// The page goes the way of one that crashes: its process would go on for ever.
void MapView::PageIsSilent() {
  m_darkText->setText(Text(kTextMapDoesNotAnswer));
  if (!EndProcess(m_page->renderProcessPid())) PageEnded();
}

void MapView::PageEnded() {
  if (m_bridge) m_bridge->SetEngine(nullptr);
  m_engine->EndPage();
  GoDark();
}

void MapView::GoDark() {
  m_watch->Stop();
  m_layout->setCurrentWidget(m_dark);
}

QString MapView::DarkText() const { return m_darkText->text(); }

bool MapView::IsDark() const { return m_layout->currentWidget() == m_dark; }

void MapView::Close() {
  m_watch->Stop();
  m_engine->EndPage();
  m_engine->SetExternal(nullptr);
  m_bridge = nullptr;
}
