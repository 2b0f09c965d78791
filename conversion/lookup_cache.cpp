#include "conversion/lookup_cache.h"

std::optional<LookupAnswer> LookupCache::Find(const std::string& question) const {
  const std::lock_guard lock(m_mutex);
  const auto found = m_answers.find(question);
  if (found == m_answers.end()) return std::nullopt;
  return found->second;
}

void LookupCache::Keep(const std::string& question, const LookupAnswer& answer) {
  const std::lock_guard lock(m_mutex);
  m_answers[question] = answer;
}

void LookupCache::Clear() {
  const std::lock_guard lock(m_mutex);
  m_answers.clear();
}
