#pragma once

#include <string>
#include <string_view>

/// What becomes of a navigation of the page.
enum class Navigation {
  kLetThrough,
  kDrop,
  kOpenOutside,  ///< cancelled, and opened in the user's browser
  kSignal,       ///< cancelled: the page wakes the program
};

struct NavigationDecision {
  Navigation action;
  std::string signal;   ///< the name of the signal
  std::string payload;  ///< what stands behind it, without its escapes
};

/// Decides on a navigation, to whatever frame or window it was to go. `plannerPage` is the address
/// of the planner page.
NavigationDecision FilterNavigation(std::string_view url, std::string_view plannerPage);
