#pragma once

#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>

class PageEngine;
class QWebEnginePage;

/// Notices that a page does not answer any more, because its script never ends. Only moments count
/// in which it should answer: not those in which it waits for the program, nor those in which the
/// window itself is held up.
class PageWatch {
 public:
  /// `silent` is called once for each `Start`, when the page has not answered for long. Both must
  /// outlive this.
  PageWatch(QWebEnginePage& page, const PageEngine& engine, std::function<void()> silent);

  void Start();
  void Stop() { m_timer.stop(); }

 private:
  void Look();

  QWebEnginePage& m_page;
  const PageEngine& m_engine;
  const std::function<void()> m_silent;
  QTimer m_timer;
  /// Whether the page has answered since the last look; answers of another load find another one.
  std::shared_ptr<bool> m_hasAnswered;
  uint64_t m_prompt = 0;  ///< in which the page was at the last look
  int m_silence = 0;      ///< looks in a row without an answer
};
