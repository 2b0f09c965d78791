#pragma once

#include <string_view>

/// Name and version of the product.
inline constexpr std::string_view kProductName = "Corvane Map 1.21";

/// Address of the product's web site, set when the program is built.
extern const std::string_view kProductSite;

/// What writers put in a generator field: the name, a blank and the site in parentheses.
extern const std::string_view kCreatorTag;
