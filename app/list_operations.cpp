#include "app/list_operations.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>

#include "app/console_text.h"
#include "base/format_text.h"
#include "base/measure_text.h"
#include "base/text_ids.h"
#include "model/itinerary_optimizer.h"
#include "settings/settings.h"

namespace {

// How long `--optimize=best` goes on.
constexpr std::chrono::seconds kTimeToImprove{2};

std::string ShownLength(uint64_t metres) {
  const uint64_t shown = std::min<uint64_t>(metres, std::numeric_limits<uint32_t>::max());
  return FormatDistance(static_cast<uint32_t>(shown), CSettings::Instance().distMiles);
}

std::vector<size_t> ListOrder(const CGpsPointArray& list) {
  std::vector<size_t> order(list.Count());
  for (size_t i = 0; i < order.size(); ++i) order[i] = i;
  return order;
}

void Optimise(const WideString& source, bool isBest, bool quiet, CGpsRoute& list) {
  CGpsWaypointList ordered;
  CItineraryOptimizer optimizer(list);
  std::vector<size_t> order = optimizer.Optimise(false);
  const uint64_t before = optimizer.Length(ListOrder(list), false);
  const uint64_t after = optimizer.Length(order, false);
  if (!quiet)
    Complain(
        FormatText(kTextOptimised, ShownPath(source), ShownLength(after), ShownLength(before)));
  if (isBest) {
    order = optimizer.Improve(order, false, kTimeToImprove);
    const uint64_t improved = optimizer.Length(order, false);
    if (!quiet)
      Complain(FormatText(kTextImproved, ShownPath(source), ShownLength(after - improved),
                          ShownLength(improved)));
  }
  optimizer.FillInOrder(ordered, order);
  list.Assign(ordered);
}

}  // namespace

void ApplyListOperations(const std::vector<ListOperation>& operations, const WideString& source,
                         bool quiet, CGpsRoute& list) {
  using Kind = ListOperation::Kind;
  for (const ListOperation& operation : operations) {
    switch (operation.kind) {
      case Kind::kReverse:
        list.Reverse();
        break;
      case Kind::kSort:
        list.SortByName();
        break;
      case Kind::kUnique:
        list.SortAndUnique();
        break;
      case Kind::kSimplify:
        list.Simplify(operation.metres);
        break;
      case Kind::kOptimize:
      case Kind::kOptimizeBest:
        Optimise(source, operation.kind == Kind::kOptimizeBest, quiet, list);
        break;
    }
  }
}
