#include "ui/page_files.h"

#include <QBuffer>
#include <QFile>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>

#include "ui/text.h"

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

// Writes into the page what its security policy lets it fetch pictures from, and the layers.
QByteArray WithLayers(const QByteArray& index, const PageLayers& layers) {
  QStringList origins;
  for (const std::string& origin : layers.origins) origins.append(FromUtf8(origin));
  QString text = QString::fromUtf8(index);
  text.replace(QLatin1String("@TILE_HOSTS@"), origins.join(QLatin1Char(' ')).toHtmlEscaped());
  text.replace(QLatin1String("@TILE_SERVERS@"),
               FromUtf8(PageLayersJson(layers.layers)).toHtmlEscaped());
  return text.toUtf8();
}

}  // namespace

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
  content->setData(path == kIndex ? WithLayers(file.readAll(), layers) : file.readAll());
  job->reply(TypeOf(path), content);
}
