#include "conversion/lookup_cache.h"

LookupCache& LookupCache::Instance() {
  static LookupCache cache;
  return cache;
}

std::optional<std::string> LookupCache::Find(const std::string& question) const {
  const std::lock_guard lock(m_mutex);
  const auto found = m_answers.find(question);
  if (found == m_answers.end()) return std::nullopt;
  return found->second;
}

void LookupCache::Keep(const std::string& question, const std::string& answer) {
  const std::lock_guard lock(m_mutex);
  m_answers[question] = answer;
}

void LookupCache::Clear() {
  const std::lock_guard lock(m_mutex);
  m_answers.clear();
}
