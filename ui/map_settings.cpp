// The settings page of the map: which servers may be asked for pictures of it.

#include <QCheckBox>

#include "base/text_ids.h"
#include "planner/planner_bridge.h"
#include "settings/map_sources.h"
#include "ui/page_files.h"
#include "ui/settings_form.h"
#include "ui/settings_pages.h"
#include "ui/text.h"

namespace {

constexpr uint32_t kKindMask = 0xF;
constexpr uint32_t kSwitchShift = 4;

class MapPage : public SettingsForm {
 public:
  explicit MapPage(const PlannerBridge& bridge) {
    AddHeading(kTextTileServers);
    // What the page has not offered yet is known to us all the same.
    m_maps = bridge.StoredMaps();
    for (const TileServer& server : TileServers()) m_maps[ToUtf8(server.name)] |= kMapPlain;
    for (auto& [name, number] : m_maps) {
      auto* const box = new QCheckBox(FromUtf8(name));
      box->setChecked((number >> kSwitchShift & kKindMask) != 0);
      m_form->addRow(box);
      OnStore([box, map = &number] {
        const uint32_t offered = *map & kKindMask;
        *map = offered | (box->isChecked() ? offered << kSwitchShift : 0);
      });
    }
    OnStore([this] { SaveMaps(storage::OpenUserStorage(), m_maps); });
  }

 private:
  MapSources m_maps;
};

}  // namespace

SettingsPage* MakeMapPage(const PlannerBridge& bridge) { return new MapPage(bridge); }
