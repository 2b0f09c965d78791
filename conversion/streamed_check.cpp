#include "conversion/streamed_check.h"

#include <exception>

#include "base/status.h"
#include "conversion/list_choice.h"

StreamedCheck::StreamedCheck(const CItineraryFormat& reader, const CGpsPointArray& list,
                             const ConversionContext& context)
    : m_reader(reader), m_list(list), m_context(context.ForReadingBack()) {
  // The converting thread tells of the progress.
  m_context.progress = nullptr;
  m_context.incoming = [this](char* data, size_t size) { return m_pipe.Read(data, size); };
  m_context.watcher = this;
  m_thread = std::thread([this] { Read(); });
}

StreamedCheck::~StreamedCheck() { End(); }

std::optional<LossReport> StreamedCheck::Finish() {
  End();
  std::erase_if(m_lists, [](const auto& list) { return list->points.empty(); });
  const std::vector<size_t> chosen = SelectLists(m_lists, ListChoice());
  if (m_status != kStatusSuccess || chosen.size() != 1) return std::nullopt;
  const auto found = m_comparisons.find(m_lists[chosen[0]].get());
  if (found == m_comparisons.end() || found->second.Count() != m_list.Count()) return std::nullopt;
  return found->second.Report();
}

bool StreamedCheck::Takes(const CGpsPointArray& list, const CGpsPoint& point) {
  if (&list != m_current) {
    m_current = &list;
    m_comparison = &m_comparisons.try_emplace(&list, m_list).first->second;
  }
  m_comparison->Take(point);
  // A list without any point would be no list.
  return !list.points.empty();
}

void StreamedCheck::Read() {
  try {
    const ConversionScope scope(m_context);
    m_status = m_reader.read(WideString(), m_lists, /*silent=*/true);
  } catch (...) {
    // Whatever it was comes up again when the file is read in one piece.
    m_status = kStatusFailure;
  }
  m_pipe.CloseReading();
}

void StreamedCheck::End() {
  m_pipe.CloseWriting();
  if (m_thread.joinable()) m_thread.join();
}
