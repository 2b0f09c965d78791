#pragma once

#include <string>

#include "app/options.h"
#include "base/wide_string.h"
#include "conversion/conversion_front.h"

/// The console as the front of a conversion: messages go to standard error, questions to the
/// terminal, and where there is none the first answer is taken. No editor opens.
class ConsoleFront final : public ConversionFront {
 public:
  /// `options` must outlive the front.
  explicit ConsoleFront(const Options& options) : m_options(options) {}

  /// The file that messages are about from now on.
  void SetSubject(const WideString& path) {
    m_subject = path;
    m_declined = false;
    m_message.clear();
  }
  /// False to keep "Unknown file format." to oneself, for files of a folder that are no trips.
  void SetReportsUnknown(bool reports) { m_reportsUnknown = reports; }
  /// True when no reader has found the lists that the user asks for in the subject.
  bool Declined() const { return m_declined; }
  /// The last message about the subject, without its path.
  const std::string& Message() const { return m_message; }

  void ShowMessage(MessageIcon icon, uint32_t textId, const FailureReason& reason) override;
  bool HasEditor() const override { return false; }
  bool AskYesNo(MessageIcon icon, uint32_t textId) override;
  std::vector<size_t> ChooseLists(const PointLists& lists) override;
  void SetBusy(bool) override {}
  void ItineraryCleared() override {}
  void ItineraryLoaded() override {}

 private:
  void TellWhatWasTaken(const PointLists& lists, const std::vector<size_t>& chosen) const;

  const Options& m_options;
  WideString m_subject;
  bool m_reportsUnknown = true;
  bool m_declined = false;
  std::string m_message;
};
