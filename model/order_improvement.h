#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <vector>

/// The cost of the way between two stops, the same in both directions.
using StopCost = std::function<uint32_t(size_t a, size_t b)>;

/// Looks for an order of the same stops with a smaller sum of costs until `deadline` or a stop;
/// first and last stay. A few stops get the best order of all at once. The sum never grows.
std::vector<size_t> ImproveOrder(const std::vector<size_t>& order, const StopCost& cost,
                                 std::chrono::steady_clock::time_point deadline,
                                 const std::stop_token& stop);
