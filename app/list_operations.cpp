#include "app/list_operations.h"

void ApplyListOperations(const std::vector<ListOperation>& operations, const WideString& source,
                         bool quiet, CGpsRoute& list, const RoadOrder* roads) {
  using EKind = ListOperation::EKind;
  for (const ListOperation& operation : operations) {
    switch (operation.kind) {
      case EKind::kReverse:
        list.Reverse();
        break;
      case EKind::kSort:
        list.SortByName();
        break;
      case EKind::kUnique:
        list.SortAndUnique();
        break;
      case EKind::kSimplify:
        list.Simplify(operation.metres);
        break;
      case EKind::kOptimize:
      case EKind::kOptimizeBest:
        OrderStops(source, {operation.kind == EKind::kOptimizeBest, roads, quiet}, list);
        break;
    }
  }
}
