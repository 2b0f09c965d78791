#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "services/places/place_reply.h"

/// How far a search looks when nobody says, in metres.
inline constexpr uint32_t kDefaultSearchRadius = 30'000;

/// Searches for places near a position, in the background.
class CPlaceSearch {
 public:
  /// Called once for each search, on the HTTP thread, or on the searching one when no request could
  /// be sent. It may neither start a search nor destroy the object: it tells whoever does.
  using Completion = std::function<void(uint32_t status, const PlaceList& places)>;

  CPlaceSearch() = default;
  virtual ~CPlaceSearch() = default;
  CPlaceSearch(const CPlaceSearch&) = delete;
  CPlaceSearch& operator=(const CPlaceSearch&) = delete;

  /// Starts a search within `radius` metres. One that is still running is cancelled; its completion
  /// gets 100 + 12017.
  virtual void Search(const std::string& text, const CGpsCoordinate& position, uint32_t radius) = 0;
  /// The same within the default radius.
  virtual void SearchNear(const std::string& text, const CGpsCoordinate& position) = 0;
  /// Ends the search that is on its way, if there is one.
  virtual void Cancel() = 0;
  /// The provider's id.
  virtual int32_t GetId() const = 0;
  /// Waits for the end of the search, -1 for as long as it takes, and gives its status;
  /// `kServiceTimedOut` when the time was too short.
  virtual uint32_t Wait(int32_t timeoutMs) = 0;
  /// What was found; to be read when the search has ended.
  virtual const PlaceList& GetResults() const = 0;
  /// To be set while no search is on its way.
  virtual void SetCompletion(Completion completion) = 0;
  /// Gives the address of the request. Returns 0, or the status with which the search ends.
  virtual uint32_t BuildRequest(const std::string& text, const CGpsCoordinate& position,
                                uint32_t radius, std::string& url) const = 0;
  /// Reads a reply, whatever it is. Returns a status; the list is empty unless that is 0.
  virtual uint32_t ParseResponse(std::string_view reply, PlaceList& places) const = 0;
};

/// A new search of a provider; null for a number without one.
std::unique_ptr<CPlaceSearch> CreatePlaceSearch(int32_t id);

/// Puts a maker of searches behind a number, in front of those that the program brings; a null one
/// takes it away again.
void RegisterPlaceSearch(int32_t id, std::function<std::unique_ptr<CPlaceSearch>()> maker);
