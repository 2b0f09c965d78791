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
    {"zoomIn", kTextZoomIn},
    {"zoomOut", kTextZoomOut},
    {"showAll", kTextShowAll},
    {"layers", kTextMapLayers},
    {"layerMap", kTextLayerMap},
    {"layerSatellite", kTextLayerSatellite},
    {"layerHybrid", kTextLayerHybrid},
    {"layerTerrain", kTextLayerTerrain},
    {"addToItinerary", kTextAddToItinerary},
    {"insertStop", kTextInsertStop},
    {"addToFavorites", kTextAddToFavorites},
    {"rename", kTextRename},
    {"delete", kTextDelete},
    {"centerHere", kTextCenterHere},
    {"close", kTextClose},
    {"cancel", kTextCancel},
    {"name", kTextPageName},
    {"stopNumber", kTextStopNumber},
    {"searchResult", kTextSearchResult},
    {"favorite", kTextFavorite},
    {"pointOfInterest", kTextPointOfInterest},
    {"distance", kTextPageDistance},
    {"duration", kTextPageDuration},
    {"elevation", kTextElevation},
    {"comment", kTextComment},
    {"emptyMap", kTextEmptyMap},
    {"wayFailed", kTextWayFailed},
    {"tilesFailed", kTextTilesFailed},
    {"noTileServer", kTextNoTileServer},
    {"streetView", kTextStreetView},
    {"elevationHere", kTextElevationHere},
    {"addressHere", kTextAddressHere},
    {"mapLabel", kTextMapLabel},
    {"sendToTomTom", kTextAddToTomTom},
    {"sendToNavigon", kTextAddToNavigon},
    {"sendToNavgate", kTextAddToNavgate},
    {"sendToMio", kTextAddToMio},
    {"sendToGarmin", kTextAddToGarmin},
    {"nothingFound", kTextNothingFound},
};

}  // namespace

std::string PageTexts() {
  JsonText json;
  json.BeginObject();
  for (const PageText& text : kPageTexts) json.Key(text.name).Text(LoadTextUtf8(text.textId));
  json.End();
  return json.Result();
}
