#include "ui/page_watch.h"

#include <QWebEnginePage>
#include <utility>

#include "ui/page_engine.h"

namespace {

constexpr int kLook = 1000;  // milliseconds
// Our own page draws a million points in far less.
constexpr int kLongestSilence = 20;  // looks

}  // namespace

PageWatch::PageWatch(QWebEnginePage& page, const PageEngine& engine, std::function<void()> silent)
    : m_page(page), m_engine(engine), m_silent(std::move(silent)) {
  m_timer.setInterval(kLook);
  QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Look(); });
}

void PageWatch::Start() {
  // A page that stands still under a debugger is no page that hangs.
  if (qEnvironmentVariableIsSet("QTWEBENGINE_REMOTE_DEBUGGING")) return;
  m_hasAnswered = std::make_shared<bool>(true);
  m_silence = 0;
  m_timer.start();
}

void PageWatch::Look() {
  const uint64_t prompt = m_engine.OpenPrompt();
  if (prompt != 0 && std::exchange(m_prompt, prompt) == prompt) return;
  m_silence = std::exchange(*m_hasAnswered, false) ? 0 : m_silence + 1;
  if (m_silence >= kLongestSilence) {
    Stop();
    m_silent();
    return;
  }
  m_page.runJavaScript(QStringLiteral("0"),
                       [answered = m_hasAnswered](const QVariant&) { *answered = true; });
}
