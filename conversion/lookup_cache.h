#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "model/point.h"

/// What a service has answered to one question; both parts are empty where it knew nothing.
struct LookupAnswer {
  std::optional<CGpsCoordinate> position;
  std::string text;
};

/// The answers of services, so that nothing is asked twice. Any thread may use it.
class LookupCache {
 public:
  /// The answer that was kept for a question.
  std::optional<LookupAnswer> Find(const std::string& question) const;
  void Keep(const std::string& question, const LookupAnswer& answer);
  void Clear();

 private:
  mutable std::mutex m_mutex;
  std::map<std::string, LookupAnswer> m_answers;
};
