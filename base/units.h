#pragma once

/// The international foot, in which some devices keep altitudes.
inline constexpr double kMetresPerFoot = 0.3048;
