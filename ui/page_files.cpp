#include "ui/page_files.h"

#include <QBuffer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>

namespace {

constexpr char kPageScheme[] = "corvane";
constexpr QLatin1String kHost("planner");
constexpr QLatin1String kIndex("/index.html");

QByteArray TypeOf(const QString& path) {
  if (path.endsWith(QLatin1String(".html"))) return "text/html";
  if (path.endsWith(QLatin1String(".css"))) return "text/css";
  if (path.endsWith(QLatin1String(".js"))) return "text/javascript";
  return "application/octet-stream";
}

// What the page may fetch pictures from, as its security policy names it.
QString TileHosts() {
  QStringList hosts;
  for (const TileServer& server : TileServers())
    hosts.append(QStringLiteral("https://") + QUrl(server.address).host());
  return hosts.join(QLatin1Char(' '));
}

QString TileServersText() {
  QJsonArray rows;
  for (const TileServer& server : TileServers()) {
    rows.append(QJsonObject{{QStringLiteral("name"), server.name},
                            {QStringLiteral("url"), server.address},
                            {QStringLiteral("credit"), server.credit},
                            {QStringLiteral("minZoom"), server.minZoom},
                            {QStringLiteral("maxZoom"), server.maxZoom}});
  }
  return QString::fromUtf8(QJsonDocument(rows).toJson(QJsonDocument::Compact)).toHtmlEscaped();
}

QByteArray WithTileServers(const QByteArray& index) {
  QString text = QString::fromUtf8(index);
  text.replace(QLatin1String("@TILE_HOSTS@"), TileHosts());
  text.replace(QLatin1String("@TILE_SERVERS@"), TileServersText());
  return text.toUtf8();
}

}  // namespace

std::vector<TileServer> TileServers() {
  return {{QStringLiteral("OpenStreetMap"),
           QStringLiteral("https://tile.openstreetmap.org/{z}/{x}/{y}.png"),
           QStringLiteral("© OpenStreetMap contributors"), 0, 19}};
}

QUrl OwnPlannerPage() {
  return QUrl(QLatin1String(kPageScheme) + QStringLiteral("://") + kHost + kIndex);
}

void RegisterPageSchemes() {
  QWebEngineUrlScheme page(kPageScheme);
  page.setSyntax(QWebEngineUrlScheme::Syntax::Host);
  page.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::CorsEnabled);
  QWebEngineUrlScheme::registerScheme(page);
}

void PageFiles::requestStarted(QWebEngineUrlRequestJob* job) {
  const QUrl address = job->requestUrl();
  const QString path = address.path();
  QFile file(QStringLiteral(":/page") + path);
  const bool isOurs = address.host() == kHost && !path.contains(QLatin1String(".."));
  if (job->requestMethod() != "GET" || !isOurs || !file.open(QIODevice::ReadOnly)) {
    job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    return;
  }
  auto* const content = new QBuffer(job);
  content->setData(path == kIndex ? WithTileServers(file.readAll()) : file.readAll());
  job->reply(TypeOf(path), content);
}
