#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/conversion_front.h"
#include "conversion/format_table.h"
#include "conversion/read_trip.h"
#include "conversion/write_trip.h"
#include "model/point_list.h"

/// Whether the driver keeps the state of the itinerary at the last load or save. Where nobody will
/// be asked whether changes may be lost, a copy of all points is not worth its memory.
enum class ChangeTracking { kOn, kOff };

/// A kind of link that can be read as an itinerary.
struct LinkReader {
  bool (*accepts)(const WideString& text);
  CItineraryFormat row;  ///< only `read` counts; its path is the link
};

/// The way from a file to the current itinerary and from there to another file.
class ConversionDriver {
 public:
  /// `front` and `context`, which every read and write of this driver uses, must outlive it.
  ConversionDriver(FormatTable formats, ConversionFront& front, ConversionContext& context,
                   ChangeTracking tracking = ChangeTracking::kOn);

  /// Reads a file into `current`, behind what is there with `append`, and reports the result to
  /// the user. Returns the status: 0, kStatusDeclined, or what the message was about.
  uint32_t OpenFile(const WideString& path, bool append, bool silent);

  /// The same with more to say. `bytes`: those of a file that has no path, such as standard input.
  uint32_t Open(const WideString& path, bool append, const ReadOptions& options);
  uint32_t OpenBytes(std::string_view bytes, bool append, const ReadOptions& options);

  /// Writes `current` with a row's writer and reports a failure. Returns the status.
  uint32_t ExportTo(const WideString& path, const CItineraryFormat& row, bool silent);
  /// The same with more to say and to tell. A refusal is for the caller to report.
  TripWrite Export(const WideString& path, const CItineraryFormat& row,
                   const WriteOptions& options);
  /// The same to a stream instead of a file.
  TripWrite Stream(ByteSink& sink, const CItineraryFormat& row, const WriteOptions& options);

  /// Lets the user open a file, after a question when changes would be lost.
  void OpenCommand();

  /// Opens the first of the files that were dropped on the window. A path of more than 260
  /// characters is no file to the system that drops it.
  void DropFiles(const std::vector<WideString>& paths);

  /// Exports to a row of the export list, null for none: takes the name field's text for the
  /// itinerary's name, asks for the file unless the target is none, and writes.
  void ExportCommand(const CItineraryFormat* row);

  /// Reads a link that was typed into the name field, if one of `linkReaders` knows it and the
  /// user agrees.
  void InterpretLink(const WideString& text);

  /// True when the flow may go on: nothing has changed since the last load or save, or the user
  /// does not mind.
  bool ConfirmDiscard();

  const FormatTable table;
  CGpsRoute current;                    ///< the one itinerary of the running program
  ConversionNotes readNotes;            ///< of the last read, whatever came of it
  WideString sourcePath;                ///< the file opened last without appending; empty at start
  int32_t exportIndex = -1;             ///< entry of the export list chosen last; negative = none
  std::vector<LinkReader> linkReaders;  ///< in the order in which they are tried
  bool checksExports = false;           ///< the export command tells what the target does not hold
  /// Called behind each export of the command, whatever came of it. May be empty.
  std::function<void(const WideString& path, const CItineraryFormat& row, const TripWrite& trip)>
      exported;

 private:
  template <typename ReadNext>
  uint32_t Read(const WideString& path, bool append, ReadOptions options, ReadNext readNext);
  uint32_t MergeLists(TripRead& trip, const WideString& path, bool append);
  void TellFailure(const TripWrite& trip);
  void NameFromField();
  WideString DefaultExportName() const;
  void ExportFromCommand(const WideString& path, const CItineraryFormat& row);
  uint32_t Report(uint32_t status, const FailureReason& reason, const WideString& path,
                  bool append);
  uint32_t ReportSuccess(const WideString& path, bool append);
  void RememberState();

  ConversionFront& m_front;
  ConversionContext& m_context;
  const ChangeTracking m_tracking;
  TripSource m_source;  ///< of `current`
};
