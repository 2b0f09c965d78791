#pragma once

#include <QElapsedTimer>

/// How many boxes the page may put before the user, each of which stops all else: a few in a row.
/// One more is in the row when it comes shortly behind the end of the one before.
class PageBoxLimit {
 public:
  /// Whether another box may come now. It has to be told when that box has been closed.
  bool Allows();
  void BoxClosed() { m_sinceLast.start(); }

 private:
  QElapsedTimer m_sinceLast;
  int m_inARow = 0;
};
