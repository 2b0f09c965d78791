#pragma once

#include <QWebEnginePage>
#include <functional>

class PageEngine;

/// The web page of the map: lets it go only where its owner allows, and answers or refuses
/// everything else that it asks for.
class PlannerPage : public QWebEnginePage {
 public:
  PlannerPage(QWebEngineProfile& profile, QObject* parent);

  /// Answers the prompts of the bridge.
  PageEngine* engine = nullptr;
  /// Whether a navigation, or a new window, may go on. UTF-8.
  std::function<bool(std::string_view url)> mayNavigate;

 protected:
  bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
  bool javaScriptPrompt(const QUrl& origin, const QString& message, const QString& defaultValue,
                        QString* result) override;
  void javaScriptAlert(const QUrl& origin, const QString& message) override;
  bool javaScriptConfirm(const QUrl& origin, const QString& message) override;
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
                                int line, const QString& source) override;
  QStringList chooseFiles(FileSelectionMode mode, const QStringList& oldFiles,
                          const QStringList& types) override;

 private:
  void AskToNavigate(const QUrl& url) const;
};
