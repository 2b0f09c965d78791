#pragma once

#include "planner/script_value.h"

// What the page finds as `external.Base64` and `external.Utf8`: objects with `Encode` and `Decode`,
// texts in, texts out. The letters of a text stand for bytes where bytes are meant; letters beyond
// U+00FF are no bytes and become "?".

ScriptObjectPtr MakeBase64Object();

/// `Encode` gives the bytes of a text's UTF-8 form, `Decode` the text of such bytes, with U+FFFD
/// for those that are none.
ScriptObjectPtr MakeUtf8Object();
