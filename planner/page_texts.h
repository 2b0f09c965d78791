#pragma once

#include <string>

/// The page's texts in the current language: JSON text of an object, text by name. The names stand
/// in docs/page-protocol.md.
std::string PageTexts();
