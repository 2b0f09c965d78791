#include "model/order_improvement.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

// All orders of this many stops between the ends are weighed in some milliseconds.
constexpr size_t kFewStops = 12;
// How many of the nearest stops are looked at as new neighbours of one.
constexpr size_t kNearest = 10;
// The longest run of stops that is moved in one piece.
constexpr size_t kLongestRun = 3;
// The longest of two neighbouring runs that a shake swaps.
constexpr size_t kLongestShake = 50;

/// The best of all orders, by the cheapest way through every set of inner stops that ends at each
/// of them.
std::vector<size_t> BestOrder(const std::vector<size_t>& order, const StopCost& cost) {
  constexpr uint64_t kNoWay = std::numeric_limits<uint64_t>::max();
  const size_t inner = order.size() - 2;
  const size_t sets = size_t{1} << inner;
  std::vector<uint64_t> cheapest(sets * inner, kNoWay);
  std::vector<uint8_t> former(sets * inner);
  std::vector<uint32_t> costs(inner * inner);
  for (size_t a = 0; a < inner; ++a) {
    cheapest[(size_t{1} << a) * inner + a] = cost(order[0], order[a + 1]);
    for (size_t b = 0; b < inner; ++b) costs[a * inner + b] = cost(order[a + 1], order[b + 1]);
  }

  for (size_t set = 1; set < sets; ++set) {
    for (size_t a = 0; a < inner; ++a) {
      const uint64_t soFar = cheapest[set * inner + a];
      if (soFar == kNoWay) continue;
      for (size_t b = 0; b < inner; ++b) {
        const size_t bit = size_t{1} << b;
        if ((set & bit) != 0) continue;
        const size_t next = (set | bit) * inner + b;
        if (soFar + costs[a * inner + b] >= cheapest[next]) continue;
        cheapest[next] = soFar + costs[a * inner + b];
        former[next] = static_cast<uint8_t>(a);
      }
    }
  }

  size_t end = 0;
  uint64_t least = kNoWay;
  for (size_t a = 0; a < inner; ++a) {
    const uint64_t whole = cheapest[(sets - 1) * inner + a] + cost(order[a + 1], order.back());
    if (whole < least) {
      least = whole;
      end = a;
    }
  }
  std::vector<size_t> best = order;
  size_t set = sets - 1;
  for (size_t place = inner; place > 0; --place) {
    best[place] = order[end + 1];
    const size_t before = former[set * inner + end];
    set &= ~(size_t{1} << end);
    end = before;
  }
  return best;
}

/// Local search with shakes. Stops are known by their place in the first order; everything that
/// changes the way is a turn of a stretch, so that a shake that did not help is undone by its turns
/// in reverse.
class Search {
 public:
  Search(const std::vector<size_t>& stops, const StopCost& cost, Clock::time_point deadline,
         const std::stop_token& stop)
      : m_stops(stops),
        m_cost(cost),
        m_deadline(deadline),
        m_stop(stop),
        m_way(stops.size()),
        m_place(stops.size()),
        m_isPending(stops.size(), true) {
    std::iota(m_way.begin(), m_way.end(), 0U);
    std::iota(m_place.begin(), m_place.end(), size_t{0});
    m_pending = m_way;
  }

  std::vector<size_t> Run() {
    if (!FindNearest()) return m_stops;
    Settle();
    while (!IsOver()) {
      m_turns.clear();
      const int64_t shaken = Shake();
      if (shaken + Settle() <= 0) continue;
      for (size_t i = m_turns.size(); i > 0; --i) Turn(m_turns[i - 1].first, m_turns[i - 1].second);
    }
    std::vector<size_t> order(m_stops.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = m_stops[m_way[i]];
    return order;
  }

 private:
  using Stop = uint32_t;

  bool IsOver() const { return m_stop.stop_requested() || Clock::now() >= m_deadline; }

  int64_t Cost(Stop a, Stop b) const { return m_cost(m_stops[a], m_stops[b]); }
  Stop At(size_t place) const { return m_way[place]; }
  size_t Last() const { return m_way.size() - 1; }

  bool FindNearest() {
    const size_t count = m_stops.size();
    m_nearestCount = std::min(kNearest, count - 1);
    m_nearest.reserve(count * m_nearestCount);
    std::vector<std::pair<int64_t, Stop>> others;
    for (Stop a = 0; a < count; ++a) {
      if (IsOver()) return false;
      others.clear();
      for (Stop b = 0; b < count; ++b) {
        if (b != a) others.emplace_back(Cost(a, b), b);
      }
      const auto end = others.begin() + static_cast<std::ptrdiff_t>(m_nearestCount);
      std::partial_sort(others.begin(), end, others.end());
      for (auto other = others.begin(); other != end; ++other) m_nearest.push_back(other->second);
    }
    return true;
  }

  void Turn(size_t first, size_t last) {
    for (; first < last; ++first, --last) {
      std::swap(m_way[first], m_way[last]);
      m_place[m_way[first]] = first;
      m_place[m_way[last]] = last;
    }
  }

  void TurnAndRemember(size_t first, size_t last) {
    if (first >= last) return;
    Turn(first, last);
    m_turns.emplace_back(first, last);
  }

  void LookAgainAt(Stop stop) {
    if (m_isPending[stop]) return;
    m_isPending[stop] = true;
    m_pending.push_back(stop);
  }

  /// Turns a stretch and lets its ends and their neighbours be looked at again.
  void TurnStretch(size_t first, size_t last) {
    TurnAndRemember(first, last);
    for (const size_t place : {first - 1, first, last, last + 1}) LookAgainAt(At(place));
  }

  /// Improves the way around every pending stop until nothing helps. Returns the change.
  int64_t Settle() {
    int64_t change = 0;
    size_t looks = 0;
    while (!m_pending.empty()) {
      const Stop stop = m_pending.back();
      m_pending.pop_back();
      m_isPending[stop] = false;
      while (const int64_t gain = ImproveAround(stop)) change -= gain;
      if (++looks % 256 == 0 && IsOver()) {
        for (const Stop left : m_pending) m_isPending[left] = false;
        m_pending.clear();
      }
    }
    return change;
  }

  int64_t ImproveAround(Stop stop) {
    if (const int64_t gain = TurnBehind(stop)) return gain;
    if (const int64_t gain = TurnBefore(stop)) return gain;
    return MoveRun(stop);
  }

  // Joins the stop to one near it, and the two that stood behind them to each other.
  int64_t TurnBehind(Stop stop) {
    const size_t place = m_place[stop];
    if (place == Last()) return 0;
    const int64_t edge = Cost(stop, At(place + 1));
    for (size_t n = 0; n < m_nearestCount; ++n) {
      const Stop near = m_nearest[stop * m_nearestCount + n];
      const int64_t joined = Cost(stop, near);
      if (joined >= edge) return 0;
      const size_t other = m_place[near];
      if (other == Last()) continue;
      const int64_t gain =
          edge + Cost(near, At(other + 1)) - joined - Cost(At(place + 1), At(other + 1));
      if (gain <= 0) continue;
      TurnStretch(std::min(place, other) + 1, std::max(place, other));
      return gain;
    }
    return 0;
  }

  // The same with the two in front.
  int64_t TurnBefore(Stop stop) {
    const size_t place = m_place[stop];
    if (place == 0) return 0;
    const int64_t edge = Cost(stop, At(place - 1));
    for (size_t n = 0; n < m_nearestCount; ++n) {
      const Stop near = m_nearest[stop * m_nearestCount + n];
      const int64_t joined = Cost(stop, near);
      if (joined >= edge) return 0;
      const size_t other = m_place[near];
      if (other == 0) continue;
      const int64_t gain =
          edge + Cost(near, At(other - 1)) - joined - Cost(At(place - 1), At(other - 1));
      if (gain <= 0) continue;
      TurnStretch(std::min(place, other), std::max(place, other) - 1);
      return gain;
    }
    return 0;
  }

  // Puts a run of stops that begins or ends with this one beside a stop near it.
  int64_t MoveRun(Stop stop) {
    const size_t place = m_place[stop];
    for (size_t length = 1; length <= kLongestRun; ++length) {
      for (const bool leads : {true, false}) {
        if (!leads && (length == 1 || place < length)) continue;
        const size_t first = leads ? place : place - (length - 1);
        const size_t last = first + length - 1;
        if (first == 0 || last >= Last()) continue;
        if (const int64_t gain = MoveRun(stop, first, last)) return gain;
      }
    }
    return 0;
  }

  int64_t MoveRun(Stop stop, size_t first, size_t last) {
    const int64_t freed = Cost(At(first - 1), At(first)) + Cost(At(last), At(last + 1)) -
                          Cost(At(first - 1), At(last + 1));
    const Stop tail = At(first) == stop ? At(last) : At(first);
    for (size_t n = 0; n < m_nearestCount; ++n) {
      const Stop near = m_nearest[stop * m_nearestCount + n];
      const int64_t joined = Cost(stop, near);
      if (joined >= freed) return 0;
      const size_t other = m_place[near];
      if (other >= first && other <= last) continue;
      // Between `near` and the stop behind it, or the one in front of it.
      for (const bool behind : {true, false}) {
        if (other == (behind ? Last() : 0)) continue;
        const size_t gap = behind ? other : other - 1;
        if (gap + 1 == first || gap == last) continue;
        const Stop far = behind ? At(other + 1) : At(other - 1);
        const int64_t gain = freed + Cost(near, far) - joined - Cost(tail, far);
        if (gain <= 0) continue;
        PutRun(first, last, gap, stop, near);
        return gain;
      }
    }
    return 0;
  }

  // Moves a run into the gap behind the place `gap`, so that `stop` stands beside `near`.
  void PutRun(size_t first, size_t last, size_t gap, Stop stop, Stop near) {
    const size_t length = last - first + 1;
    const bool forward = gap > last;
    const size_t start = forward ? first : gap + 1;
    const size_t end = forward ? gap : last;
    LookAgainAt(At(first - 1));
    LookAgainAt(At(last + 1));
    if (forward) {
      TurnAndRemember(last + 1, gap);
    } else {
      TurnAndRemember(gap + 1, first - 1);
    }
    TurnAndRemember(start, end);
    const size_t runStart = forward ? end - length + 1 : start;
    const size_t runEnd = runStart + length - 1;
    const size_t stopPlace = m_place[stop];
    const size_t nearPlace = m_place[near];
    if (std::max(stopPlace, nearPlace) - std::min(stopPlace, nearPlace) != 1)
      TurnAndRemember(runStart, runEnd);
    for (const size_t place : {runStart - 1, runStart, runEnd, runEnd + 1}) LookAgainAt(At(place));
  }

  // Swaps two neighbouring runs somewhere on the way. Returns the change.
  int64_t Shake() {
    const size_t inner = Last() - 1;
    const size_t longest = std::min(kLongestShake, inner / 2);
    const size_t left = 1 + Draw(longest);
    const size_t right = 1 + Draw(longest);
    const size_t first = 1 + Draw(inner - left - right + 1);
    const size_t middle = first + left;
    const size_t end = middle + right - 1;
    const int64_t change = Cost(At(first - 1), At(middle)) + Cost(At(end), At(first)) +
                           Cost(At(middle - 1), At(end + 1)) - Cost(At(first - 1), At(first)) -
                           Cost(At(middle - 1), At(middle)) - Cost(At(end), At(end + 1));
    for (const size_t place : {first - 1, first, middle - 1, middle, end, end + 1})
      LookAgainAt(At(place));
    TurnAndRemember(first, middle - 1);
    TurnAndRemember(middle, end);
    TurnAndRemember(first, end);
    return change;
  }

  size_t Draw(size_t below) { return static_cast<size_t>(m_random() % below); }

  const std::vector<size_t>& m_stops;
  const StopCost& m_cost;
  const Clock::time_point m_deadline;
  const std::stop_token& m_stop;
  std::vector<Stop> m_way;
  std::vector<size_t> m_place;  ///< of every stop on the way
  std::vector<Stop> m_pending;
  std::vector<bool> m_isPending;
  size_t m_nearestCount = 0;
  std::vector<Stop> m_nearest;
  std::vector<std::pair<size_t, size_t>> m_turns;  ///< since the last shake
  std::mt19937_64 m_random{1};
};

}  // namespace

std::vector<size_t> ImproveOrder(const std::vector<size_t>& order, const StopCost& cost,
                                 std::chrono::steady_clock::time_point deadline,
                                 const std::stop_token& stop) {
  if (order.size() <= 3) return order;
  if (order.size() <= kFewStops + 2) return BestOrder(order, cost);
  return Search(order, cost, deadline, stop).Run();
}
