// The settings page of the map: which servers may be asked for pictures of it.

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

#include "base/status.h"
#include "base/text_ids.h"
#include "planner/page_maps.h"
#include "planner/planner_bridge.h"
#include "planner/tile_layers.h"
#include "settings/settings.h"
#include "ui/layer_window.h"
#include "ui/look.h"
#include "ui/settings_form.h"
#include "ui/settings_pages.h"
#include "ui/text.h"

namespace {

constexpr uint32_t kKindMask = 0xF;
constexpr uint32_t kSwitchShift = 4;
constexpr int kLeastListHeight = 160;
constexpr int kRowHeight = 28;

/// A row of the list: a layer of the user's, or a map that another page in place of ours has.
struct Entry {
  MapLayer layer;
  bool isOwn;
  uint32_t number;  ///< as it is stored for the map of this name
};

class MapPage : public SettingsForm {
 public:
  MapPage(CSettings& settings, const PlannerBridge& bridge) : m_settings(settings) {
    ReadStore(bridge);
    AddHeading(kTextTileServers);
    AddNote(Text(kTextMapLayersNote));
    m_list->setAccessibleName(PlainText(kTextOnMapLayers));
    m_list->setMinimumHeight(kLeastListHeight);
    m_list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto* const buttons = new QVBoxLayout;
    buttons->setSpacing(kSmallMargin);
    AddButton(*buttons, kTextAddPoint, [this] { Add({}); });
    m_edit = AddButton(*buttons, kTextEditPoint, [this] { Edit(m_list->currentRow()); });
    m_remove = AddButton(*buttons, kTextRemovePoints, [this] { Remove(m_list->currentRow()); });
    buttons->addStretch();
    m_suggest = AddButton(*buttons, kTextAddOpenStreetMap, [this] { Append(SuggestedLayer()); });
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSmallMargin);
    row->addWidget(m_list, 1);
    row->addLayout(buttons);
    m_form->addRow(row);
    QLabel* const rules = AddNote(QStringLiteral("%1 <a href=\"https://%2\">%2</a>")
                                      .arg(Text(kTextOpenStreetMapRules).toHtmlEscaped(),
                                           QLatin1String(kSuggestedLayerRules)));
    rules->setTextFormat(Qt::RichText);
    rules->setOpenExternalLinks(true);
    rules->setTextInteractionFlags(Qt::TextBrowserInteraction);
    for (const Entry& entry : m_entries) ShowNew(entry);
    m_list->setCurrentRow(m_entries.empty() ? -1 : 0);
    connect(m_list, &QListWidget::currentRowChanged, this, [this] { ShowButtons(); });
    connect(m_list, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem* item) { Edit(m_list->row(item)); });
    ShowButtons();
    OnStore([this] { StoreAll(); });
  }

  QString Check() override {
    for (size_t i = 0; i < m_entries.size(); ++i) {
      if (!IsTaken(m_entries[i].layer.name, i)) continue;
      m_list->setCurrentRow(static_cast<int>(i));
      return Text(kTextMapLayerName);
    }
    return {};
  }

 private:
  void ReadStore(const PlannerBridge& bridge) {
    MapLayers layers;
    MapSources maps;
    const storage::Storage storage = storage::OpenUserStorage();
    m_readStatus = LoadMapLayers(storage, layers);
    if (m_readStatus == kStatusSuccess) m_readStatus = LoadMaps(storage, maps);
    // What another page has besides its name is known to that page alone.
    for (const PageMap& map : bridge.PageMaps()) maps.try_emplace(map.name, map.number);
    for (MapLayer& layer : layers) {
      const auto stored = maps.find(layer.name);
      m_entries.push_back({std::move(layer), true, stored == maps.end() ? 0 : stored->second});
      if (stored != maps.end()) maps.erase(stored);
    }
    for (const auto& [name, number] : maps) {
      if (!name.empty()) m_entries.push_back({{.name = name}, false, number});
    }
  }

  QLabel* AddNote(const QString& text) {
    auto* const note = new QLabel(text);
    note->setWordWrap(true);
    note->setProperty("role", QStringLiteral("hint"));
    m_form->addRow(note);
    return note;
  }

  template <typename Action>
  QPushButton* AddButton(QBoxLayout& layout, uint32_t textId, Action action) {
    auto* const button = new QPushButton(PlainText(textId));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, action);
    layout.addWidget(button);
    return button;
  }

  void ShowNew(const Entry& entry) {
    auto* const item = new QListWidgetItem(FromUtf8(entry.layer.name), m_list);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    const bool isOn = (entry.number >> kSwitchShift & kKindMask) != 0;
    item->setCheckState(isOn ? Qt::Checked : Qt::Unchecked);
    item->setToolTip(FromUtf8(entry.layer.address));
    item->setSizeHint({0, kRowHeight});
  }

  void ShowButtons() {
    const int row = m_list->currentRow();
    const bool isOwn = row >= 0 && m_entries[static_cast<size_t>(row)].isOwn;
    m_edit->setEnabled(isOwn);
    m_remove->setEnabled(isOwn);
    m_suggest->setEnabled(!std::ranges::any_of(m_entries, [](const Entry& entry) {
      return entry.layer.address == SuggestedLayer().address;
    }));
  }

  bool IsTaken(const std::string& name, size_t except) const {
    for (size_t i = 0; i < m_entries.size(); ++i) {
      if (i != except && m_entries[i].layer.name == name) return true;
    }
    return false;
  }

  void Add(MapLayer layer) {
    if (EditLayerInWindow(window(), layer)) Append(layer);
  }

  // Nobody is asked before the user has ticked it.
  void Append(const MapLayer& layer) {
    m_entries.push_back({layer, true, 0});
    ShowNew(m_entries.back());
    m_list->setCurrentRow(m_list->count() - 1);
    m_list->setFocus();
    ShowButtons();
  }

  void Edit(int row) {
    if (row < 0) return;
    Entry& entry = m_entries[static_cast<size_t>(row)];
    if (!entry.isOwn || !EditLayerInWindow(window(), entry.layer)) return;
    m_list->item(row)->setText(FromUtf8(entry.layer.name));
    m_list->item(row)->setToolTip(FromUtf8(entry.layer.address));
    ShowButtons();
  }

  void Remove(int row) {
    if (row < 0) return;
    m_entries.erase(m_entries.begin() + row);
    delete m_list->takeItem(row);
    ShowButtons();
  }

  // The number with the user's tick: all that a map offers is switched on, or nothing.
  uint32_t NumberOf(size_t index) const {
    const Entry& entry = m_entries[index];
    const bool isOn = m_list->item(static_cast<int>(index))->checkState() == Qt::Checked;
    const uint32_t offered = entry.isOwn ? uint32_t{kMapPlain} : entry.number & kKindMask;
    return offered | (isOn ? offered << kSwitchShift : 0);
  }

  void StoreAll() {
    // What could not be read must not be replaced by less.
    if (m_readStatus != kStatusSuccess) {
      if (std::ranges::any_of(m_entries, &Entry::isOwn)) NoteStored(m_readStatus);
      return;
    }
    MapLayers layers;
    MapSources maps;
    for (size_t i = 0; i < m_entries.size(); ++i) {
      const Entry& entry = m_entries[i];
      const uint32_t number = NumberOf(i);
      maps[entry.layer.name] = number;
      if (!entry.isOwn) continue;
      layers.push_back(entry.layer);
      // Who allows a layer wants to see it.
      if (IsMapOn(number, kMapPlain) && !IsMapOn(entry.number, kMapPlain))
        m_settings.defaultMap = MapChoice{kMapPlain, entry.layer.name};
    }
    NoteStored(SaveMapLayers(storage::OpenUserStorage(), layers, maps));
  }

  CSettings& m_settings;
  uint32_t m_readStatus = kStatusSuccess;
  std::vector<Entry> m_entries;
  QListWidget* m_list = new QListWidget;
  QPushButton* m_edit;
  QPushButton* m_remove;
  QPushButton* m_suggest;
};

}  // namespace

SettingsPage* MakeMapPage(CSettings& settings, const PlannerBridge& bridge) {
  return new MapPage(settings, bridge);
}
