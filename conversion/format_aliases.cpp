#include "conversion/format_aliases.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace {

constexpr FormatAlias kAliases[] = {
    {u"autoroute", u"axe", u"axe"},
    {u"basecamp", u"gpx:376", u"gpx"},
    {u"becker", u"rte:223", u"rte:223"},
    {u"copilot", u"trp:374", u"trp"},
    {u"daimler", u"gpx:370", u"gpx:370"},
    {u"destinator", u"dat", u"dat"},
    {u"falk", u"tour", u"tour"},
    {u"garmin", u"gpx:376", u"gpx"},
    {u"gopal", u"xml:259", u"xml:259"},
    {u"klicktel", u"krt", u"krt"},
    {u"kompass", u"tk", u"tk"},
    {u"magellan", u"mag", u"upt"},
    {u"mapfactor", u"xml:319", u"xml:319"},
    {u"mappoint", u"ptm", u"ptm"},
    {u"mapsource", u"gdb", u"gdb"},
    {u"marcopolo", u"bcr", u"bcr"},
    {u"mercedes", u"gpx:372", u"gpx:370"},
    {u"michelin", u"xvm", u"xvm"},
    {u"mireo", u"rt", u"rt"},
    {u"navigon4", u"rte:131", u"rte:131"},
    {u"navigon5", u"rte:131", u"rte:131"},
    {u"navigon6", u"rte:165", u"rte:165"},
    {u"navigon7", u"route", u"route"},
    {u"navman", u"xml:249", u"xml:249"},
    {u"nokia", u"lmx", u"lmx"},
    {u"nuvi", u"gpx:200", u"gpx"},
    {u"ozi", u"rte:149", u"rte:149"},
    {u"pcx5", u"rte:111", u"rte:111"},
    {u"polnav", u"trl", u"trl"},
    {u"streets", u"est", u"est"},
    {u"sygic", u"itf:328", u"itf"},
    {u"tomtom", u"itn", u"itn"},
    {u"zumo", u"gpx:376", u"gpx"},
};

const FormatAlias* FindAlias(std::u16string_view name) {
  const auto* const found = std::find_if(
      std::begin(kAliases), std::end(kAliases),
      [name](const FormatAlias& alias) { return EqualsIgnoringCase(alias.name, name); });
  return found == std::end(kAliases) ? nullptr : found;
}

}  // namespace

std::span<const FormatAlias> FormatAliases() { return kAliases; }

std::u16string_view KeyForWriting(std::u16string_view name) {
  const FormatAlias* const alias = FindAlias(name);
  return alias ? alias->writes : name;
}

std::u16string_view KeyForReading(std::u16string_view name) {
  const FormatAlias* const alias = FindAlias(name);
  return alias ? alias->reads : name;
}
