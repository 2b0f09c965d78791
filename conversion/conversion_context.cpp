#include "conversion/conversion_context.h"

#include <utility>

namespace {

// How many bytes go by between two looks at who may want to cancel.
constexpr uint64_t kLookEvery = uint64_t{1} << 18;

// The context of the innermost scope.
thread_local ConversionContext* contextInPlace = nullptr;

}  // namespace

void ConversionContext::Renew() {
  notes = {};
  failure = {};
  writtenFiles.clear();
  csvLayouts.found.reset();
  csvLayouts.contradicting.reset();
  csvLayouts.isNotFound = false;
  m_isUnicode = false;
  m_isCancelled = false;
}

void ConversionContext::Begin(ConversionProgress::Stage stage, uint64_t bytesInAll) {
  m_progress = {stage, 0, bytesInAll};
  const bool isWatched = progress || stop.stop_possible();
  m_nextLook = isWatched || m_isCancelled ? 0 : std::numeric_limits<uint64_t>::max();
}

bool ConversionContext::Look(uint64_t bytesDone) {
  if (m_isCancelled) return false;
  m_progress.bytesDone = bytesDone;
  m_isCancelled = stop.stop_requested() || (progress && !progress(m_progress));
  m_nextLook = m_isCancelled ? 0 : bytesDone + kLookEvery;
  return !m_isCancelled;
}

ConversionContext ConversionContext::ForReadingBack() const {
  ConversionContext context;
  context.csvLayouts.forReading = csvLayouts.written;
  context.encoding = encoding;
  context.lookups.isOffline = true;
  if (progress) {
    context.progress = [tell = progress](ConversionProgress told) {
      told.stage = ConversionProgress::Stage::kChecking;
      return tell(told);
    };
  }
  context.stop = stop;
  return context;
}

ConversionScope::ConversionScope(ConversionContext& context)
    : m_outer(std::exchange(contextInPlace, &context)) {}

ConversionScope::~ConversionScope() { contextInPlace = m_outer; }

ContextInPlace::ContextInPlace() : m_context(contextInPlace ? *contextInPlace : m_own.emplace()) {}
