#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

/// What services have answered for the present itinerary, so that nothing is asked twice. One for
/// the process; any thread may use it.
class LookupCache {
 public:
  static LookupCache& Instance();

  /// The answer that was kept for a question.
  std::optional<std::string> Find(const std::string& question) const;
  void Keep(const std::string& question, const std::string& answer);
  void Clear();

 private:
  mutable std::mutex m_mutex;
  std::map<std::string, std::string> m_answers;
};
