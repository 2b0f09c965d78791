#pragma once

/// From now on the calling thread gets what time the other threads and programs leave it. A system
/// that refuses changes nothing.
void LetOthersGoFirst();
