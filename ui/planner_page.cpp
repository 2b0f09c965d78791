#include "ui/planner_page.h"

#include <QWebEngineCertificateError>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineRegisterProtocolHandlerRequest>
#include <QWebEngineSettings>

#include "platform/debug_log.h"
#include "ui/page_engine.h"
#include "ui/text.h"

namespace {

void Restrict(QWebEngineSettings& settings) {
  for (const auto attribute :
       {QWebEngineSettings::LocalStorageEnabled, QWebEngineSettings::PluginsEnabled,
        QWebEngineSettings::JavascriptCanAccessClipboard,
        QWebEngineSettings::FullScreenSupportEnabled, QWebEngineSettings::ScreenCaptureEnabled,
        QWebEngineSettings::ErrorPageEnabled, QWebEngineSettings::PdfViewerEnabled,
        QWebEngineSettings::HyperlinkAuditingEnabled, QWebEngineSettings::NavigateOnDropEnabled,
        QWebEngineSettings::DnsPrefetchEnabled, QWebEngineSettings::LocalContentCanAccessFileUrls})
    settings.setAttribute(attribute, false);
  settings.setAttribute(QWebEngineSettings::WebRTCPublicInterfacesOnly, true);
  // So that they reach the filter, which drops them; the engine would hand some to the desktop.
  settings.setUnknownUrlSchemePolicy(QWebEngineSettings::AllowAllUnknownUrlSchemes);
}

}  // namespace

PlannerPage::PlannerPage(QWebEngineProfile& profile, QObject* parent)
    : QWebEnginePage(&profile, parent) {
  Restrict(*settings());
  connect(this, &QWebEnginePage::newWindowRequested, this,
          [this](QWebEngineNewWindowRequest& request) { AskToNavigate(request.requestedUrl()); });
  connect(this, &QWebEnginePage::featurePermissionRequested, this,
          [this](const QUrl& origin, Feature feature) {
            setFeaturePermission(origin, feature, PermissionDeniedByUser);
          });
  connect(this, &QWebEnginePage::fullScreenRequested, this,
          [](QWebEngineFullScreenRequest request) { request.reject(); });
  connect(this, &QWebEnginePage::registerProtocolHandlerRequested, this,
          [](QWebEngineRegisterProtocolHandlerRequest request) { request.reject(); });
  connect(this, &QWebEnginePage::certificateError, this,
          [](QWebEngineCertificateError error) { error.rejectCertificate(); });
}

void PlannerPage::AskToNavigate(const QUrl& url) const {
  if (mayNavigate) mayNavigate(url.toEncoded().toStdString());
}

bool PlannerPage::acceptNavigationRequest(const QUrl& url, NavigationType, bool) {
  return mayNavigate && mayNavigate(url.toEncoded().toStdString());
}

bool PlannerPage::javaScriptPrompt(const QUrl& origin, const QString& message,
                                   const QString& defaultValue, QString* result) {
  return engine && engine->AnswerPrompt(origin, message, defaultValue, *result);
}

void PlannerPage::javaScriptAlert(const QUrl&, const QString& message) {
  DebugLog("page: " + ToUtf8(message));
}

bool PlannerPage::javaScriptConfirm(const QUrl&, const QString&) { return false; }

void PlannerPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message,
                                           int line, const QString& source) {
  DebugLog("page: " + ToUtf8(message) + " (" + ToUtf8(source) + ":" + std::to_string(line) + ")");
}

QStringList PlannerPage::chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) {
  return {};
}
