#pragma once

#include <cstdint>
#include <string_view>

/// Files of the AutoRoute family without stops, which writers fill.
enum ERouteTemplate : uint32_t {
  kTemplateAutoRoute = 129,
  kTemplateMapPoint = 130,
  kTemplateStreetsTrips = 131,
};

/// The bytes of a template, a compound file; empty for a number that stands for none.
std::string_view RouteTemplate(uint32_t number);
