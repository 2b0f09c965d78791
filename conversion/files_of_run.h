#pragma once

#include <set>

#include "base/wide_string.h"
#include "platform/folder.h"

/// The files that a run over several sources must leave alone.
class FilesOfRun {
 public:
  /// What a run may replace of what was there before it.
  enum class Replaces { kNothing, kAllButSources };

  explicit FilesOfRun(Replaces replaces) : m_replaces(replaces) {}

  /// A source of the run, whatever path leads to it.
  void AddSource(const WideString& path) {
    if (const std::optional<FileIdentity> identity = IdentityOf(path)) m_sources.insert(*identity);
  }

  /// Whether a file may be written: what the run itself has made may be made again.
  bool MayWrite(const WideString& path) {
    const std::optional<FileIdentity> identity = IdentityOf(path);
    if (!identity) m_made.insert(path);
    if (!identity || m_made.contains(path)) return true;
    return m_replaces == Replaces::kAllButSources && !m_sources.contains(*identity);
  }

 private:
  const Replaces m_replaces;
  std::set<FileIdentity> m_sources;
  std::set<WideString> m_made;  ///< were not there when they were asked for first
};
