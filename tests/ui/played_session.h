#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/point_list.h"

// A planning session that plays itself in a process of its own, to be killed at any moment. In the
// folder it leaves `notes`, a line for all that it has done so far, and what it has saved.

/// Plays until it is killed. The settings and what is kept for a crash lie below the folder as
/// well.
int PlaySession(const std::string& folder, uint32_t seed);

/// The environment variables that put settings and state below the folder.
void LiveIn(const std::string& folder);

/// What `notes` tells, in its order. Lists are told by the names of their points.
struct SessionNotes {
  std::vector<std::string> lists;  ///< as they were behind each edit
  std::string saved;               ///< the list that was saved last
  int32_t setting = -1;            ///< what was saved last as the setting `Export`
};
SessionNotes ReadSessionNotes(const std::string& folder);

/// The names of the points of a list, with a blank behind each.
std::string NamesIn(const CGpsPointArray& list);

/// The file that the session saves to.
std::string SavedFile(const std::string& folder);
