#include "ui/settings_window.h"

#include <QDialog>
#include <QTabWidget>
#include <QVBoxLayout>
#include <array>

#include "base/status.h"
#include "base/text_ids.h"
#include "planner/window_parts.h"
#include "settings/settings.h"
#include "ui/boxes.h"
#include "ui/dialog_buttons.h"
#include "ui/look.h"
#include "ui/settings_page.h"
#include "ui/settings_pages.h"
#include "ui/text.h"

namespace {

constexpr int kWidth = 560;

/// The window; it stays open while a page holds something that cannot be accepted.
class SettingsWindow : public QDialog {
 public:
  explicit SettingsWindow(QWidget* parent) : QDialog(parent), m_tabs(new QTabWidget) {
    setWindowTitle(PlainText(kTextSettings));
    QVBoxLayout* const layout = AddDialogLayout(*this);
    layout->addWidget(m_tabs);
    AddDialogButtons(*this, *layout);
    setMinimumWidth(kWidth);
  }

  void Add(uint32_t textId, SettingsPage* page) {
    m_tabs->addTab(page, PlainText(textId));
    m_pages.push_back(page);
  }

  void accept() override {
    for (SettingsPage* const page : m_pages) {
      const QString message = page->Check();
      if (message.isEmpty()) continue;
      m_tabs->setCurrentWidget(page);
      ShowMessageBox(this, message, kBoxOk | kBoxWarningIcon);
      return;
    }
    for (SettingsPage* const page : m_pages) {
      const uint32_t status = page->Store();
      if (m_status == kStatusSuccess) m_status = status;
    }
    QDialog::accept();
  }

  /// What has become of all that the pages had to store.
  uint32_t Status() const { return m_status; }

 private:
  QTabWidget* m_tabs;
  std::vector<SettingsPage*> m_pages;
  uint32_t m_status = kStatusSuccess;
};

}  // namespace

std::optional<uint32_t> ShowSettingsWindow(QWidget* parent, CSettings& settings,
                                           const PlannerBridge& bridge) {
  SettingsWindow window(parent);
  window.Add(kTextDisplayOptions, MakeDisplayPage(settings));
  window.Add(kTextItineraryOptions, MakeItineraryPage(settings));
  window.Add(kTextMapOptions, MakeMapPage(settings, bridge));
  window.Add(kTextServicesGroup, MakeServicesPage(settings));
  if (window.exec() != QDialog::Accepted) return std::nullopt;
  const uint32_t status = settings.Save();
  return status == kStatusSuccess ? window.Status() : status;
}
