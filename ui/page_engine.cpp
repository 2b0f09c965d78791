#include "ui/page_engine.h"

#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QTimer>
#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <algorithm>
#include <optional>
#include <utility>

#include "ui/text.h"

namespace {

// A page function that has not answered by then does not answer.
constexpr int kLongestCall = 30'000;  // milliseconds

constexpr char kScriptName[] = "bridge";

QString OriginOf(const QUrl& address) {
  QString origin = address.scheme() + QStringLiteral("://") + address.host();
  if (address.port() > 0) origin += QLatin1Char(':') + QString::number(address.port());
  return origin;
}

QString RandomName() {
  QString name;
  for (int i = 0; i < 4; ++i) name += QString::number(QRandomGenerator::system()->generate64(), 36);
  return name;
}

QString JsonText(const QJsonArray& array) {
  return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

QString JsonText(const QJsonObject& object) {
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

// A text as a literal of the script.
QString Literal(const QString& text) {
  QString literal = JsonText(QJsonArray{text});
  return literal.mid(1, literal.size() - 2);
}

QJsonArray Names(const std::vector<std::string_view>& names) {
  QJsonArray array;
  for (const std::string_view name : names) array.append(FromUtf8(name));
  return array;
}

// What script finds as the number of an error.
int32_t SignedNumber(uint32_t hresult) { return static_cast<int32_t>(hresult); }

QJsonObject Failure(const ScriptError& failure) {
  return {{QStringLiteral("error"), SignedNumber(failure.number)},
          {QStringLiteral("text"), FromUtf8(failure.what())}};
}

}  // namespace

/// A function of the page. Its result is not waited for: the page may be waiting for us.
class PageEngine::PageFunction : public ScriptFunction {
 public:
  PageFunction(PageEngine& engine, uint32_t number)
      : m_engine(engine), m_isLoaded(engine.m_isLoaded), m_number(number) {}
  ~PageFunction() override {
    if (*m_isLoaded) m_engine.Enqueue({{QStringLiteral("drop"), static_cast<double>(m_number)}});
  }
  PageFunction(const PageFunction&) = delete;
  PageFunction& operator=(const PageFunction&) = delete;

  ScriptValue Call(ScriptArguments arguments) override {
    if (!*m_isLoaded) throw ScriptError(kScriptFailed);
    m_engine.Enqueue({{QStringLiteral("callback"), static_cast<double>(m_number)},
                      {QStringLiteral("values"), m_engine.WriteValues(arguments)}});
    return {};
  }

 private:
  PageEngine& m_engine;
  const std::shared_ptr<bool> m_isLoaded;
  const uint32_t m_number;
};

PageEngine::~PageEngine() { EndPage(); }

void PageEngine::EndPage() {
  if (m_isLoaded) *m_isLoaded = false;
  m_calls.clear();
  m_objects.Clear();
  m_secret.clear();
  if (m_waitingFor) m_waitingFor->quit();
}

void PageEngine::BeginLoad(const QUrl& address) {
  EndPage();
  m_isLoaded = std::make_shared<bool>(true);
  m_origin = OriginOf(address);
  m_secret = RandomName();
  m_entry = QStringLiteral("program") + RandomName();
  m_lastCall = 0;
  m_deliveryWaits = false;

  QFile file(QStringLiteral(":/ui/bridge.js"));
  QString source = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  const auto fill = [&source](const char* mark, const QString& value) {
    source.replace(QLatin1String(mark), value);
  };
  fill("'@ORIGIN@'", Literal(m_origin));
  fill("@SECRET@", m_secret);
  fill("@ENTRY@", m_entry);
  fill("@UNKNOWN_NAME@", QString::number(SignedNumber(kScriptUnknownName)));
  fill("@FAILED@", QString::number(SignedNumber(kScriptFailed)));
  fill("@PROPERTIES@", JsonText(m_external ? Names(m_external->PropertyNames()) : QJsonArray()));
  fill("@METHODS@", JsonText(m_external ? Names(m_external->MethodNames()) : QJsonArray()));

  QWebEngineScript script;
  script.setName(QLatin1String(kScriptName));
  script.setSourceCode(source);
  script.setInjectionPoint(QWebEngineScript::DocumentCreation);
  script.setWorldId(QWebEngineScript::MainWorld);
  script.setRunsOnSubFrames(false);
  m_page.scripts().clear();
  m_page.scripts().insert(script);
}

bool PageEngine::AnswerPrompt(const QUrl& origin, const QString& message, const QString& request,
                              QString& reply) {
  if (m_secret.isEmpty() || message != m_secret || OriginOf(origin) != m_origin) return false;
  const QJsonObject json = QJsonDocument::fromJson(request.toUtf8()).object();
  Acknowledge(json[QStringLiteral("received")].toDouble());
  for (const QJsonValue number : json[QStringLiteral("released")].toArray())
    m_objects.Release(static_cast<uint32_t>(number.toDouble()));

  const std::shared_ptr<bool> isLoaded = m_isLoaded;
  ++m_promptDepth;
  ++m_promptCount;
  QJsonObject answer = Execute(json);
  --m_promptDepth;
  // What was called may have taken the page away.
  answer.insert(QStringLiteral("calls"), *isLoaded ? WaitingCalls() : QJsonArray());
  reply = JsonText(answer);
  return true;
}

QJsonObject PageEngine::Execute(const QJsonObject& request) {
  try {
    const ScriptValue value = Dispatch(request);
    return {{QStringLiteral("value"), WriteScriptValue(value, m_objects)}};
  } catch (const ScriptError& failure) {
    return Failure(failure);
  } catch (const std::exception& failure) {
    return Failure(ScriptError(kScriptFailed, failure.what()));
  }
}

ScriptValue PageEngine::Dispatch(const QJsonObject& request) {
  const auto number = static_cast<uint32_t>(request[QStringLiteral("object")].toDouble());
  const ScriptObjectPtr object = number == 0 ? m_external : m_objects.Find(number);
  if (!object) throw ScriptError(kScriptFailed);
  const QString action = request[QStringLiteral("action")].toString();
  const std::string name = ToUtf8(request[QStringLiteral("name")].toString());
  const ScriptArray values = ReadValues(request[QStringLiteral("values")]);
  if (action == QLatin1String("call")) return object->Invoke(name, values);
  if (action == QLatin1String("put")) {
    object->Put(name, values.empty() ? ScriptValue() : values.front());
    return {};
  }
  if (const std::optional<ScriptValue> value = object->Get(name)) return *value;
  throw ScriptError(kScriptUnknownName);
}

ScriptFunctionPtr PageEngine::MakeFunction(uint32_t number) {
  return std::make_shared<PageFunction>(*this, number);
}

ScriptArray PageEngine::ReadValues(const QJsonValue& json) {
  return ReadScriptValues(json, m_objects,
                          [this](uint32_t number) { return MakeFunction(number); });
}

QJsonArray PageEngine::WriteValues(ScriptArguments arguments) {
  QJsonArray values;
  for (const ScriptValue& value : arguments) values.append(WriteScriptValue(value, m_objects));
  return values;
}

void PageEngine::Send(std::string_view function, ScriptArguments arguments) {
  EnqueueFunction(function, arguments, /*optional=*/false);
}

void PageEngine::Offer(std::string_view function, ScriptArguments arguments) {
  EnqueueFunction(function, arguments, /*optional=*/true);
}

void PageEngine::EnqueueFunction(std::string_view function, ScriptArguments arguments,
                                 bool optional) {
  if (!m_isLoaded || !*m_isLoaded) throw ScriptError(kScriptNoPage);
  Enqueue({{QStringLiteral("name"), FromUtf8(function)},
           {QStringLiteral("values"), WriteValues(arguments)},
           {QStringLiteral("optional"), optional}});
}

void PageEngine::Enqueue(QJsonObject call) {
  call.insert(QStringLiteral("number"), ++m_lastCall);
  m_calls.push_back(std::move(call));
  if (m_promptDepth > 0 || std::exchange(m_deliveryWaits, true)) return;
  // Many calls in a row travel as one.
  QTimer::singleShot(0, &m_page, [this, isLoaded = m_isLoaded] {
    if (!*isLoaded) return;
    m_deliveryWaits = false;
    Deliver();
  });
}

void PageEngine::Deliver() {
  if (m_calls.empty()) return;
  const QString script =
      QStringLiteral("window[%1].send(%2)").arg(Literal(m_entry), JsonText(WaitingCalls()));
  m_page.runJavaScript(script, [this, isLoaded = m_isLoaded](const QVariant& received) {
    if (*isLoaded) Acknowledge(received.toDouble());
  });
}

void PageEngine::Acknowledge(double received) {
  while (!m_calls.empty() && m_calls.front()[QStringLiteral("number")].toDouble() <= received)
    m_calls.pop_front();
}

QJsonArray PageEngine::WaitingCalls() const {
  QJsonArray calls;
  for (const QJsonObject& call : m_calls) calls.append(call);
  return calls;
}

ScriptValue PageEngine::Call(std::string_view function, ScriptArguments arguments) {
  if (!m_isLoaded || !*m_isLoaded) throw ScriptError(kScriptNoPage);
  // Inside a prompt the page cannot run anything, and we would wait for ourselves.
  if (m_promptDepth > 0) throw ScriptError(kScriptFailed);

  const QString script = QStringLiteral("window[%1].call(%2, %3, %4)")
                             .arg(Literal(m_entry), JsonText(WaitingCalls()),
                                  Literal(FromUtf8(function)), JsonText(WriteValues(arguments)));
  // Outlives this call: an answer may come when nobody waits for it any more.
  struct Answer {
    QEventLoop loop;
    std::optional<QString> text;
  };
  const auto answer = std::make_shared<Answer>();
  m_page.runJavaScript(script, [answer](const QVariant& result) {
    answer->text = result.toString();
    answer->loop.quit();
  });
  QTimer::singleShot(kLongestCall, &answer->loop, &QEventLoop::quit);
  const QPointer<QEventLoop> outer = std::exchange(m_waitingFor, &answer->loop);
  const std::shared_ptr<bool> isLoaded = m_isLoaded;
  if (!answer->text) answer->loop.exec(QEventLoop::ExcludeUserInputEvents);
  if (!*isLoaded) {
    if (outer) outer->quit();
    throw ScriptError(kScriptNoPage);
  }
  m_waitingFor = outer;
  if (!answer->text) throw ScriptError(kScriptFailed);

  const QJsonObject reply = QJsonDocument::fromJson(answer->text->toUtf8()).object();
  if (reply.contains(QStringLiteral("error")))
    throw ScriptError(static_cast<uint32_t>(reply[QStringLiteral("error")].toInt()),
                      ToUtf8(reply[QStringLiteral("text")].toString()));
  return ReadScriptValue(reply[QStringLiteral("value")], m_objects,
                         [this](uint32_t number) { return MakeFunction(number); });
}
