#include <QApplication>
#include <QTimer>

#include "base/text_ids.h"
#include "platform/debug_log.h"
#include "platform/open_link.h"
#include "ui/boxes.h"
#include "ui/main_window.h"
#include "ui/map_view.h"
#include "ui/notice_bar.h"
#include "ui/text.h"
#include "ui/workspace.h"

int32_t MainWindow::ShowBox(std::string_view text, uint32_t style) {
  return ShowMessageBox(this, FromUtf8(text), style);
}

int32_t MainWindow::ShowPageBox(std::string_view text, uint32_t style) {
  if (!m_pageBoxes.Allows()) {
    if (!m_notice->IsTold(NoticeSubject::kPage)) {
      m_notice->ShowNotice(NoticeSubject::kPage, Text(kTextPageBoxesEnd),
                           {{Text(kTextLoadMapAgain), [this] { m_map->Reload(); }}});
    }
    return AnswerOfClosing(style);
  }
  const int32_t answer = ShowBox(text, style);
  m_pageBoxes.BoxClosed();
  return answer;
}

int32_t MainWindow::ShowRepeatedBox(std::string_view text, uint32_t style, bool& forTheRest) {
  const RepeatedAnswer given = ::ShowRepeatedBox(this, FromUtf8(text), style);
  forTheRest = given.forTheRest;
  return given.answer;
}

void MainWindow::DispatchMessages() { QApplication::processEvents(); }

void MainWindow::ShowNormalTitle() { setWindowTitle(ProductTitle()); }

void MainWindow::ShowUpdateNotice(std::string_view text, std::string_view url) {
  m_notice->ShowNotice(NoticeSubject::kVersion, FromUtf8(text),
                       {{Text(kTextShowPage), [link = std::string(url)] {
                           if (link.starts_with("http")) OpenLink(link);
                         }}});
}

void MainWindow::DisableMap(std::string_view reason) {
  DebugLog("map: " + std::string(reason));
  m_map->GoDark();
}

void MainWindow::ReloadPage() { m_map->Reload(); }

void MainWindow::StartTimer(int32_t timer, int32_t milliseconds) {
  QTimer*& running = m_timers[timer];
  if (!running) {
    running = new QTimer(this);
    connect(running, &QTimer::timeout, this, [this, timer] { m_work->bridge->OnTimer(timer); });
  }
  running->start(milliseconds);
}

void MainWindow::StopTimer(int32_t timer) {
  const auto found = m_timers.find(timer);
  if (found != m_timers.end()) found->second->stop();
}

bool MainWindow::MayDownloadTo(const WideString& path) {
  const QString question = FilledText(kTextMayDownload, ToUtf8(FromPath(path)));
  return ShowPageBox(ToUtf8(question), kBoxYesNo | kBoxWarningIcon) == kAnswerYes;
}
