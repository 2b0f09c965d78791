#include "conversion/write_trip.h"

#include <exception>
#include <new>
#include <utility>

#include "platform/folder.h"
#include "platform/scratch_folder.h"

namespace {

// Running out of memory is a failure like any other.
uint32_t CallWriter(FormatWriteFn write, const WideString& path, const CGpsPointArray& list,
                    const WriteOptions& options) {
  try {
    return write(path, list, options.option, options.silent);
  } catch (const std::bad_alloc&) {
    return kStatusOutOfMemory;
  } catch (const std::exception&) {
    return kStatusInternalError;
  }
}

TripWrite Write(const FormatTable& table, const CItineraryFormat& row, const WideString& path,
                const CGpsPointArray& list, const TripSource& source, const WriteOptions& options,
                ConversionContext& context) {
  TripWrite trip;
  context.Renew();
  {
    const ConversionScope scope(context);
    trip.status = CallWriter(row.write, path, list, options);
  }
  // Some devices' writers call it a success when a file could not be made. We don't.
  if (trip.status == kStatusSuccess && context.failure.platformError != kStatusSuccess)
    trip.status = kStatusFailure;
  if (trip.status != kStatusSuccess) trip.reason = context.failure;
  trip.notes = context.notes;
  trip.files = std::move(context.writtenFiles);
  if (trip.status == kStatusSuccess && options.checks)
    trip.check = CheckWrittenFiles(table, row, trip.files, list, source, context);
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
