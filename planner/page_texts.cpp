#include "planner/page_texts.h"

#include "base/localized_text.h"
#include "base/text_ids.h"
#include "planner/json_text.h"

namespace {

struct PageText {
  std::string_view name;
  uint32_t textId;
};

constexpr PageText kPageTexts[] = {
    {"map", kTextOnMapMap},
    {"mapKeys", kTextOnMapMapKeys},
    {"zoomIn", kTextOnMapZoomIn},
    {"zoomOut", kTextOnMapZoomOut},
    {"showAll", kTextOnMapShowAll},
    {"layers", kTextOnMapLayers},
    {"layersHint", kTextOnMapLayersHint},
    {"outline", kTextOnMapOutline},
    {"measure", kTextOnMapMeasure},
    {"measureHint", kTextOnMapMeasureHint},
    {"measureEnd", kTextOnMapMeasureEnd},
    {"measureFrom", kTextOnMapMeasureFrom},
    {"menu", kTextOnMapMenu},
    {"addStopHere", kTextOnMapAddStopHere},
    {"insertBefore", kTextOnMapInsertBefore},
    {"whatIsHere", kTextOnMapWhatIsHere},
    {"elevationHere", kTextOnMapElevationHere},
    {"elevationIs", kTextOnMapElevationIs},
    {"streetView", kTextOnMapStreetView},
    {"noStreetView", kTextOnMapNoStreetView},
    {"centreHere", kTextOnMapCentreHere},
    {"openStop", kTextOnMapOpenStop},
    {"nothingFound", kTextOnMapNothingFound},
    {"name", kTextOnMapName},
    {"stopNumber", kTextOnMapStopNumber},
    {"stopOf", kTextOnMapStopOf},
    {"fromStopBefore", kTextOnMapFromStopBefore},
    {"fromStart", kTextOnMapFromStart},
    {"addFavourite", kTextOnMapAddFavourite},
    {"favouriteAdded", kTextOnMapFavouriteAdded},
    {"addStop", kTextOnMapAddStop},
    {"removeStop", kTextOnMapRemoveStop},
    {"close", kTextOnMapClose},
    {"moving", kTextOnMapMoving},
    {"moved", kTextOnMapMoved},
    {"notMoved", kTextOnMapNotMoved},
    {"emptyClick", kTextOnMapEmptyClick},
    {"empty", kTextOnMapEmpty},
    {"newVersion", kTextOnMapNewVersion},
    {"wayFailed", kTextOnMapWayFailed},
    {"tilesFailed", kTextOnMapTilesFailed},
    {"calculate", kTextOnMapCalculate},
    {"refused", kTextOnMapRefused},
};

}  // namespace

std::string PageTexts() {
  JsonText json;
  json.BeginObject();
  for (const PageText& text : kPageTexts) json.Key(text.name).Text(LoadTextUtf8(text.textId));
  json.End();
  return json.Result();
}
