#pragma once

#include "io/byte_sink.h"
#include "model/point.h"

/// Appends the shortest text that reads back as the same number; null for what is no number.
void WriteJsonNumber(ByteSink& sink, double value);

/// Appends a point: latitude, longitude, altitude, name and comment.
void WriteJsonPoint(ByteSink& sink, const CGpsPoint& point);
