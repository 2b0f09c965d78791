#pragma once

#include <QFrame>
#include <functional>
#include <vector>

class QHBoxLayout;
class QLabel;

/// What a button of a notice says and does.
struct NoticeButton {
  QString text;
  std::function<void()> action;
};

/// A bar over the list and the map that tells something without stopping anybody. It stays until
/// the user closes it, or another notice comes.
class NoticeBar : public QFrame {
 public:
  explicit NoticeBar(QWidget* parent = nullptr);

  /// Every button closes the bar when it has done its work.
  void ShowNotice(const QString& text, std::vector<NoticeButton> buttons = {});
  QString NoticeText() const;

 private:
  QLabel* m_text;
  QHBoxLayout* m_layout;
  std::vector<QWidget*> m_buttons;
};
