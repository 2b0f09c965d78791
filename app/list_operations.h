#pragma once

#include <cstdint>
#include <vector>

#include "app/stop_order.h"
#include "base/wide_string.h"
#include "model/point_list.h"

/// What is done with an itinerary between reading and writing.
struct ListOperation {
  enum class Kind { kReverse, kSort, kUnique, kSimplify, kOptimize, kOptimizeBest };

  Kind kind;
  uint32_t metres = 0;  ///< for kSimplify
};

/// Does them in their order, and tells on standard error how long the way became, unless `quiet`.
/// `source` is the file that the itinerary comes from. With `roads` the stops are ordered by the
/// ways between them.
void ApplyListOperations(const std::vector<ListOperation>& operations, const WideString& source,
                         bool quiet, CGpsRoute& list, const RoadOrder* roads = nullptr);
