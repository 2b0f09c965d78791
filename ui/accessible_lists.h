#pragma once

/// Lets assistive technology find drop-down lists by their names; Qt gives it what is chosen in
/// them instead. Once, before the first window.
void NameListsForAssistiveTechnology();
