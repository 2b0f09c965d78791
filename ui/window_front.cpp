#include "ui/window_front.h"

#include <QFileInfo>

#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/reason_text.h"
#include "planner/window_parts.h"
#include "ui/boxes.h"
#include "ui/csv_layout_window.h"
#include "ui/file_dialogs.h"
#include "ui/list_chooser.h"
#include "ui/lookups.h"
#include "ui/text.h"

namespace {

uint32_t StyleOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kError:
      return kBoxErrorIcon;
    case MessageIcon::kWarning:
      return kBoxWarningIcon;
    case MessageIcon::kQuestion:
      return kBoxQuestionIcon;
  }
  return 0;
}

}  // namespace

WindowFront::WindowFront(QWidget& window, const CSettings& settings, ConversionContext& context,
                         FrontEvents events)
    : m_window(window), m_settings(settings), m_context(context), m_events(std::move(events)) {
  m_context.csvLayouts.ask = [this](CsvUse use, CCsvLayout& layout) {
    bool accepted = false;
    RunOnWindowThread([&] { accepted = AskLayout(use, layout); });
    return accepted;
  };
  m_context.progress = [this](const ConversionProgress& progress) {
    m_progress.done = progress.bytesDone;
    m_progress.inAll = progress.bytesInAll;
    return true;
  };
}

bool WindowFront::AskLayout(CsvUse use, CCsvLayout& layout) {
  const bool reads = use == CsvUse::kRead;
  return AskCsvLayout(&m_window, use, reads ? FromPath(m_subject) : QString(), layout);
}

void WindowFront::ShowMessage(MessageIcon icon, uint32_t textId, const FailureReason& reason) {
  QString text = Text(textId);
  const QString why =
      FromUtf8(textId == kTextCannotBeWritten ? DescribeFailure(reason, m_subject)
                                              : DescribeReadFailure(reason, m_subject))
          .trimmed();
  if (!why.isEmpty()) text += QStringLiteral("\n\n") + why;
  ShowMessageBox(&m_window, text, kBoxOk | StyleOf(icon));
}

bool WindowFront::AskYesNo(MessageIcon icon, uint32_t textId) {
  return ShowMessageBox(&m_window, Text(textId), kBoxYesNo | StyleOf(icon)) == kAnswerYes;
}

std::vector<size_t> WindowFront::ChooseLists(const PointLists& lists) {
  const QString name = QFileInfo(FromPath(m_subject)).fileName();
  return ChooseListsInWindow(&m_window, name, lists);
}

void WindowFront::Run(const std::function<void()>& work) {
  std::stop_source stop;
  AllowServices(m_settings, m_context);
  m_context.stop = stop.get_token();
  m_progress.done = 0;
  m_progress.inAll = 0;
  RunInBackground(&m_window, kTextPleaseWait, m_progress, stop, work);
}

std::optional<ChosenFile> WindowFront::AskOpenFile(const FileDialog& wanted) {
  std::optional<ChosenFile> chosen = ShowOpenDialog(&m_window, wanted, folder);
  if (chosen) m_subject = chosen->path;
  return chosen;
}

std::optional<ChosenFile> WindowFront::AskSaveFile(const FileDialog& wanted) {
  std::optional<ChosenFile> chosen = ShowSaveDialog(&m_window, wanted, folder);
  if (chosen) m_subject = chosen->path;
  return chosen;
}
