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

FormatTable DefaultFormatTable() {
  // clang-format off
  return {
      {u"rte", 902, nullptr, WriteOziRoute, 0},
      {u"rt2", 901, nullptr, WriteOziRouteCe, 0},
      {u"wpt", 903, nullptr, WriteOziWaypoints, 0},
      {u"plt", 904, nullptr, WriteOziTrack, 0},
      {u"gpx", 900, nullptr, WriteGpx, 0},
      {u"axe", 115, ReadAutoRoute, WriteAutoRoute, 0},
      {u"axg", 136, ReadAutoRoute, nullptr, 0},
      {u"est", 138, ReadAutoRoute, WriteStreetsTrips, 0},
      {u"ptm", 137, ReadAutoRoute, WriteMapPoint, 0},
      {u"mps", 218, ReadMps, WriteMps, 0},
      {u"gdb", 139, ReadGdb, WriteGdb, 0},
      {u"rte", 111, ReadPcx5, WritePcx5, 0},
      {u"wpt", 0, ReadPcx5, nullptr, 0},
      {u"gpx", 200, nullptr, WriteNuviGpx, 0},
      {u"gpx", 376, nullptr, WriteZumoGpx, 0},
      {u"gpx", 107, ReadGpx, WriteGpx, kTextRemoveCommas},
      {u"gpx", 370, ReadDaimlerGpx, WriteDaimlerGpx50, 0},
      {u"gpx", 371, nullptr, WriteDaimlerGpx55, 0},
      {u"gpx", 372, nullptr, WriteDaimlerGpxMbux, 0},
      {u"tth", 0, nullptr, nullptr, 0},
      {u"itn", 106, ReadItn, WriteItn, 0},
      {u"ov2", 298, ReadOv2, WriteOv2, 0},
      {u"rte", 149, ReadOziRoute, WriteOziRoute, 0},
      {u"rt2", 150, ReadOziRouteCe, WriteOziRouteCe, 0},
      {u"plt", 301, ReadOziTrack, WriteOziTrack, 0},
      {u"wpt", 325, ReadOziWaypoints, WriteOziWaypoints, 0},
      {u"rte", 152, ReadMagellan, nullptr, 0},
      {u"upt", 0, ReadMagellan, nullptr, 0},
      {u"mag", 152, nullptr, WriteMagellan, kTextExplorist},
      {u"rte", 131, ReadNavigonRte, WriteNavigonMn5, 0},
      {u"rte", 165, ReadNavigonRte, WriteNavigonMn6, 0},
      {u"rte", 223, ReadNavigonRte, WriteBecker, 0},
      {u"route", 224, ReadNavigonRoute, WriteNavigonRoute, 0},
      {u"store", 0, ReadNavigonRoute, nullptr, 0},
      {u"freshroute", 245, ReadFreshRoute, WriteFreshRoute, 0},
      {u"dat", 130, ReadDestinator, WriteDestinator, 0},
      {u"xml", 373, ReadMyRoutesXml, WriteMyRoutesXml, 0},
      {u"xml", 249, ReadNavman, WriteNavman, 0},
      {u"csv", 116, ReadCsv, WriteCsv, 0},
      {u"kml", 117, ReadKml, WriteKml, 0},
      {u"kml", 303, nullptr, WriteNdriveKml, 0},
      {u"bcr", 135, ReadBcr, WriteBcr, 0},
      {u"xvm", 216, ReadXvm, WriteXvm, 0},
      {u"rdn", 134, ReadRdn, WriteRdn, 0},
      {u"trp", 219, ReadCoPilot6, WriteCoPilot6, 0},
      {u"trp", 263, nullptr, WriteCoPilot8, 0},
      {u"trp", 374, ReadCoPilot10, WriteCoPilot10, 0},
      {u"itf", 250, ReadSygic, WriteSygicMcGuider, 0},
      {u"itf", 299, nullptr, WriteSygic11, 0},
      {u"itf", 328, nullptr, WriteSygic13, 0},
      {u"xml", 259, ReadGoPal, WriteGoPal, 0},
      {u"lmx", 225, ReadLmx, WriteLmx, 0},
      {u"tour", 260, ReadFalkTour, WriteFalkTour, 0},
      {u"krt", 261, ReadKlickTel, WriteKlickTel, 0},
      {u"trl", 158, ReadPolstar, WritePolstar, 0},
      {u"txt", 273, ReadMireo, WriteMireoTxt, 0},
      {u"osm", 326, ReadOsm, WriteOsm, 0},
      {u"rt", 300, ReadMireo, WriteMireoRt, 0},
      {u"loc", 201, nullptr, WriteLoc, 0},
      {u"tk", 262, ReadKompass, WriteKompass, 0},
      {u"upoi", 293, ReadUpoi, nullptr, 0},
      {u"upoi", 294, nullptr, WriteUpoi80, 0},
      {u"upoi", 295, nullptr, WriteUpoi83, 0},
      {u"xml", 319, ReadMapFactor, WriteMapFactor, 0},
      {u"ggm", 203, nullptr, nullptr, kTextPrintableVersion},
      {u"here", 332, nullptr, nullptr, 0},
      {u"vmm", 367, nullptr, nullptr, kTextPrintableVersion},
      {u"ttd", 368, nullptr, nullptr, 0},
      {u"url", 159, nullptr, nullptr, 0},
  };
  // clang-format on
}
