#include "formats/format_rows.h"

#include "base/text_ids.h"
#include "formats/binary/autoroute.h"
#include "formats/binary/destinator.h"
#include "formats/binary/mapsource_gdb.h"
#include "formats/binary/mapsource_mps.h"
#include "formats/binary/navigon_route.h"
#include "formats/binary/sygic.h"
#include "formats/text/copilot.h"
#include "formats/text/csv.h"
#include "formats/text/falk.h"
#include "formats/text/igo.h"
#include "formats/text/kompass.h"
#include "formats/text/magellan.h"
#include "formats/text/marco_polo.h"
#include "formats/text/mireo.h"
#include "formats/text/navigon_rte.h"
#include "formats/text/oziexplorer.h"
#include "formats/text/pcx5.h"
#include "formats/text/polstar.h"
#include "formats/text/tomtom.h"
#include "formats/xml/daimler_gpx.h"
#include "formats/xml/fresh_route.h"
#include "formats/xml/garmin_gpx.h"
#include "formats/xml/gopal.h"
#include "formats/xml/gpx.h"
#include "formats/xml/ign_rando.h"
#include "formats/xml/klicktel.h"
#include "formats/xml/kml.h"
#include "formats/xml/location_xml.h"
#include "formats/xml/mapfactor.h"
#include "formats/xml/my_routes.h"
#include "formats/xml/navman.h"
#include "formats/xml/nokia_lmx.h"
#include "formats/xml/osm.h"
#include "formats/xml/viamichelin.h"

namespace {

// Lines with commas between their fields.
constexpr std::string_view kOziSeparators = ",\r\n";
constexpr size_t kLongestOziComment = 40;
// Newer devices take more, but all that read these files take so many.
constexpr size_t kMostTomTomStops = 48;
constexpr size_t kPcx5NameLength = 40;

}  // namespace

FormatTable DefaultFormatTable() {
  // clang-format off
  return {
      {u"rte", 902, nullptr, WriteOziRoute, 0,
       {.emit = EmitOf<WriteOziRouteBody>, .findsByName = true, .text = TextForm::kNarrow, .limits = {.separators = kOziSeparators, .longestComment = kLongestOziComment}}},
      {u"rt2", 901, nullptr, WriteOziRouteCe, 0,
       {.emit = EmitOf<WriteOziRouteCeBody>, .findsByName = true, .text = TextForm::kNarrow, .limits = {.separators = kOziSeparators, .longestComment = 0}}},
      {u"wpt", 903, nullptr, WriteOziWaypoints, 0,
       {.emit = EmitOf<WriteOziWaypointsBody>, .findsByName = true, .text = TextForm::kNarrow, .limits = {.separators = kOziSeparators, .longestComment = kLongestOziComment, .writesListName = false}}},
      {u"plt", 904, nullptr, WriteOziTrack, 0,
       {.emit = EmitOf<WriteOziTrackBody>, .text = TextForm::kNarrow, .limits = {.separators = kOziSeparators, .longestName = 0, .longestComment = 0}}},
      {u"gpx", 900, nullptr, WriteGpx, 0,
       {.emit = EmitOf<WriteGpxBody>, .option = WriterOption::kRemoveCommas}},
      {u"axe", 115, ReadAutoRoute, WriteAutoRoute, 0,
       {.parse = ParseAutoRoute, .emit = EmitCompoundRouteOf<kTemplateAutoRoute>, .limits = {.longestName = 255, .longestComment = 0, .writesListName = false}}},
      {u"axg", 136, ReadAutoRoute, nullptr, 0,
       {.parse = ParseAutoRoute}},
      {u"est", 138, ReadAutoRoute, WriteStreetsTrips, 0,
       {.parse = ParseAutoRoute, .emit = EmitCompoundRouteOf<kTemplateStreetsTrips>, .limits = {.longestName = 255, .longestComment = 0, .writesListName = false}}},
      {u"ptm", 137, ReadAutoRoute, WriteMapPoint, 0,
       {.parse = ParseAutoRoute, .emit = EmitCompoundRouteOf<kTemplateMapPoint>, .limits = {.longestName = 255, .longestComment = 0, .writesListName = false}}},
      {u"mps", 218, ReadMps, WriteMps, 0,
       {.parse = ParseMps, .emit = EmitOf<WriteMpsBody>, .findsByName = true, .text = TextForm::kNarrow, .limits = {.longestComment = 0}}},
      {u"gdb", 139, ReadGdb, WriteGdb, 0,
       {.parse = ParseGdb, .emit = EmitOf<WriteGdbBody>, .findsByName = true, .text = TextForm::kNarrow, .limits = {.longestComment = 0}}},
      {u"rte", 111, ReadPcx5, WritePcx5, 0,
       {.parse = ParsePcx5, .emit = EmitPcx5, .findsByName = true, .text = TextForm::kNarrow, .limits = {.separators = "\r\n", .longestName = kPcx5NameLength, .longestComment = 0, .mostPoints = 99999}}},
      {u"wpt", 0, ReadPcx5, nullptr, 0,
       {.parse = ParsePcx5, .text = TextForm::kNarrow}},
      {u"gpx", 200, nullptr, WriteNuviGpx, 0,
       {.emit = EmitOf<WriteNuviGpxBody>, .option = WriterOption::kMarkViaPoints, .findsByName = true,
        .takesWay = true}},
      {u"gpx", 376, nullptr, WriteZumoGpx, 0,
       {.emit = EmitOf<WriteZumoGpxBody>, .takesWay = true}},
      {u"gpx", 107, ReadGpx, WriteGpx, kTextRemoveCommas,
       {.parse = ParseGpx, .emit = EmitOf<WriteGpxBody>, .option = WriterOption::kRemoveCommas, .handsPointsOn = true}},
      {u"gpx", 370, ReadDaimlerGpx, WriteDaimlerGpx50, 0,
       {.parse = ParseDaimlerGpx, .emit = EmitOf<WriteDaimlerGpx50Body>, .handsPointsOn = true}},
      {u"gpx", 371, nullptr, WriteDaimlerGpx55, 0,
       {.emit = EmitOf<WriteDaimlerGpx55Body>}},
      {u"gpx", 372, nullptr, WriteDaimlerGpxMbux, 0,
       {.emit = EmitOf<WriteDaimlerGpxMbuxBody>}},
      {u"tth", 0, nullptr, nullptr, 0,
       {.isFile = false}},
      {u"itn", 106, ReadItn, WriteItn, 0,
       {.parse = ParseItn, .emit = EmitOf<WriteItnBody>, .option = WriterOption::kSplit, .text = TextForm::kNarrow, .limits = {.separators = "|\r\n", .longestComment = 0, .mostPoints = kMostTomTomStops, .writesListName = false}, .handsPointsOn = true}},
      {u"ov2", 298, ReadOv2, WriteOv2, 0,
       {.parse = ParseOv2, .emit = EmitOf<WriteOv2Body>, .text = TextForm::kNarrow, .limits = {.longestComment = 0, .writesListName = false}}},
      {u"rte", 149, ReadOziRoute, WriteOziRoute, 0,
       {.parse = ParseOziRoute, .emit = EmitOf<WriteOziRouteBody>, .findsByName = true, .text = TextForm::kNarrow, .limits = {.separators = kOziSeparators, .longestComment = kLongestOziComment}}},
      {u"rt2", 150, ReadOziRouteCe, WriteOziRouteCe, 0,
       {.parse = ParseOziRouteCe, .emit = EmitOf<WriteOziRouteCeBody>, .findsByName = true, .text = TextForm::kNarrow, .limits = {.separators = kOziSeparators, .longestComment = 0}}},
      {u"plt", 301, ReadOziTrack, WriteOziTrack, 0,
       {.parse = ParseOziTrack, .emit = EmitOf<WriteOziTrackBody>, .text = TextForm::kNarrow, .limits = {.separators = kOziSeparators, .longestName = 0, .longestComment = 0}}},
      {u"wpt", 325, ReadOziWaypoints, WriteOziWaypoints, 0,
       {.parse = ParseOziWaypoints, .emit = EmitOf<WriteOziWaypointsBody>, .findsByName = true, .text = TextForm::kNarrow, .limits = {.separators = kOziSeparators, .longestComment = kLongestOziComment, .writesListName = false}}},
      {u"rte", 152, ReadMagellan, nullptr, 0,
       {.parse = ParseMagellan, .text = TextForm::kNarrow}},
      {u"upt", 0, ReadMagellan, nullptr, 0,
       {.parse = ParseMagellan, .text = TextForm::kNarrow}},
      {u"mag", 152, nullptr, WriteMagellan, kTextExplorist,
       {.emit = EmitMagellan, .option = WriterOption::kExplorist, .text = TextForm::kNarrow, .limits = {.separators = ",*\r\n", .longestComment = 0, .mostPoints = 999, .writesListName = false}}},
      {u"rte", 131, ReadNavigonRte, WriteNavigonMn5, 0,
       {.parse = ParseNavigonRte, .emit = EmitOf<WriteNavigonMn5Body>, .text = TextForm::kNarrow, .limits = {.separators = "|\r\n", .longestComment = 0, .writesListName = false}}},
      {u"rte", 165, ReadNavigonRte, WriteNavigonMn6, 0,
       {.parse = ParseNavigonRte, .emit = EmitOf<WriteNavigonMn6Body>, .text = TextForm::kNarrow, .limits = {.separators = "|\r\n", .longestComment = 0, .writesListName = false}}},
      {u"rte", 223, ReadNavigonRte, WriteBecker, 0,
       {.parse = ParseNavigonRte, .emit = EmitOf<WriteBeckerBody>, .text = TextForm::kNarrow, .limits = {.separators = "|\r\n", .longestComment = 0, .writesListName = false}}},
      {u"route", 224, ReadNavigonRoute, WriteNavigonRoute, 0,
       {.parse = ParseNavigonRoute, .emit = EmitOf<WriteNavigonRouteBody>}},
      {u"store", 0, ReadNavigonRoute, nullptr, 0,
       {.parse = ParseNavigonRoute}},
      {u"freshroute", 245, ReadFreshRoute, WriteFreshRoute, 0,
       {.parse = ParseFreshRoute, .emit = EmitOf<WriteFreshRouteBody>, .option = WriterOption::kHandOff}},
      {u"dat", 130, ReadDestinator, WriteDestinator, 0,
       {.parse = ParseDestinator, .emit = EmitOf<WriteDestinatorBody>, .readsBack = false}},
      {u"xml", 373, ReadMyRoutesXml, WriteMyRoutesXml, 0,
       {.parse = ParseMyRoutesXml, .emit = EmitOf<WriteMyRoutesXmlBody>}},
      {u"xml", 249, ReadNavman, WriteNavman, 0,
       {.parse = ParseNavman, .emit = EmitOf<WriteNavmanBody>}},
      {u"csv", 116, ReadCsv, WriteCsv, 0,
       {.parse = ParseCsv, .emit = EmitCsv, .text = TextForm::kNarrow, .limits = {.separators = "\"\r\n", .writesListName = false}}},
      {u"kml", 117, ReadKml, WriteKml, 0,
       {.parse = ParseKml, .emit = EmitOf<WriteKmlBody>, .handsPointsOn = true}},
      {u"kml", 303, nullptr, WriteNdriveKml, 0,
       {.emit = EmitOf<WriteNdriveKmlBody>}},
      {u"bcr", 135, ReadBcr, WriteBcr, 0,
       {.parse = ParseBcr, .emit = EmitOf<WriteBcrBody>, .text = TextForm::kNarrow, .limits = {.separators = "\r\n", .longestComment = 0}}},
      {u"xvm", 216, ReadXvm, WriteXvm, 0,
       {.parse = ParseXvm, .emit = EmitOf<WriteXvmBody>}},
      {u"rdn", 134, ReadRdn, WriteRdn, 0,
       {.parse = ParseRdn, .emit = EmitOf<WriteRdnBody>, .text = TextForm::kLatin1, .limits = {.longestComment = 0}}},
      {u"trp", 219, ReadCoPilot6, WriteCoPilot6, 0,
       {.parse = ParseCoPilot6, .emit = EmitOf<WriteCoPilot6Body>, .text = TextForm::kNarrow, .limits = {.separators = "=\r\n", .longestComment = 0}}},
      {u"trp", 263, nullptr, WriteCoPilot8, 0,
       {.emit = EmitOf<WriteCoPilot8Body>, .limits = {.separators = "=\r\n", .longestComment = 0}}},
      {u"trp", 374, ReadCoPilot10, WriteCoPilot10, 0,
       {.parse = ParseCoPilot10, .emit = EmitOf<WriteCoPilot10Body>, .limits = {.separators = "=\r\n", .longestComment = 0}}},
      {u"itf", 250, ReadSygic, WriteSygicMcGuider, 0,
       {.parse = ParseSygic, .emit = EmitSygicMcGuider, .largestList = kMostMcGuiderPoints, .limits = {.longestName = 32766, .longestComment = 0, .mostPoints = kMostMcGuiderPoints, .writesListName = false}}},
      {u"itf", 299, nullptr, WriteSygic11, 0,
       {.emit = EmitOf<WriteSygic11Body>, .readsBack = false}},
      {u"itf", 328, nullptr, WriteSygic13, 0,
       {.emit = EmitOf<WriteSygic13Body>, .readsBack = false}},
      {u"xml", 259, ReadGoPal, WriteGoPal, 0,
       {.parse = ParseGoPal, .emit = EmitOf<WriteGoPalBody>, .text = TextForm::kLatin1, .limits = {.separators = "&<>\"", .longestComment = 0, .writesListName = false}}},
      {u"lmx", 225, ReadLmx, WriteLmx, 0,
       {.parse = ParseLmx, .emit = EmitOf<WriteLmxBody>}},
      {u"tour", 260, ReadFalkTour, WriteFalkTour, 0,
       {.parse = ParseFalkTour, .emit = EmitOf<WriteFalkTourBody>, .limits = {.separators = "\r\n", .longestComment = 0}}},
      {u"krt", 261, ReadKlickTel, WriteKlickTel, 0,
       {.parse = ParseKlickTel, .emit = EmitOf<WriteKlickTelBody>}},
      {u"trl", 158, ReadPolstar, WritePolstar, 0,
       {.parse = ParsePolstar, .emit = EmitOf<WritePolstarBody>}},
      {u"txt", 273, ReadMireo, WriteMireoTxt, 0,
       {.parse = ParseMireo, .emit = EmitOf<WriteMireoTxtBody>, .text = TextForm::kNarrow, .limits = {.separators = "\"\r\n", .longestComment = 0, .writesListName = false}}},
      {u"osm", 326, ReadOsm, WriteOsm, 0,
       {.parse = ParseOsm, .emit = EmitOf<WriteOsmBody>}},
      {u"rt", 300, ReadMireo, WriteMireoRt, 0,
       {.parse = ParseMireo, .emit = EmitOf<WriteMireoRtBody>, .text = TextForm::kNarrow, .limits = {.separators = "\"\r\n", .longestComment = 0}}},
      {u"loc", 201, nullptr, WriteLoc, 0,
       {.emit = EmitOf<WriteLocBody>, .readsBack = false}},
      {u"tk", 262, ReadKompass, WriteKompass, 0,
       {.parse = ParseKompass, .emit = EmitOf<WriteKompassBody>}},
      {u"upoi", 293, ReadUpoi, nullptr, 0,
       {.parse = ParseUpoi, .text = TextForm::kNarrow}},
      {u"upoi", 294, nullptr, WriteUpoi80, 0,
       {.emit = EmitOf<WriteUpoi80Body>, .limits = {.separators = "|\r\n", .writesListName = false}}},
      {u"upoi", 295, nullptr, WriteUpoi83, 0,
       {.emit = EmitOf<WriteUpoi83Body>, .limits = {.separators = "|\r\n", .writesListName = false}}},
      {u"xml", 319, ReadMapFactor, WriteMapFactor, 0,
       {.parse = ParseMapFactor, .emit = EmitOf<WriteMapFactorBody>}},
      {u"ggm", 203, nullptr, nullptr, kTextPrintableVersion,
       {.option = WriterOption::kPrintable, .isFile = false}},
      {u"here", 332, nullptr, nullptr, 0,
       {.isFile = false}},
      {u"vmm", 367, nullptr, nullptr, kTextPrintableVersion,
       {.option = WriterOption::kPrintable, .isFile = false}},
      {u"ttd", 368, nullptr, nullptr, 0,
       {.isFile = false}},
      {u"url", 159, nullptr, nullptr, 0},
  };
  // clang-format on
}
