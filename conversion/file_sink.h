#pragma once

#include <optional>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "io/byte_sink.h"
#include "platform/output_file.h"

/// A sink that fills a file, which appears whole in `Commit` or not at all. Once the conversion is
/// cancelled nothing more is written.
class FileSink final : public ByteSink {
 public:
  FileSink(const WideString& path, ConversionContext& context)
      : m_path(path), m_context(context), m_refusal(context.guard ? context.guard(path) : 0) {
    if (m_refusal == kStatusSuccess) m_file.emplace(path, context.durability);
    m_context.Begin(ConversionProgress::Stage::kWriting);
  }

  /// 0, the guard's refusal, or the platform's error code of the first failure.
  uint32_t Status() const { return m_file ? m_file->Status() : m_refusal; }

  /// Puts the file in its place. Returns `Status`, or kStatusCancelled.
  uint32_t Commit() {
    Drain();
    if (!m_context.Look(m_size)) return kStatusCancelled;
    const uint32_t status = m_file ? m_file->Commit() : m_refusal;
    if (status == kStatusSuccess) m_context.writtenFiles.push_back(m_path);
    return status;
  }

 private:
  void Consume(std::string_view bytes) override {
    m_size += bytes.size();
    if (!m_context.GoesOn(m_size) || !m_file) return;
    if (m_context.written) m_context.written(bytes);
    m_file->Write(bytes);
  }

  const WideString m_path;
  ConversionContext& m_context;
  const uint32_t m_refusal;
  std::optional<OutputFile> m_file;
  uint64_t m_size = 0;
};
