#include "app/list_operations.h"

void ApplyListOperations(const std::vector<ListOperation>& operations, const WideString& source,
                         bool quiet, CGpsRoute& list, const RoadOrder* roads) {
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
        OrderStops(source, {operation.kind == Kind::kOptimizeBest, roads, quiet}, list);
        break;
    }
  }
}
