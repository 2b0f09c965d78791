#pragma once

#include <type_traits>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "conversion/file_sink.h"
#include "conversion/format_table.h"
#include "platform/input_file.h"

// The frames that nearly all formats share. The functions of the format table open and close; what
// they give to the inner ones are bytes to read and a sink to write to, and the context in place.

/// What a format answers to a file that could not be used, told by the platform's error code. The
/// code itself is in the context.
using FailureTeller = uint32_t (*)(uint32_t platformError);

/// Most formats tell no more than that.
inline uint32_t TellFailure(uint32_t) { return kStatusFailure; }
inline uint32_t TellPlatformError(uint32_t platformError) { return platformError; }

/// Reads the file at `path` and gives its bytes to `parse`, whose status is the result.
template <typename Parse>
uint32_t ReadFileWith(const WideString& path, ConversionContext& context, Parse&& parse,
                      FailureTeller tell = TellFailure) {
  InputFile file;
  if (const uint32_t error = context.Keep(file.Open(path))) return tell(error);
  context.Begin(ConversionProgress::Stage::kReading, file.Bytes().size());
  const uint32_t status = parse(file.Bytes());
  return context.IsCancelled() ? static_cast<uint32_t>(kStatusCancelled) : status;
}

/// Writes the file at `path` with `body`, a callable that takes a ByteSink& and may give a status.
/// Unless that is 0 and everything was written, an existing file is left alone.
template <typename Body>
uint32_t WriteFileWith(const WideString& path, ConversionContext& context, Body&& body,
                       FailureTeller tell = TellFailure) {
  FileSink sink(path, context);
  uint32_t error = sink.Status();
  if (error == kStatusSuccess) {
    if constexpr (std::is_void_v<std::invoke_result_t<Body, ByteSink&>>) {
      body(static_cast<ByteSink&>(sink));
    } else if (const uint32_t status = body(static_cast<ByteSink&>(sink))) {
      return status;
    }
    error = sink.Commit();
  }
  if (error == kStatusSuccess || error == kStatusCancelled) return error;
  return tell(context.Keep(error));
}

/// The reader whose inner function is `kParse`.
template <auto kParse, FailureTeller kTell = TellFailure>
uint32_t ReadFileOf(const WideString& path, PointLists& lists, bool) {
  ContextInPlace context;
  return ReadFileWith(
      path, *context, [&](std::string_view bytes) { return kParse(bytes, lists, *context); },
      kTell);
}

/// The inner writing function of a body that takes no more than sink and list, and the option too
/// or the context too, or both, when it wants them.
template <auto kBody>
uint32_t EmitOf(ByteSink& sink, const CGpsPointArray& list, uint32_t option,
                ConversionContext& context) {
  using Body = decltype(kBody);
  if constexpr (std::is_invocable_v<Body, ByteSink&, const CGpsPointArray&, bool,
                                    ConversionContext&>) {
    kBody(sink, list, option != 0, context);
  } else if constexpr (std::is_invocable_v<Body, ByteSink&, const CGpsPointArray&,
                                           ConversionContext&>) {
    kBody(sink, list, context);
  } else if constexpr (std::is_invocable_v<Body, ByteSink&, const CGpsPointArray&, bool>) {
    kBody(sink, list, option != 0);
  } else {
    kBody(sink, list);
  }
  return kStatusSuccess;
}

/// The writer whose inner function is `kEmit`.
template <FormatEmitFn kEmit, FailureTeller kTell = TellFailure>
uint32_t WriteFileOf(const WideString& path, const CGpsPointArray& list, uint32_t option, bool) {
  ContextInPlace context;
  return WriteFileWith(
      path, *context, [&](ByteSink& sink) { return kEmit(sink, list, option, *context); }, kTell);
}

/// The same for a body.
template <auto kBody, FailureTeller kTell = TellFailure>
inline constexpr FormatWriteFn kWriterOf = WriteFileOf<EmitOf<kBody>, kTell>;
