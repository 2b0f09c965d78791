#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QPointer>
#include <QString>
#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>

#include "planner/script_engine.h"
#include "ui/script_codec.h"

class QEventLoop;
class QUrl;
class QWebEnginePage;

/// The planner's script engine on a page of Qt WebEngine. What the page calls arrives as a prompt
/// that carries the secret of this load of the page; what is sent to the page goes with the answer
/// of the prompt it is in, or else on its own, in one order.
class PageEngine : public IScriptEngine {
 public:
  explicit PageEngine(QWebEnginePage& page) : m_page(page) {}
  ~PageEngine() override;

  /// The object that the page finds as `window.external`; null takes it away.
  void SetExternal(ScriptObjectPtr external) { m_external = std::move(external); }

  /// The page at this address is about to be loaded, and everything of the one before has gone. It
  /// alone, in its main frame, gets the object, from before its first script on.
  void BeginLoad(const QUrl& address);
  /// The page has gone: calls that wait for it end.
  void EndPage();

  /// Answers a prompt; false for one that did not come from the page's own main frame.
  bool AnswerPrompt(const QUrl& origin, const QString& message, const QString& request,
                    QString& reply);

  /// A number for the prompt in which the page waits for the program; 0 while it is in none.
  uint64_t OpenPrompt() const { return m_promptDepth > 0 ? m_promptCount : 0; }

  ScriptValue Call(std::string_view function, ScriptArguments arguments) override;
  void Send(std::string_view function, ScriptArguments arguments) override;
  void Offer(std::string_view function, ScriptArguments arguments) override;

 private:
  class PageFunction;

  void Enqueue(QJsonObject call);
  void EnqueueFunction(std::string_view function, ScriptArguments arguments, bool optional);
  void Deliver();
  void Acknowledge(double received);
  QJsonArray WaitingCalls() const;
  QJsonArray WriteValues(ScriptArguments arguments);
  ScriptFunctionPtr MakeFunction(uint32_t number);
  ScriptArray ReadValues(const QJsonValue& json);
  QJsonObject Execute(const QJsonObject& request);
  ScriptValue Dispatch(const QJsonObject& request);

  QWebEnginePage& m_page;
  ScriptObjectPtr m_external;
  ScriptObjectTable m_objects;
  QString m_origin;
  QString m_secret;
  QString m_entry;                  ///< where the page keeps what the program calls
  std::deque<QJsonObject> m_calls;  ///< that the page has not told to have received
  double m_lastCall = 0;
  int m_promptDepth = 0;
  uint64_t m_promptCount = 0;
  bool m_deliveryWaits = false;
  QPointer<QEventLoop> m_waitingFor;  ///< the innermost call that waits for its result
  /// Functions and work of an earlier load, or of an engine that has gone, find false here.
  std::shared_ptr<bool> m_isLoaded;
};
