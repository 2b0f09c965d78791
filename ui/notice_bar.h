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

/// What a notice is about: there is one of each at most.
enum class NoticeSubject { kExport, kSettings, kFavorites, kPage, kVersion };

/// A bar over the list and the map that tells something without stopping anybody. The newest notice
/// is shown until the user closes it; then the one before is seen again.
class NoticeBar : public QFrame {
 public:
  explicit NoticeBar(QWidget* parent = nullptr);

  /// Replaces what was told about the subject. Every button closes the notice when it has done its
  /// work.
  void ShowNotice(NoticeSubject subject, const QString& text,
                  std::vector<NoticeButton> buttons = {});
  /// What was told about the subject is over.
  void Withdraw(NoticeSubject subject);
  /// Whether something stands there about the subject, seen or not.
  bool IsTold(NoticeSubject subject) const;
  /// The text that is seen; empty without any.
  QString NoticeText() const;

 private:
  struct Notice {
    NoticeSubject subject;
    QString text;
    std::vector<NoticeButton> buttons;
  };

  void ShowNewest();

  QLabel* m_text;
  QHBoxLayout* m_layout;
  std::vector<QWidget*> m_buttons;
  std::vector<Notice> m_notices;  ///< the newest last
};
