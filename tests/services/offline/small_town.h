#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

// A town of our own, on the 48th parallel. A hundredth of a degree of latitude is 1113 m, one of
// longitude 744 m at 48.00 and 48.01, two of them 1489 m at 48.02.
//
//   48.02  7 ══════ Motorway ══════ 8
//          ║                        ║
//   48.01  4 ──> North Street (5) ─>6        21 ─ 22
//          │          │             │         │    Island Road
//   48.00  1 ── (2) South Street ── 3        20
//        7.00       7.01          7.02     7.10  7.11
//
// West Lane leads from 1 to 4, East Lane from 3 to 6, the Toll Bridge from 2 to 5. North Street is
// one-way to the east.
inline const std::string kSmallTown = R"(<?xml version="1.0" encoding="UTF-8"?>
<osm version="0.6">
<node id="1" lat="48.000" lon="7.000"/><node id="2" lat="48.000" lon="7.010"/>
<node id="3" lat="48.000" lon="7.020"/><node id="4" lat="48.010" lon="7.000"/>
<node id="5" lat="48.010" lon="7.010"/><node id="6" lat="48.010" lon="7.020"/>
<node id="7" lat="48.020" lon="7.000"/><node id="8" lat="48.020" lon="7.020"/>
<node id="20" lat="48.000" lon="7.100"/><node id="21" lat="48.010" lon="7.100"/>
<node id="22" lat="48.010" lon="7.110"/>
<way id="1"><nd ref="1"/><nd ref="2"/><nd ref="3"/>
<tag k="highway" v="residential"/><tag k="name" v="South Street"/></way>
<way id="2"><nd ref="4"/><nd ref="5"/><nd ref="6"/>
<tag k="highway" v="residential"/><tag k="name" v="North Street"/><tag k="oneway" v="yes"/></way>
<way id="3"><nd ref="1"/><nd ref="4"/>
<tag k="highway" v="residential"/><tag k="name" v="West Lane"/></way>
<way id="4"><nd ref="3"/><nd ref="6"/>
<tag k="highway" v="residential"/><tag k="name" v="East Lane"/></way>
<way id="5"><nd ref="4"/><nd ref="7"/><nd ref="8"/><nd ref="6"/>
<tag k="highway" v="motorway"/><tag k="name" v="Motorway"/><tag k="oneway" v="no"/></way>
<way id="6"><nd ref="2"/><nd ref="5"/>
<tag k="highway" v="secondary"/><tag k="name" v="Toll Bridge"/><tag k="toll" v="yes"/></way>
<way id="7"><nd ref="20"/><nd ref="21"/><nd ref="22"/>
<tag k="highway" v="residential"/><tag k="name" v="Island Road"/></way>
</osm>
)";

/// Places apart from each other, a tenth of a degree of latitude from one to the next, the first on
/// the 48th parallel. In each a road of its own kind leads straight from 7.00 to 7.02, 1480 to
/// 1489 m, and another one around by the north: 1113 m, as long again as the first, and 1113 m.
inline std::string PlacesWithDetour(std::initializer_list<std::string_view> tagsOfStraightRoads) {
  std::string osm = "<osm version=\"0.6\">\n";
  std::string ways;
  int node = 0;
  double latitude = 48.0;
  for (const std::string_view tags : tagsOfStraightRoads) {
    for (const auto& [north, longitude] : {std::pair(0.0, "7.000"), std::pair(0.01, "7.000"),
                                           std::pair(0.01, "7.020"), std::pair(0.0, "7.020")}) {
      osm += "<node id=\"" + std::to_string(++node) + "\" lat=\"" +
             std::to_string(latitude + north) + "\" lon=\"" + longitude + "\"/>\n";
    }
    const auto reference = [node](int back) {
      return "<nd ref=\"" + std::to_string(node - back) + "\"/>";
    };
    ways += "<way id=\"" + std::to_string(node) + "\">" + reference(3) + reference(0) +
            std::string(tags) + "</way>\n<way id=\"" + std::to_string(node + 1) + "\">" +
            reference(3) + reference(2) + reference(1) + reference(0) +
            "<tag k=\"highway\" v=\"secondary\"/></way>\n";
    latitude += 0.1;
  }
  return osm + ways + "</osm>\n";
}
