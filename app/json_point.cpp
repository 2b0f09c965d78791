#include "app/json_point.h"

#include <cmath>
#include <string>

#include "markup/json_string.h"

void WriteJsonNumber(ByteSink& sink, double value) {
  sink.Write(std::isfinite(value) ? fmt::format("{}", value) : std::string("null"));
}

void WriteJsonPoint(ByteSink& sink, const CGpsPoint& point) {
  sink.Write("{\"latitude\": ");
  WriteJsonNumber(sink, point.latitude);
  sink.Write(", \"longitude\": ");
  WriteJsonNumber(sink, point.longitude);
  sink.Write(", \"altitude\": ");
  WriteJsonNumber(sink, point.altitude);
  sink.Write(", \"name\": ");
  WriteJsonString(sink, point.name);
  sink.Write(", \"comment\": ");
  WriteJsonString(sink, point.comment);
  sink.Put('}');
}
