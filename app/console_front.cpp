#include "app/console_front.h"

#include <algorithm>

#include "app/console_text.h"
#include "app/list_description.h"
#include "base/format_text.h"
#include "base/text_ids.h"
#include "conversion/list_choice.h"
#include "platform/interruption.h"
#include "platform/terminal.h"

namespace {

// Whether the first letter of an answer is that of the word; ASCII suffices in our languages.
bool BeginsLike(const std::string& answer, std::string_view word) {
  return !answer.empty() && (answer[0] | 0x20) == (word[0] | 0x20);
}

}  // namespace

void ConsoleFront::ShowMessage(MessageIcon, uint32_t textId, const FailureReason& reason) {
  // What fails now fails because of the user, who knows.
  if (InterruptionScope::IsPending()) return;
  if (textId == kTextUnknownFormat && m_declined) return;
  const auto describe = textId == kTextCannotBeWritten ? DescribeFailure : DescribeReadFailure;
  m_message = std::string(LoadTextUtf8(textId)) + describe(reason, m_subject);
  if (textId == kTextUnknownFormat && !m_reportsUnknown) return;
  Complain(m_subject, m_message);
}

bool ConsoleFront::AskYesNo(MessageIcon, uint32_t textId) {
  if (m_options.quiet) return true;
  const std::string_view yes = LoadTextUtf8(kTextYes);
  const std::string_view no = LoadTextUtf8(kTextNo);
  const std::string question(LoadTextUtf8(textId));
  if (!IsInteractive()) {
    Complain(m_subject, fmt::format("{} {}", question, yes));
    return true;
  }
  for (;;) {
    WriteError(fmt::format("{}: {} [{}/{}] ", Printable(ShownPath(m_subject)), question, yes, no));
    std::string answer;
    if (!ReadInputLine(answer)) return false;
    if (answer.empty() || BeginsLike(answer, yes)) return true;
    if (BeginsLike(answer, no)) return false;
  }
}

std::vector<size_t> ConsoleFront::ChooseLists(const PointLists& lists) {
  std::vector<size_t> chosen = SelectLists(lists, m_options.lists);
  m_declined = chosen.empty();
  if (!m_declined && chosen.size() < lists.size() &&
      m_options.lists.which == ListChoice::Which::kDefault && !m_options.quiet) {
    TellWhatWasTaken(lists, chosen);
  }
  return chosen;
}

void ConsoleFront::TellWhatWasTaken(const PointLists& lists,
                                    const std::vector<size_t>& chosen) const {
  // Of a file with thousands of lists the first few will do.
  constexpr size_t kMostOthers = 8;
  std::string taken;
  std::string others;
  size_t otherCount = 0;
  for (size_t i = 0; i < lists.size(); ++i) {
    const bool isTaken = std::find(chosen.begin(), chosen.end(), i) != chosen.end();
    if (!isTaken && ++otherCount > kMostOthers) continue;
    std::string& text = isTaken ? taken : others;
    if (!text.empty()) text += ", ";
    text += DescribeList(*lists[i]);
  }
  if (otherCount > kMostOthers) others += fmt::format(", … (+{})", otherCount - kMostOthers);
  Complain(FormatText(kTextListsTaken, ShownPath(m_subject), taken, others));
}
