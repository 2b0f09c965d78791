#include "conversion/conversion_notes.h"

namespace {

thread_local ConversionNotes* listener = nullptr;

}  // namespace

ConversionNotes::ConversionNotes() : m_outer(listener) { listener = this; }

ConversionNotes::~ConversionNotes() { listener = m_outer; }

void NoteConversion(EConversionNote note, uint64_t count) {
  if (listener) listener->m_counts[static_cast<size_t>(note)] += count;
}

void NoteWrittenFile(const WideString& path) {
  if (listener) listener->m_writtenFiles.push_back(path);
}
