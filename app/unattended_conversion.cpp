#include "app/unattended_conversion.h"

#include <algorithm>
#include <set>
#include <string>

#include "app/console_front.h"
#include "app/console_text.h"
#include "app/conversion_services.h"
#include "app/leg_calculation.h"
#include "app/link_output.h"
#include "app/list_operations.h"
#include "conversion/loss_description.h"
#include "app/output_sink.h"
#include "app/settings_command.h"
#include "base/format_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/conversion_driver.h"
#include "conversion/format_search.h"
#include "conversion/read_trip.h"
#include "platform/folder.h"
#include "services/links/link_writing.h"
#include "settings/settings.h"

namespace {

enum class Outcome { kConverted, kWithLosses, kNotRecognised, kFailed };

bool IsSearchForOrder(const ListOperation& operation) {
  return operation.kind == ListOperation::Kind::kOptimize ||
         operation.kind == ListOperation::Kind::kOptimizeBest;
}

/// One run over a file or a folder.
class Conversion {
 public:
  Conversion(const Options& options, const FormatTable& table, const CItineraryFormat& row,
             ConversionContext& context)
      : m_options(options),
        m_row(row),
        m_context(context),
        m_front(options),
        m_driver(table, m_front, context, ChangeTracking::kOff) {}

  /// Has legs asked for before each itinerary is written.
  void SetDirections(DirectionsChoice choice) { m_legs.emplace(m_options, std::move(choice)); }

  int ConvertFile(const WideString& source);
  int ConvertFolder(const WideString& folder);

 private:
  Outcome Convert(const WideString& source, const WideString& target);
  bool Prepare(const WideString& source, const WideString& target);
  Outcome Write(const WideString& source, const WideString& target);
  Outcome WriteLinks(const WideString& source, const WideString& target);
  void TellLookups(const WideString& source) const;
  void Tell(const WideString& source, const WideString& target, const LossCheck& check);
  int ExitStatus(size_t converted, size_t withLosses, size_t failed) const;
  WideString TargetBeside(const WideString& source) const;
  void ShowProgress(size_t done, size_t count) const;

  const Options& m_options;
  const CItineraryFormat& m_row;
  ConversionContext& m_context;
  ConsoleFront m_front;
  ConversionDriver m_driver;
  std::optional<LegCalculation> m_legs;
  bool m_inFolder = false;
  bool m_outputFailed = false;
};

// The source's path up to its last dot, and the key's extension. A path without a dot stays whole.
// What comes out of a link goes into the current folder.
WideString Conversion::TargetBeside(const WideString& source) const {
  if (IsWebAddress(source)) return LoadText(kTextItinerary) + u"." + m_row.extension;
  const size_t dot = source.rfind(u'.');
  return source.substr(0, dot == WideString::npos ? dot : dot + 1) + m_row.extension;
}

int Conversion::ConvertFile(const WideString& source) {
  WideString target = TargetBeside(source);
  if (FileAttributes(m_options.output) == kAttributeDirectory) {
    target = JoinedPath(m_options.output, NameIn(target));
  } else if (!m_options.output.empty()) {
    target = m_options.output;
  }
  const Outcome outcome = Convert(source, target);
  const bool withLosses = outcome == Outcome::kWithLosses;
  return ExitStatus(withLosses || outcome == Outcome::kConverted ? 1 : 0, withLosses ? 1 : 0, 0);
}

int Conversion::ExitStatus(size_t converted, size_t withLosses, size_t failed) const {
  const bool hasFailedLegs = m_legs && m_legs->HasFailures();
  if (failed > 0 || converted == 0 || m_outputFailed || hasFailedLegs) return kExitFailed;
  return m_options.strict && withLosses > 0 ? kExitLosses : kExitConverted;
}

int Conversion::ConvertFolder(const WideString& folder) {
  std::vector<WideString> names;
  if (const uint32_t error = ListFolder(folder, names)) {
    // That it is a folder is no reason here.
    Complain(folder,
             std::string(LoadTextUtf8(kTextCannotBeRead)) + DescribeReason(error, WideString()));
    return kExitFailed;
  }
  const uint32_t error = m_options.output.empty() ? 0 : CreateFolders(m_options.output);
  if (error != kStatusSuccess) {
    std::string reason = DescribeReason(error, m_options.output);
    if (FileAttributes(m_options.output) == kAttributeNormal)
      reason = " " + FormatText(kTextReason, LoadTextUtf8(kTextReasonFile));
    Complain(m_options.output, std::string(LoadTextUtf8(kTextCannotBeWritten)) + reason);
    return kExitFailed;
  }

  m_front.SetReportsUnknown(!m_options.quiet);
  m_inFolder = true;
  size_t converted = 0;
  size_t withLosses = 0;
  size_t unknown = 0;
  size_t failed = 0;
  // Trips of several formats may have one name, which then leads them to one target.
  std::set<WideString> taken;
  for (const WideString& name : names) taken.insert(JoinedPath(folder, name));
  for (size_t i = 0; i < names.size(); ++i) {
    ShowProgress(i + 1, names.size());
    const WideString source = JoinedPath(folder, names[i]);
    WideString target = TargetBeside(source);
    if (!m_options.output.empty()) target = JoinedPath(m_options.output, NameIn(target));
    const Outcome outcome = Convert(source, target);
    const bool isConverted = outcome == Outcome::kConverted || outcome == Outcome::kWithLosses;
    const bool isFile = m_row.facts.isFile || !m_options.output.empty();
    if (isConverted && isFile && target != source && !taken.insert(target).second &&
        !m_options.quiet)
      Complain(FormatText(kTextReplacedInFolder, ShownPath(target), ShownPath(source)));
    switch (outcome) {
      case Outcome::kWithLosses:
        ++withLosses;
        [[fallthrough]];
      case Outcome::kConverted:
        ++converted;
        break;
      case Outcome::kNotRecognised:
        ++unknown;
        break;
      case Outcome::kFailed:
        ++failed;
        break;
    }
  }
  ShowProgress(0, 0);
  if (!m_options.quiet) {
    Complain(FormatText(kTextSummary, converted, unknown, failed));
    if (withLosses > 0) Complain(FormatText(kTextFilesWithLosses, withLosses));
  }
  return ExitStatus(converted, withLosses, failed);
}

Outcome Conversion::Convert(const WideString& source, const WideString& target) {
  m_front.SetSubject(source);
  const uint32_t status = m_driver.OpenFile(source, false, true);
  if (!m_options.quiet) TellLookups(source);
  if (status != kStatusSuccess && m_front.Declined()) {
    Complain(FormatText(kTextNoSuchList, m_options.lists.text, ShownPath(source)));
    return Outcome::kFailed;
  }
  if (status == kStatusBadFormat) return Outcome::kNotRecognised;
  if (status != kStatusSuccess) return Outcome::kFailed;
  if (!Prepare(source, target)) return Outcome::kFailed;
  return m_row.facts.isFile ? Write(source, target) : WriteLinks(source, target);
}

void Conversion::TellLookups(const WideString& source) const {
  const auto count = [this](ConversionNote note) { return m_driver.readNotes.Count(note); };
  if (const uint64_t lookedUp = count(ConversionNote::kStopLookedUp)) {
    Complain(FormatText(kTextStopsLookedUp, ShownPath(source), lookedUp,
                        count(ConversionNote::kStopNotFound)));
  }
  if (count(ConversionNote::kStopNotAsked) > 0) Complain(PositionRemedy(m_options));
  if (const uint64_t left = count(ConversionNote::kPlaceNotAsked)) {
    Complain(FormatText(kTextPlacesNotAsked, ShownPath(source), left));
    Complain(PlaceRemedy(m_options));
  }
  if (count(ConversionNote::kPageNotFetched) > 0)
    Complain(FormatText(kTextSavedMapNotFetched, ShownPath(source)));
}

// Does with the itinerary what the options want, up to the way in its place. False when nothing is
// left to be written, and the user has been told.
bool Conversion::Prepare(const WideString& source, const WideString& target) {
  const bool becomesWay = m_options.directions.asTrack;
  const auto isOfWay = [becomesWay](const ListOperation& operation) {
    return becomesWay && operation.kind == ListOperation::Kind::kSimplify;
  };
  // A way is thinned when it is there; all else is done with its stops.
  std::vector<ListOperation> ofStops;
  std::vector<ListOperation> ofWay;
  for (const ListOperation& operation : m_options.operations)
    (isOfWay(operation) ? ofWay : ofStops).push_back(operation);

  CGpsRoute& itinerary = m_driver.current;
  if (!m_legs) {
    ApplyListOperations(ofStops, source, m_options.quiet, itinerary);
    return true;
  }
  const RoadOrder roads = m_legs->Roads();
  if (std::ranges::any_of(ofStops, IsSearchForOrder) &&
      !m_legs->MayOrderByRoad(source, itinerary.Count()))
    return false;
  ApplyListOperations(ofStops, source, m_options.quiet, itinerary, &roads);
  if (becomesWay && !m_options.check && IsSameFile(source, target)) {
    Complain(FormatText(kTextTargetIsSource, ShownPath(source)));
    return false;
  }
  const bool hasWay = m_legs->Calculate(source, itinerary);
  if (!becomesWay) return true;
  ReplaceStopsByWay(itinerary);
  ApplyListOperations(ofWay, source, m_options.quiet, itinerary);
  if (!hasWay || itinerary.points.empty())
    Complain(FormatText(kTextNoWayToWrite, ShownPath(source)));
  return hasWay && !itinerary.points.empty();
}

Outcome Conversion::Write(const WideString& source, const WideString& target) {
  WriteOptions options;
  options.option = m_options.split;
  options.silent = true;
  options.checks = !m_options.quiet || m_options.strict || m_options.check;
  options.keepsNothing = m_options.check;
  m_front.SetSubject(target);
  const TripWrite trip = m_driver.Export(target, m_row, options);
  if (trip.refusal == WriteRefusal::kSourceHoldsMore)
    Complain(FormatText(kTextTargetIsSource, ShownPath(source)));
  const uint64_t countries = trip.notes.Count(ConversionNote::kCountryNotFound);
  if (countries > 0 && !m_options.quiet) {
    Complain(FormatText(kTextCountriesNotFound, ShownPath(target), countries));
    if (const std::string remedy = CountryRemedy(m_options); !remedy.empty()) Complain(remedy);
  }
  if (trip.status != kStatusSuccess) return Outcome::kFailed;
  if (!trip.check) return Outcome::kConverted;
  Tell(source, target, *trip.check);
  return trip.check->HasLosses() ? Outcome::kWithLosses : Outcome::kConverted;
}

// Targets that are no file get links, which are shown unless a file is asked for.
Outcome Conversion::WriteLinks(const WideString& source, const WideString& target) {
  std::vector<std::string> links;
  m_context.takeLink = [&links](const std::string& link) {
    links.push_back(link);
    return uint32_t{kStatusSuccess};
  };
  LoadUserSettings();
  m_context.linkOptions = LinkOptionsFor(m_options.directions.wishes, CSettings::Instance());
  WriteOptions options;
  options.option = m_options.split;
  options.silent = true;
  m_front.SetSubject(source);
  const TripWrite trip = m_driver.Export(target, m_row, options);
  m_context.takeLink = {};
  if (trip.status != kStatusSuccess) return Outcome::kFailed;
  if (m_options.check) {
    if (!m_options.quiet) Complain(FormatText(kTextOnlyWritten, FormatLabel(m_row)));
    return Outcome::kConverted;
  }
  if (!m_options.output.empty()) {
    const uint32_t error = SaveLinks(target, links);
    if (error == kStatusSuccess) return Outcome::kConverted;
    Complain(target,
             std::string(LoadTextUtf8(kTextCannotBeWritten)) + DescribeReason(error, target));
    return Outcome::kFailed;
  }
  m_outputFailed = !PrintLinks(links) || m_outputFailed;
  // Of a folder they would be too many.
  if (!m_inFolder && OpenLinks(links) != kStatusSuccess && !m_options.quiet)
    Complain(FormatText(kTextLinksNotOpened));
  return Outcome::kConverted;
}

void Conversion::Tell(const WideString& source, const WideString& target, const LossCheck& check) {
  if (m_options.json) {
    OutputSink sink;
    WriteJsonCheck(sink, source, target, check);
    sink.Put('\n');
    m_outputFailed = !sink.Finish() || m_outputFailed;
  } else if (!m_options.quiet && (!m_inFolder || check.HasLosses())) {
    WriteError(DescribeCheck(source, target, check));
  }
}

void Conversion::ShowProgress(size_t done, size_t count) const {
  if (m_options.quiet || !IsErrorTerminal()) return;
  WriteError(count == 0 ? std::string("\r\x1B[K") : fmt::format("\r\x1B[K{}/{}\r", done, count));
}

}  // namespace

int RunConversion(const Options& options, const FormatTable& table, ConversionContext& context) {
  const WideString& source = options.tokens[0];
  const WideString& key = options.tokens[1];
  const CItineraryFormat* row = FindWriter(table, ToLowerAscii(key));
  if (!row) {
    Complain(FormatText(kTextUnknownKey, ShownPath(key)));
    return kExitWrongUsage;
  }
  uint32_t error = kStatusSuccess;
  const uint32_t attributes = FileAttributes(source, &error);
  if (!IsWebAddress(source) && attributes == kNoAttributes && error == kStatusFileNotFound) {
    Complain(FormatText(kTextNoSource, ShownPath(source)));
    return kExitWrongUsage;
  }
  if (options.directions.withWay && !row->facts.takesWay) {
    Complain(FormatText(kTextWithWayRows));
    return kExitWrongUsage;
  }
  // Never destroyed: to free a million points one by one takes longer than to end the process.
  static auto* const conversion = new Conversion(options, table, *row, context);
  const bool isFolder = attributes == kAttributeDirectory;
  if (!options.directions.directions)
    return isFolder ? conversion->ConvertFolder(source) : conversion->ConvertFile(source);

  PrepareServices();
  const DirectionsOptions& directions = options.directions;
  DirectionsChoice choice = ChooseDirections(
      options, directions.provider ? directions.provider : options.services.typed.provider);
  if (!choice.IsToBeAsked()) {
    Complain(choice.service.message);
    return choice.service.exitStatus;
  }
  conversion->SetDirections(std::move(choice));
  context.writesWay = directions.withWay;
  return isFolder ? conversion->ConvertFolder(source) : conversion->ConvertFile(source);
}
