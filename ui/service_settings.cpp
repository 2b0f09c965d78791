// The settings page of the services: who calculates, who finds, and what each needs.

#include <QComboBox>
#include <QLineEdit>
#include <map>

#include "base/status.h"
#include "base/text_ids.h"
#include "services/service_access.h"
#include "services/service_store.h"
#include "services/service_table.h"
#include "settings/settings.h"
#include "settings/storage.h"
#include "ui/service_list.h"
#include "ui/settings_form.h"
#include "ui/settings_pages.h"
#include "ui/text.h"

namespace {

struct FieldRow {
  uint32_t textId;
  std::optional<std::string> ServiceValues::*value;
  bool isSecret;
};

constexpr FieldRow kFields[] = {{kTextServiceUrlLabel, &ServiceValues::url, false},
                                {kTextServiceKeyLabel, &ServiceValues::key, true},
                                {kTextServiceAppIdLabel, &ServiceValues::appId, true},
                                {kTextServiceLanguageLabel, &ServiceValues::language, false},
                                {kTextServiceReferrerLabel, &ServiceValues::referrer, false}};

class ServicesPage : public SettingsForm {
 public:
  explicit ServicesPage(CSettings& settings) : m_settings(settings) {
    m_readStatus = LoadServiceValues(storage::OpenUserStorage(), m_before);
    m_values = m_before;
    m_directions = AddList(kTextDirectionsProvider);
    FillServiceList(*m_directions, kCanDirections, settings.routeProvider);
    m_finder = AddList(kTextFindProvider);
    FillServiceList(*m_finder, kCanGeocode, settings.findProvider);
    AddHeading(kTextServiceAccountHeading);
    m_service = AddList(kTextServiceLabel);
    for (const Service& service : Services()) {
      const bool isItsOwn = service.account == service.name || service.account.empty();
      if (isItsOwn && !IsOnThisMachine(service))
        m_service->addItem(PlainText(service.labelTextId), FromUtf8(service.name));
    }
    for (const FieldRow& row : kFields) {
      auto* const field = new QLineEdit;
      if (row.isSecret) field->setEchoMode(QLineEdit::PasswordEchoOnEdit);
      AddRow(row.textId, field);
      m_fields.push_back(field);
      connect(field, &QLineEdit::textEdited, this, [this] { TakeFields(); });
    }
    auto* const user = new QLineEdit(FromWide(settings.userId));
    AddRow(kTextUserId, user);
    OnStore([user, &settings] { settings.userId = ToWide(user->text().trimmed()); });
    connect(m_service, &QComboBox::currentIndexChanged, this, [this] { ShowFields(); });
    ShowFields();
    OnStore([this] { StoreAll(); });
  }

 private:
  std::string Shown() const { return ToUtf8(m_service->currentData().toString()); }

  void ShowFields() {
    const ServiceValues values = m_values[Shown()];
    for (size_t i = 0; i < m_fields.size(); ++i)
      m_fields[i]->setText(FromUtf8((values.*kFields[i].value).value_or(std::string())));
    const Service* const service = FindService(Shown());
    m_fields.front()->setPlaceholderText(service ? FromUtf8(service->address) : QString());
  }

  void TakeFields() {
    ServiceValues& values = m_values[Shown()];
    for (size_t i = 0; i < m_fields.size(); ++i) {
      const std::string text = ToUtf8(m_fields[i]->text().trimmed());
      std::optional<std::string>& value = values.*kFields[i].value;
      if (text.empty())
        value.reset();
      else
        value = text;
    }
  }

  void StoreAll() {
    if (m_directions->currentIndex() >= 0) {
      const int32_t chosen = m_directions->currentData().toInt();
      if (chosen != m_settings.routeProvider) m_settings.calculateAsked = true;
      m_settings.routeProvider = chosen;
    }
    if (m_finder->currentIndex() >= 0) m_settings.findProvider = m_finder->currentData().toInt();
    std::vector<ServiceAssignment> changes;
    for (const auto& [name, values] : m_values) {
      const Service* const service = FindService(name);
      if (!service) continue;
      for (const ServiceSetting& setting : ServiceSettings()) {
        const std::optional<std::string>& value = values.*setting.value;
        const auto before = m_before.find(name);
        const bool isSame =
            before == m_before.end() ? !value : before->second.*setting.value == value;
        if (!isSame) changes.push_back({service, &setting, value.value_or(std::string())});
      }
    }
    // Values that could not be read must not be replaced by fewer.
    if (changes.empty()) return;
    if (m_readStatus != kStatusSuccess) return NoteStored(m_readStatus);
    NoteStored(StoreServiceValues(storage::OpenUserStorage(), changes));
    SetServiceValues(m_values);
  }

  CSettings& m_settings;
  uint32_t m_readStatus = kStatusSuccess;
  ServiceValuesByName m_before;
  ServiceValuesByName m_values;
  QComboBox* m_directions;
  QComboBox* m_finder;
  QComboBox* m_service;
  std::vector<QLineEdit*> m_fields;
};

}  // namespace

SettingsPage* MakeServicesPage(CSettings& settings) { return new ServicesPage(settings); }
