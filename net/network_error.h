#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"

/// Answers of a box with the buttons Retry and Cancel.
inline constexpr uint32_t kAnswerNone = 1;  ///< no box was shown
inline constexpr uint32_t kAnswerCancel = 2;
inline constexpr uint32_t kAnswerRetry = 4;

/// How the user is asked.
class NetworkErrorFront {
 public:
  virtual ~NetworkErrorFront() = default;

  /// Shows the text as an error with the buttons Retry and Cancel. Gives kAnswerRetry or
  /// kAnswerCancel.
  virtual uint32_t AskToRetry(const WideString& text) = 0;
};

/// What a number means, in the current language: that of a navigation that has failed (0x800C0002
/// to 0x800C0016), of a request (`InternetError`), or of a request as 0x80070000 and its number.
std::string_view NetworkErrorText(uint32_t code);

/// Asks the user what to do about a navigation or request that has failed. Gives the answer;
/// kAnswerNone for code 0.
uint32_t ReportNavigationError(uint32_t code, NetworkErrorFront& front);
