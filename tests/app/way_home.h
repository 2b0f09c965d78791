#pragma once

#include <string>
#include <vector>

#include "tests/app/service_home.h"

/// Three stops on a meridian.
inline const std::string kStops =
    "700000|4800000|Start|4|\r\n700000|4801000||0|\r\n700000|4802000|End|2|\r\n";
inline const std::string kTwoStops = "700000|4800000|Start|4|\r\n700000|4801000|End|2|\r\n";

/// A way of 1234 metres and 62 seconds over 38.5, -120.2; 40.7, -120.95; 43.252, -126.453.
inline const std::string kOsrmWay =
    R"({"code": "Ok", "routes": [{"duration": 61.5, "distance": 1234.4, "geometry":)"
    R"( "_p~iF~ps|U_ulLnnqC_mqNvxq`@"}], "waypoints": [{"location": [-120.2, 38.5],)"
    R"( "name": "First"}, {"location": [-126.453, 43.252], "name": ""}]})";

/// What stands between the method and the version in a request's first line.
inline std::string Target(const std::string& request) {
  const size_t start = request.find(' ') + 1;
  return request.substr(start, request.find(' ', start) - start);
}

/// Two itineraries, and services to ask about them.
class WayCommand : public ServiceHome {
 protected:
  WayCommand() {
    folder.Put("trip.itn", kStops);
    folder.Put("pair.itn", kTwoStops);
  }
  std::string Path(const std::string& name) const { return folder.PathTo(name); }
  ProgramResult Way(const std::string& name, std::vector<std::string> options,
                    const std::string& environment = "LC_ALL=C") const {
    options.insert(options.begin(), {"--way", Path(name)});
    return Run(options, environment);
  }
};
