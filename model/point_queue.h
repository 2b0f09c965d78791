#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <stdexcept>
#include <utility>

#include "model/block_pool.h"
#include "model/point.h"

/// The points of a list: a std::deque that is made with the first point. An empty std::deque holds
/// two thirds of a kilobyte, and a file may have a list in every six of its bytes. References to
/// points stay valid while points are added at either end; iterators don't.
class PointQueue {
  // Its pool is made before it and outlives it.
  struct Deque : private BlockPool, public std::deque<CGpsPoint, PooledBlocks<CGpsPoint>> {
    Deque() : deque(PooledBlocks<CGpsPoint>(*this)) {}
    Deque(const Deque& other) : deque(other, PooledBlocks<CGpsPoint>(*this)) {}
    Deque& operator=(const Deque&) = delete;
  };

 public:
  using value_type = Deque::value_type;
  using size_type = Deque::size_type;
  using difference_type = Deque::difference_type;
  using reference = Deque::reference;
  using const_reference = Deque::const_reference;
  using iterator = Deque::iterator;
  using const_iterator = Deque::const_iterator;
  using reverse_iterator = Deque::reverse_iterator;
  using const_reverse_iterator = Deque::const_reverse_iterator;

  PointQueue() = default;
  PointQueue(const PointQueue& other)
      : m_points(other.empty() ? nullptr : std::make_unique<Deque>(*other.m_points)) {}
  PointQueue(PointQueue&&) noexcept = default;
  PointQueue& operator=(const PointQueue& other) {
    if (this != &other) *this = PointQueue(other);
    return *this;
  }
  PointQueue& operator=(PointQueue&&) noexcept = default;
  ~PointQueue() = default;

  bool empty() const { return size() == 0; }
  size_t size() const { return m_points ? m_points->size() : 0; }

  // Iterators that point nowhere are equal, and so make an empty range.
  iterator begin() { return m_points ? m_points->begin() : iterator(); }
  iterator end() { return m_points ? m_points->end() : iterator(); }
  const_iterator begin() const { return m_points ? m_points->cbegin() : const_iterator(); }
  const_iterator end() const { return m_points ? m_points->cend() : const_iterator(); }
  reverse_iterator rbegin() { return reverse_iterator(end()); }
  reverse_iterator rend() { return reverse_iterator(begin()); }
  const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
  const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

  /// Throws std::out_of_range beyond the last.
  CGpsPoint& at(size_t index) {
    if (index >= size()) throw std::out_of_range("invalid deque<T> subscript");
    return (*m_points)[index];
  }
  const CGpsPoint& at(size_t index) const {
    if (index >= size()) throw std::out_of_range("invalid deque<T> subscript");
    return (*m_points)[index];
  }

  // These need a point, as those of std::deque do.
  CGpsPoint& operator[](size_t index) { return (*m_points)[index]; }
  const CGpsPoint& operator[](size_t index) const { return (*m_points)[index]; }
  CGpsPoint& front() { return m_points->front(); }
  const CGpsPoint& front() const { return m_points->front(); }
  CGpsPoint& back() { return m_points->back(); }
  const CGpsPoint& back() const { return m_points->back(); }
  void pop_front() { m_points->pop_front(); }
  void pop_back() { m_points->pop_back(); }
  iterator erase(const_iterator place) { return m_points->erase(place); }

  template <typename... Arguments>
  CGpsPoint& emplace_back(Arguments&&... arguments) {
    return Made().emplace_back(std::forward<Arguments>(arguments)...);
  }
  void push_back(const CGpsPoint& point) { Made().push_back(point); }
  void push_back(CGpsPoint&& point) { Made().push_back(std::move(point)); }
  void push_front(const CGpsPoint& point) { Made().push_front(point); }
  void push_front(CGpsPoint&& point) { Made().push_front(std::move(point)); }

  iterator insert(const_iterator place, CGpsPoint point) {
    const auto index = place - std::as_const(*this).begin();
    return Made().insert(m_points->cbegin() + index, std::move(point));
  }
  template <typename Iterator>
  iterator insert(const_iterator place, Iterator first, Iterator last) {
    const auto index = place - std::as_const(*this).begin();
    if (first == last) return begin() + index;
    return Made().insert(m_points->cbegin() + index, first, last);
  }
  template <typename Iterator>
  void assign(Iterator first, Iterator last) {
    if (first == last) {
      clear();
    } else {
      Made().assign(first, last);
    }
  }
  iterator erase(const_iterator first, const_iterator last) {
    return m_points ? m_points->erase(first, last) : iterator();
  }
  void resize(size_t count) {
    if (count != size()) Made().resize(count);
  }
  void resize(size_t count, const CGpsPoint& point) {
    if (count != size()) Made().resize(count, point);
  }
  void clear() { m_points.reset(); }
  void swap(PointQueue& other) noexcept { m_points.swap(other.m_points); }

  template <typename Predicate>
  friend size_t erase_if(PointQueue& queue, Predicate predicate) {
    return queue.m_points ? std::erase_if(*queue.m_points, predicate) : 0;
  }

 private:
  Deque& Made() {
    if (!m_points) m_points = std::make_unique<Deque>();
    return *m_points;
  }

  std::unique_ptr<Deque> m_points;
};
