#pragma once

#include "core/byte_sink.h"
#include "platform/console.h"

/// A sink that fills standard output.
class OutputSink final : public ByteSink {
 public:
  ~OutputSink() override { Drain(); }

 private:
  void Consume(std::string_view bytes) override { WriteOutput(bytes); }
};

/// Appends `text` as a JSON string. Bytes that are no UTF-8 come out as U+FFFD.
void WriteJsonString(ByteSink& sink, std::string_view text);
