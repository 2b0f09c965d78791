#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "services/service_table.h"

// A whole reply of each service, small enough to work out by hand.

/// The line of the public description of encoded polylines: 38.5, -120.2; 40.7, -120.95; 43.252,
/// -126.453.
inline const std::string kThreePointLine = "_p~iF~ps|U_ulLnnqC_mqNvxq`@";

/// What the services send for a way of three points.
struct SampleReply {
  int32_t id;
  std::string text;
};

inline const std::vector<SampleReply>& SampleReplies() {
  static const std::vector<SampleReply> replies = {
      {provider::kGoogle,
       R"({"status": "OK", "routes": [{"summary": "A4", "legs": [)"
       R"({"start_location": {"lat": 38.5, "lng": -120.2}, "start_address": "Start",)"
       R"( "end_location": {"lat": 43.252, "lng": -126.453}, "end_address": "End",)"
       R"( "duration": {"text": "1 min", "value": 61.5}, "distance": {"value": 1234},)"
       R"( "steps": [{"start_location": {"lat": 38.5, "lng": -120.2}, "duration": {"value": 20},)"
       R"( "distance": {"value": 400}, "html_instructions": "Head \u003cb\u003enorth\u003c/b\u003e",)"
       R"( "polyline": {"points": "_p~iF~ps|U_ulLnnqC"}},)"
       R"( {"start_location": {"lat": 40.7, "lng": -120.95}, "duration": {"value": 41},)"
       R"( "distance": {"value": 834}, "html_instructions": "Turn left",)"
       R"( "polyline": {"points": "_flwFn`faV_mqNvxq`@"}}]}]}]})"},
      {provider::kHere,
       R"({"response": {"route": [{"waypoint": [)"
       R"({"mappedPosition": {"latitude": 48.5, "longitude": 7.25}, "label": "Rue A"},)"
       R"( {"mappedPosition": {"latitude": 48.75, "longitude": 7.5}, "label": "Rue B"}],)"
       R"( "shape": ["48.5,7.25", "48.6", "48.625,7.375,12", "48.75,7.5"],)"
       R"( "summary": {"distance": 33450.5, "travelTime": 1800.4}}]}})"},
      {provider::kTomTom,
       R"({"formatVersion": "0.0.12", "routes": [{"summary": {"lengthInMeters": 3000,)"
       R"( "travelTimeInSeconds": 300}, "legs": [{"summary": {"lengthInMeters": 1000,)"
       R"( "travelTimeInSeconds": 100}, "points": [{"latitude": 48.5, "longitude": 7.25},)"
       R"( {"latitude": 48.55, "longitude": 7.3}, {"latitude": 48.6, "longitude": 7.35}]},)"
       R"( {"summary": {"lengthInMeters": 2000, "travelTimeInSeconds": 200}, "points":)"
       R"( [{"latitude": 48.6, "longitude": 7.35}, {"latitude": 48.7, "longitude": 7.4}]}]}]})"},
      {provider::kBing,
       R"({"statusCode": 200, "resourceSets": [{"resources": [{"routePath": {"line":)"
       R"( {"coordinates": [[48.5, 7.1], [48.6, 7.2], [48.7, 7.3], [48.8, 7.4], [48.9, 7.5]]}},)"
       R"( "routeLegs": [{"actualStart": {"coordinates": [48.5, 7.1]},)"
       R"( "actualEnd": {"coordinates": [48.7, 7.3]}, "travelDistance": 1.2345,)"
       R"( "travelDuration": 90, "itineraryItems": [{"maneuverPoint": {"coordinates":)"
       R"( [48.5, 7.1]}, "instruction": {"text": "Depart"}, "details": [{"endPathIndices": [1]}]},)"
       R"( {"maneuverPoint": {"coordinates": [48.6, 7.2]}, "instruction": {"text": "Turn"},)"
       R"( "details": [{"endPathIndices": [2]}, {"endPathIndices": [1]}]}]},)"
       R"( {"actualStart": {"coordinates": [48.7, 7.3]}, "actualEnd": {"coordinates": [48.9, 7.5]},)"
       R"( "travelDistance": 2, "travelDuration": 120.5, "itineraryItems": [{"maneuverPoint":)"
       R"( {"coordinates": [48.7, 7.3]}, "instruction": {"text": "Go on"}, "details":)"
       R"( [{"endPathIndices": [4]}]}]}]}]}]})"},
      // The trace is that of 7.25, 48.5 and 0.5 to the east, behind two characters of its own:
      // 725000 is "o_gk@", 4850000 "_t_gH", 50000 "_t`B" and 0 "?".
      {provider::kViaMichelin,
       R"(HTTPResponseLoaded({"header": {"summaries": []}, "roadSheet": [[["X", 1],)"
       R"( ["C", {"lon": 7.25, "lat": 48.5}, 100.4, 12.6, 0, 0, "towards B", "Turn left",)"
       R"( "Rue C"], ["C", {"lon": 7.5, "lat": 48.5}, 50, 7, 1, 35.5, "", "Arrive", false]]],)"
       R"( "itineraryTrace": "xyo_gk@_t_gH_t`B?"}))"},
      {provider::kOsrm,
       R"({"code": "Ok", "routes": [{"duration": 61.5, "distance": 1234.4, "geometry":)"
       R"( "_p~iF~ps|U_ulLnnqC_mqNvxq`@"}], "waypoints": [{"location": [-120.2, 38.5],)"
       R"( "name": "First"}, {"location": [-126.453, 43.252], "name": ""}]})"},
      {provider::kIgn, R"({"status": "OK", "durationSeconds": "61.5", "distanceMeters": "1234.4",)"
                       R"x( "geometryWkt": "LINESTRING (7.25 48.5, 7.375 48.625, 7.5 48.75)"})x"},
      {provider::kWazeUs,
       R"({"coords": [{"x": 7.25, "y": 48.5}, {"x": 7.5, "y": 48.75}], "response": {"results":)"
       R"( [{"path": {"x": 7.25, "y": 48.5}, "crossTime": 20, "length": 300},)"
       R"( {"path": {"x": 7.375, "y": 48.625}, "crossTime": 30.5, "length": 400}]}})"},
      {provider::kTripy,
       "<?xml version=\"1.0\"?><gpx><trk><name>way</name><trkseg>"
       "<trkpt lat=\"48.5\" lon=\"7.25\"/><trkpt lat=\"48.75\" lon=\"7.5\"><name>x</name></trkpt>"
       "</trkseg></trk><wpt lat=\"48.6\" lon=\"7.3\"><name>Turn left</name></wpt></gpx>"},
      {provider::kOrs,
       R"({"routes": [{"summary": {"distance": 300, "duration": 30}, "segments":)"
       R"( [{"distance": 100.4, "duration": 10.5, "steps": [{"distance": 100.4, "duration": 10.5,)"
       R"( "instruction": "Head north", "way_points": [0, 1]}, {"distance": 0, "duration": 0,)"
       R"( "instruction": "Arrive", "way_points": [1, 1]}]}, {"distance": 200, "duration": 20,)"
       R"( "steps": [{"distance": 200, "duration": 20, "instruction": "Go on",)"
       R"( "way_points": [1, 2]}]}], "geometry": "_p~iF~ps|U_ulLnnqC_mqNvxq`@"}]})"},
      // Flexible polyline of the public description: 50.10228, 8.69821; 50.10201, 8.69567;
      // 50.10063, 8.69150; 50.09878, 8.68752.
      {provider::kHereV8,
       R"({"routes": [{"sections": [{"polyline": "BFoz5xJ67i1B1B7PzIhaxL7Y", "summary":)"
       R"( {"length": 900, "duration": 60}, "actions": [{"length": 500, "duration": 40,)"
       R"( "offset": 0, "instruction": "Head west"}, {"length": 400, "duration": 20,)"
       R"( "offset": 2, "instruction": "Turn left"}]}]}]})"},
      {provider::kGoogleRoutes,
       R"({"routes": [{"legs": [{"distanceMeters": 1234, "duration": "61.5s", "polyline":)"
       R"( {"encodedPolyline": "_p~iF~ps|U_ulLnnqC_mqNvxq`@"}, "startLocation": {"latLng":)"
       R"( {"latitude": 38.5, "longitude": -120.2}}, "endLocation": {"latLng": {"latitude":)"
       R"( 43.252, "longitude": -126.453}}, "steps": [{"distanceMeters": 400, "staticDuration":)"
       R"( "20s", "startLocation": {"latLng": {"latitude": 38.5}}, "navigationInstruction":)"
       R"( {"instructions": "Head north"}}, {"staticDuration": "0s", "startLocation": {"latLng":)"
       R"( {"latitude": 40.7, "longitude": -120.95}}}]}]}]})"},
      {provider::kGeoplateforme,
       R"({"distance": 300, "duration": 30, "portions": [{"distance": 100.4, "duration": 10.5,)"
       R"( "steps": [{"geometry": {"coordinates": [[7.25, 48.5], [7.3, 48.6]]}, "distance": 60,)"
       R"( "duration": 6, "attributes": {"name": {"nom_1_droite": "", "nom_1_gauche": "RUE A"}},)"
       R"( "instruction": {"type": "depart"}}, {"geometry": {"coordinates": [[7.3, 48.6],)"
       R"( [7.35, 48.65]]}, "distance": 40.4, "duration": 4.5, "instruction": {"type": "turn",)"
       R"( "modifier": "left"}}]}]})"},
      // At a millionth of a degree: 48.5 is "_qeo{A", 7.25 "_doyL", 0.25 "_hgN".
      {provider::kValhalla,
       R"({"trip": {"status": 0, "legs": [{"shape": "_qeo{A_doyL_hgN_hgN", "summary": {"time": 61.5,)"
       R"( "length": 1.2344}, "maneuvers": [{"time": 61.5, "length": 1.2344,)"
       R"( "begin_shape_index": 0, "instruction": "Drive north"}, {"time": 0, "length": 0,)"
       R"( "begin_shape_index": 1, "instruction": "You have arrived"}]}]}})"},
      {provider::kBRouter,
       R"({"type": "FeatureCollection", "features": [{"type": "Feature", "properties":)"
       R"( {"track-length": "1234", "total-time": "61"}, "geometry": {"type": "LineString",)"
       R"( "coordinates": [[7.25, 48.5, 210.5], [7.5, 48.75]]}}]})"},
  };
  return replies;
}

/// The reply of one service.
inline const std::string& SampleReplyOf(int32_t id) {
  for (const SampleReply& reply : SampleReplies()) {
    if (reply.id == id) return reply.text;
  }
  static const std::string none;
  return none;
}
