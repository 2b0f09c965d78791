#include "conversion/write_trip.h"

#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <utility>

#include "base/text.h"
#include "conversion/streamed_check.h"
#include "conversion/text_encoding.h"
#include "platform/folder.h"
#include "platform/scratch_folder.h"

namespace {

// Running out of memory is a failure like any other.
template <typename WriteAll>
uint32_t CallWriter(WriteAll write) {
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
  try {
    check.emplace(*readers.front(), list, context);
  } catch (const std::exception&) {
    // Without a thread or memory for it the file is read when it is whole.
    return;
  }
  context.written = [&check](std::string_view bytes) { check->Take(bytes); };
}

// "trip.gpx" and 2 give "trip_2.gpx".
WideString PartPath(const WideString& path, size_t part) {
  const std::u16string_view name = NameIn(path);
  const size_t dot = name.rfind(u'.');
  const size_t nameStart = path.size() - name.size();
  const bool hasEnding = dot != std::u16string_view::npos && dot > 0;
  WideString numbered = path;
  numbered.insert(hasEnding ? nameStart + dot : path.size(),
                  u"_" + WidenAscii(std::to_string(part)));
  return numbered;
}

// Writes several files, each of which begins with the last stop of the one before.
uint32_t WriteParts(const CItineraryFormat& row, const WideString& path, const CGpsPointArray& list,
                    const WriteOptions& options) {
  const size_t count = list.Count();
  size_t part = 0;
  for (size_t start = 0; start < count;) {
    if (start != 0) --start;
    const size_t length = std::min(options.mostPoints, count - start);
    const uint32_t status = row.write(PartPath(path, ++part), CGpsWaypointList(list, start, length),
                                      options.option, options.silent);
    if (status != kStatusSuccess) return status;
    start += length;
  }
  return kStatusSuccess;
}

// Writes the list in the encoding told, where the format has none of its own.
uint32_t WriteEncoded(const CItineraryFormat& row, const WideString& path,
                      const CGpsPointArray& list, const WriteOptions& options,
                      ConversionContext& context) {
  std::optional<CGpsWaypointList> encoded;
  if (row.facts.text == TextForm::kNarrow && !context.encoding.empty()) {
    encoded = EncodedTexts(context.encoding, list);
    context.usesEncoding = true;
  }
  const CGpsPointArray& written = encoded ? *encoded : list;
  const bool isSplit = options.mostPoints > 1 && options.mostPoints < list.Count();
  if (isSplit) return WriteParts(row, path, written, options);
  return row.write(path, written, options.option, options.silent);
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
    trip.status = CallWriter([&] { return WriteEncoded(row, path, list, options, context); });
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
  }
  return trip;
}

}  // namespace

TripWrite WriteTrip(const FormatTable& table, const CItineraryFormat& row, const WideString& path,
                    const CGpsPointArray& list, const TripSource& source,
                    const WriteOptions& options, ConversionContext& context) {
  TripWrite trip;
  if (options.keepsNothing) {
    // It is written into a folder of its own that goes again.
    const ScratchFolder scratch;
    if (!scratch.Path().empty()) {
      return Write(table, row, JoinedPath(scratch.Path(), NameIn(path)), list, source, options,
                   context);
    }
    trip.status = kStatusFailure;
    trip.reason.platformError = scratch.Status();
    return trip;
  }
  const bool isSource = !source.path.empty() && !options.force && IsSameFile(source.path, path);
  if (isSource && source.HoldsMore()) {
    trip.status = kStatusDeclined;
    trip.refusal = WriteRefusal::kSourceHoldsMore;
    return trip;
  }
  return Write(table, row, path, list, source, options, context);
}
