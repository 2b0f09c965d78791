#pragma once

#include "base/status.h"
#include "conversion/file_sink.h"
#include "platform/input_file.h"

// The two frames that nearly all formats share: open, work on bytes, close, and 1 for a file that
// could not be used. The cause is in `LastError`.

/// Reads the file at `path` and gives its bytes to `parse`, whose status is the result.
template <typename Parse>
uint32_t ReadFormatFile(const WideString& path, Parse&& parse) {
  InputFile file;
  if (file.Open(path) != kStatusSuccess) return kStatusFailure;
  return parse(file.Bytes());
}

/// Writes the file at `path` with `body`, a callable that takes a ByteSink&.
template <typename Body>
uint32_t WriteFormatFile(const WideString& path, Body&& body) {
  return WriteFileWith(path, body) == kStatusSuccess ? kStatusSuccess : kStatusFailure;
}
