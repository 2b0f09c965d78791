#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/console_front.h"
#include "app/conversion_sources.h"
#include "app/leg_calculation.h"
#include "app/options.h"
#include "app/run_tally.h"
#include "conversion/conversion_context.h"
#include "conversion/conversion_driver.h"
#include "conversion/files_of_run.h"
#include "conversion/format_table.h"

/// One run over a file, over several, or over folders.
class ConversionRun {
 public:
  ConversionRun(const Options& options, const FormatTable& table, const CItineraryFormat& row,
                uint32_t option, ConversionContext& context);

  /// Has legs asked for before each itinerary is written.
  void SetDirections(DirectionsChoice choice) { m_legs.emplace(m_options, std::move(choice)); }

  // Each gives the exit status.

  /// One file, beside which the target lies unless the options name another.
  int ConvertOne(const WideString& source);
  /// Every file into a target of its own.
  int ConvertEach(const std::vector<ConversionSource>& sources);
  /// All files into one target.
  int Merge(const std::vector<ConversionSource>& sources);

 private:
  Outcome Convert(const ConversionSource& source, const WideString& target);
  uint32_t Read(const ConversionSource& from, bool append);
  Outcome FinishRead(const ConversionSource& from, uint32_t status);
  void PrintFailure(const WideString& source, const WideString& target, uint32_t status);
  void TellLookups(const WideString& source) const;
  bool HasUseForEncoding(const WideString& source);
  bool Prepare(const WideString& source, const WideString& target);
  Outcome PrepareAndWrite(const WideString& source, const WideString& target);
  Outcome Write(const WideString& source, const WideString& target);
  TripWrite Export(const WideString& target, const WriteOptions& options);
  Outcome WriteLinks(const WideString& source, const WideString& target);
  Outcome SaveLinks(const WideString& target, const std::vector<std::string>& links);
  Outcome Finish(const WideString& source, const WideString& target, TripWrite trip);
  Outcome TellRefusal(const WideString& source, const TripWrite& trip);
  void TellCheck(const WideString& source, const WideString& target, const LossCheck& check);
  /// Keeps the message for the file's object. Gives false, for what ends with it.
  bool Complain(const std::string& message);

  bool MakesFile() const;
  WideString TargetOfOne(const WideString& source) const;
  WideString TargetOfOneOfMany(const ConversionSource& source) const;
  WideString TargetBeside(const WideString& source) const;
  void ClearUnfinishedBeside(const WideString& target) const;
  void SyncWhatWasWritten(const std::set<WideString>& folders);
  void ShowProgress(size_t done, size_t count) const;
  int ExitStatus() const;

  const Options& m_options;
  const CItineraryFormat& m_row;
  const uint32_t m_option;  ///< of the writer
  ConversionContext& m_context;
  ConsoleFront m_front;
  ConversionDriver m_driver;
  std::optional<LegCalculation> m_legs;
  RunTally m_tally;
  std::optional<FilesOfRun> m_files;
  bool m_leavesPointsOut = false;  ///< the itinerary lacks points of the source at hand
  bool m_isOneOfMany = false;      ///< the file at hand
  bool m_outputFailed = false;
  bool m_hasGraveLosses = false;  ///< of any file
  bool m_isWrongUsage = false;
  std::string m_error;  ///< what was told last about the file at hand
};
