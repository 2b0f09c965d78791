#include "conversion/write_trip.h"

#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <utility>

#include "base/text.h"
#include "conversion/streamed_check.h"
#include "conversion/text_encoding.h"
#include "io/byte_sink.h"
#include "platform/folder.h"
#include "platform/scratch_folder.h"

namespace {

// Running out of memory is a failure like any other.
template <typename Write>
uint32_t CallWriter(Write write) {
  try {
    return write();
  } catch (const std::bad_alloc&) {
    return kStatusOutOfMemory;
  } catch (const std::exception&) {
    return kStatusInternalError;
  }
}

// Begins the check that runs while the file is written, where there can be one. A short list is
// read back in less time than a thread takes to start.
void BeginCheck(const FormatTable& table, const CItineraryFormat& row, const CGpsPointArray& list,
                ConversionContext& context, std::optional<StreamedCheck>& check) {
  constexpr size_t kShortList = 2000;
  if (list.Count() <= kShortList) return;
  const std::vector<const CItineraryFormat*> readers = ReadersOf(table, row);
  if (readers.empty() || !readers.front()->facts.handsPointsOn) return;
  // Texts in another encoding are decoded when all of them are there.
  if (row.facts.text == TextForm::kNarrow && !context.encoding.empty()) return;
  try {
    check.emplace(*readers.front(), list, context);
  } catch (const std::exception&) {
    // Without a thread or memory for it the file is read when it is whole.
    return;
  }
  context.written = [&check](std::string_view bytes) { check->Take(bytes); };
}

// Whether a name has an ending: a dot at its start hides it, and nothing else.
bool HasEnding(std::u16string_view name) {
  const size_t dot = name.rfind(u'.');
  return dot != std::u16string_view::npos && dot > 0;
}

// "trip.gpx" and 2 give "trip_2.gpx", "trip" and 2 "trip_2".
WideString PartPath(const WideString& path, size_t part) {
  WideString numbered = path;
  const size_t place = HasEnding(NameIn(path)) ? path.rfind(u'.') : path.size();
  numbered.insert(place, u"_" + WidenAscii(std::to_string(part)));
  return numbered;
}

// Writes several files, each of which begins with the last stop of the one before.
uint32_t WriteParts(const CItineraryFormat& row, const WideString& path, const CGpsPointArray& list,
                    size_t mostPoints, uint32_t option, bool silent) {
  const size_t count = list.Count();
  size_t part = 0;
  for (size_t start = 0; start < count;) {
    if (start != 0) --start;
    const size_t length = std::min(mostPoints, count - start);
    const uint32_t status =
        row.write(PartPath(path, ++part), CGpsWaypointList(list, start, length), option, silent);
    if (status != kStatusSuccess) return status;
    start += length;
  }
  return kStatusSuccess;
}

// Writers that split put the number of a part in front of the last dot of a path, which in a name
// without an ending would be somewhere else; others know no parts.
uint32_t WriteFiles(const CItineraryFormat& row, const WideString& path, const CGpsPointArray& list,
                    const WriteOptions& options) {
  const bool isTold =
      row.facts.isFile && row.facts.option == WriterOption::kSplit && options.option > 1;
  const size_t mostPoints = isTold ? options.option : options.fit.mostPoints;
  const bool isSplit = mostPoints > 1 && mostPoints < list.Count();
  if (!isSplit || (isTold && HasEnding(NameIn(path))))
    return row.write(path, list, options.option, options.silent);
  return WriteParts(row, path, list, mostPoints, isTold ? 0 : options.option, options.silent);
}

// Calls `write` with the list in the encoding told, where the format has none of its own.
template <typename Write>
uint32_t WithEncoding(const CItineraryFormat& row, const CGpsPointArray& list,
                      ConversionContext& context, Write write) {
  if (row.facts.text != TextForm::kNarrow || context.encoding.empty()) return write(list);
  context.usesEncoding = true;
  return write(EncodedTexts(context.encoding, list));
}

TripWrite Write(const FormatTable& table, const CItineraryFormat& row, const WideString& path,
                const CGpsPointArray& list, const TripSource& source, const WriteOptions& options,
                ConversionContext& context) {
  TripWrite trip;
  context.Renew();
  std::optional<StreamedCheck> streamed;
  if (options.checks) BeginCheck(table, row, list, context, streamed);
  {
    const ConversionScope scope(context);
    trip.status = CallWriter([&] {
      return WithEncoding(row, list, context, [&](const CGpsPointArray& encoded) {
        return WriteFiles(row, path, encoded, options);
      });
    });
  }
  context.written = nullptr;
  // Some devices' writers call it a success when a file could not be made. We don't.
  if (trip.status == kStatusSuccess && context.failure.platformError != kStatusSuccess)
    trip.status = kStatusFailure;
  if (trip.status != kStatusSuccess) trip.reason = context.failure;
  trip.notes = context.notes;
  trip.files = std::move(context.writtenFiles);
  if (trip.status == kStatusSuccess && options.checks) {
    const std::optional<LossReport> known = streamed ? streamed->Finish() : std::nullopt;
    trip.check = CheckWrittenFiles(table, row, trip.files, list, known, source, context);
    trip.check->fit = options.fit;
  }
  return trip;
}

// Into a folder of its own that goes again.
TripWrite WriteToScratch(const FormatTable& table, const CItineraryFormat& row,
                         const WideString& path, const CGpsPointArray& list,
                         const TripSource& source, const WriteOptions& options,
                         ConversionContext& context) {
  const ScratchFolder scratch;
  if (scratch.Path().empty()) {
    TripWrite trip;
    trip.status = kStatusFailure;
    trip.reason.platformError = scratch.Status();
    return trip;
  }
  context.durability = Durability::kLeftToTheSystem;
  return Write(table, row, JoinedPath(scratch.Path(), NameIn(path)), list, source, options,
               context);
}

/// Watches over the files that must not be replaced. It looks at the files that a writer really
/// makes: some make several, or give one a name of their own.
class FileGuard {
 public:
  FileGuard(const TripSource& source, const WriteOptions& options, ConversionContext& context)
      : m_source(source), m_options(options), m_context(context) {
    if (!options.force) context.guard = [this](const WideString& path) { return Judge(path); };
  }
  ~FileGuard() { m_context.guard = nullptr; }
  FileGuard(const FileGuard&) = delete;
  FileGuard& operator=(const FileGuard&) = delete;

  void AllowSource() {
    m_allowsSource = true;
    m_refusal = WriteRefusal::kNone;
  }

  void TellRefusal(TripWrite& trip) const {
    if (m_refusal == WriteRefusal::kNone) return;
    trip.status = kStatusDeclined;
    trip.refusal = m_refusal;
    trip.refusedFile = m_refused;
  }

 private:
  uint32_t Judge(const WideString& path) {
    if (IsSource(path)) {
      if (!m_allowsSource) return Refuse(WriteRefusal::kSourceHoldsMore, path);
    } else if (m_options.run && !m_options.run->MayWrite(path)) {
      return Refuse(WriteRefusal::kKept, path);
    }
    return kStatusSuccess;
  }

  bool IsSource(const WideString& path) const {
    return std::any_of(m_source.paths.begin(), m_source.paths.end(),
                       [&path](const WideString& source) { return IsSameFile(source, path); });
  }

  uint32_t Refuse(WriteRefusal refusal, const WideString& path) {
    m_refusal = refusal;
    m_refused = path;
    return kStatusDeclined;
  }

  const TripSource& m_source;
  const WriteOptions& m_options;
  ConversionContext& m_context;
  bool m_allowsSource = false;
  WriteRefusal m_refusal = WriteRefusal::kNone;
  WideString m_refused;
};

// The source may be replaced only when nothing is lost, which must be known before.
TripWrite WriteOverSource(const FormatTable& table, const CItineraryFormat& row,
                          const WideString& path, const CGpsPointArray& list,
                          const TripSource& source, const WriteOptions& options,
                          ConversionContext& context, TripWrite refused) {
  WriteOptions checking = options;
  checking.checks = true;
  TripWrite tried = WriteToScratch(table, row, path, list, source, checking, context);
  if (tried.status != kStatusSuccess) return tried;
  const LossCheck& check = *tried.check;
  if (check.outcome != LossCheck::Outcome::kChecked || check.HasLosses()) {
    refused.refusal = WriteRefusal::kSourceWouldLose;
    refused.check = std::move(tried.check);
    return refused;
  }
  context.durability = options.durability;
  TripWrite trip = Write(table, row, path, list, source, options, context);
  // It is another file now, and still not one for other sources to replace.
  if (options.run) options.run->AddSource(path);
  return trip;
}

}  // namespace

TripWrite WriteTrip(const FormatTable& table, const CItineraryFormat& row, const WideString& path,
                    const CGpsPointArray& list, const TripSource& source,
                    const WriteOptions& options, ConversionContext& context) {
  if (options.keepsNothing) return WriteToScratch(table, row, path, list, source, options, context);
  FileGuard guard(source, options, context);
  context.durability = options.durability;
  TripWrite trip = Write(table, row, path, list, source, options, context);
  guard.TellRefusal(trip);
  if (trip.refusal != WriteRefusal::kSourceHoldsMore || source.HoldsMore() ||
      options.leavesPointsOut) {
    return trip;
  }
  guard.AllowSource();
  trip = WriteOverSource(table, row, path, list, source, options, context, std::move(trip));
  guard.TellRefusal(trip);
  return trip;
}

TripWrite WriteTripTo(ByteSink& sink, const CItineraryFormat& row, const CGpsPointArray& list,
                      const TripSource& source, const WriteOptions& options,
                      ConversionContext& context) {
  TripWrite trip;
  context.Renew();
  context.Begin(ConversionProgress::Stage::kWriting);
  trip.status = CallWriter([&] {
    return WithEncoding(row, list, context, [&](const CGpsPointArray& encoded) {
      return row.facts.emit(sink, encoded, options.option, context);
    });
  });
  if (trip.status != kStatusSuccess) trip.reason = context.failure;
  trip.notes = context.notes;
  if (trip.status == kStatusSuccess && options.checks) {
    trip.check = CheckStream(list, source);
    trip.check->fit = options.fit;
  }
  return trip;
}
