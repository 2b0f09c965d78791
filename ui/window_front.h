#pragma once

#include <functional>
#include <stop_token>

#include "conversion/conversion_context.h"
#include "conversion/conversion_front.h"
#include "settings/csv_layout.h"
#include "ui/background_work.h"

class CSettings;
class QWidget;

/// What a conversion changes in the window.
struct FrontEvents {
  std::function<void(bool busy)> busy;
  std::function<void()> cleared;
  std::function<void()> loaded;
  std::function<WideString()> nameText;
  std::function<void()> nameChanged;
};

/// The window as the front of a conversion: messages and questions are boxes, and what takes long
/// is done in the background.
class WindowFront : public ConversionFront {
 public:
  /// All must outlive this.
  WindowFront(QWidget& window, const CSettings& settings, ConversionContext& context,
              FrontEvents events);

  /// The file that is being read, whose lines a window may show.
  void SetSubject(const WideString& path) { m_subject = path; }
  /// The folder in which file dialogs open.
  QString folder;

  void ShowMessage(MessageIcon icon, uint32_t textId, const FailureReason& reason) override;
  bool AskYesNo(MessageIcon icon, uint32_t textId) override;
  std::vector<size_t> ChooseLists(const PointLists& lists) override;
  void SetBusy(bool busy) override { m_events.busy(busy); }
  void Run(const std::function<void()>& work) override;
  void ItineraryCleared() override { m_events.cleared(); }
  void ItineraryLoaded() override { m_events.loaded(); }
  std::optional<ChosenFile> AskOpenFile(const FileDialog& wanted) override;
  std::optional<ChosenFile> AskSaveFile(const FileDialog& wanted) override;
  WideString NameFieldText() const override { return m_events.nameText(); }
  void NameChanged() override { m_events.nameChanged(); }

 private:
  bool AskLayout(CsvUse use, CCsvLayout& layout);

  QWidget& m_window;
  const CSettings& m_settings;
  ConversionContext& m_context;
  FrontEvents m_events;
  WideString m_subject;
  WorkProgress m_progress;
};
