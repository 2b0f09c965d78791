#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "io/byte_sink.h"
#include "model/route_leg.h"
#include "services/directions/travel_mode_info.h"

class CHttpClient;
class CInternetException;

/// How a calculation has ended.
enum RouteStatus : uint32_t {
  kRouteSuccess = 0,
  kRouteNothingFound = 1,
  kRouteOverQueryLimit = 2,
  kRouteDenied = 3,
  kRouteInvalidRequest = 4,  ///< also what a new provider has, and an unreadable reply gives
  kRouteNotFound = 5,        ///< a place that was asked for is not there
  kRouteFailed = 6,          ///< any other word of the service
  kRouteBusy = 7,            ///< still running; also "MAX_WAYPOINTS_EXCEEDED"
  kRoutePointCount = 8,      ///< too few or too many points
  kRouteTimedOut = 9,        ///< `Wait` ran out
  kRouteTransport = 100,     ///< plus the number of the transport's error
};

/// The status for the number of a transport's error.
constexpr uint32_t TransportStatus(uint32_t code) { return uint32_t{kRouteTransport} + code; }

/// What one request consists of.
struct CHttpRequestSpec {
  std::string url;       ///< escaped
  std::string postData;  ///< empty for GET
  std::string referrer;  ///< empty: none goes out
  /// Further headers, name and value, that newer services ask for.
  std::vector<std::pair<std::string, std::string>> headers;
};

/// Asks a service for the way along a list of points. The list is cut into chunks that the service
/// accepts and that share their border points; one request a chunk runs after the other on the
/// HTTP thread, and the completion is called once with the outcome.
class CRouteProvider {
 public:
  using Legs = std::vector<CRouteData>;
  /// Called on the thread that ends the calculation: the HTTP thread, or the caller of `Calculate`
  /// when no request could be started. What it throws is swallowed. It may start the next
  /// calculation, and must not destroy the provider.
  using Completion = std::function<void(uint32_t status, const Legs& legs)>;

  CRouteProvider();
  /// A running calculation is cancelled and waited for; its completion is called.
  virtual ~CRouteProvider();
  CRouteProvider(const CRouteProvider&) = delete;
  CRouteProvider& operator=(const CRouteProvider&) = delete;

  /// Starts a calculation; one that is still running is cancelled and waited for before. Never
  /// throws for what a service or the network does.
  virtual void Calculate(std::unique_ptr<CGpsPointList> points, uint32_t travelMode,
                         const CRouteOptions& options);
  /// The same for two points.
  virtual void Calculate(const CGpsNamedPoint& from, const CGpsNamedPoint& to, uint32_t travelMode,
                         const CRouteOptions& options);
  /// Ends the running calculation soon, without waiting: its status is then 100 + 12017. Any
  /// thread.
  virtual void Cancel();
  /// What has arrived; to be read when the calculation has ended.
  virtual Legs& GetLegs();
  /// Waits for the end, at most so many milliseconds (-1: without limit), and gives the status:
  /// kRouteTimedOut when the time was too short.
  virtual uint32_t Wait(int32_t timeoutMs);
  /// The number of the provider (services/service_table.h).
  virtual int32_t GetId() const = 0;
  /// What the provider offers, by travel mode.
  virtual TravelModes GetTravelModes() const;
  /// To be set while nothing runs.
  virtual void SetCompletion(Completion newCompletion);
  /// The most points of a request; below 2 nothing can be asked.
  virtual size_t GetMaxPoints() const = 0;
  /// Fills `spec` for a chunk of at least two points. Returns 0, or the status with which the
  /// calculation ends. May sleep to hold requests apart.
  virtual uint32_t BuildRequest(const CGpsPointList& chunk, uint32_t travelMode,
                                const CRouteOptions& options, CHttpRequestSpec& spec) = 0;
  /// Appends what a reply holds to `legs`, nothing when it fails. Returns a status and does not
  /// throw whatever the text is.
  virtual uint32_t ParseResponse(std::string_view text, uint32_t travelMode,
                                 const CRouteOptions& options, Legs& legs) = 0;
  /// A sentence for the user that says more than the status of the last calculation; mostly empty.
  virtual std::string FailureText() const;

  /// The status now. Any thread.
  uint32_t Status() const { return m_status; }

 protected:
  /// Cancels and waits, so that none of a class's operations runs any more. Every class that is
  /// made calls it in its destructor.
  void Stop();
  /// Whether `Cancel` was called since the calculation began.
  bool IsCancelled() const { return m_cancelled; }
  const std::atomic<bool>& CancelFlag() const { return m_cancelled; }
  /// Takes note of `Cancel`, for classes with one of their own.
  void NoteCancel() { m_cancelled = true; }
  /// Takes note of a calculation that begins, for classes with a `Calculate` of their own.
  void Begin();
  /// Ends the calculation: notes the status and calls the completion.
  void Finish(uint32_t status);

 private:
  void Halt();
  void CutIntoChunks(CGpsPointList& points, size_t most);
  void RunNextChunk();
  uint32_t StartRequest(const CGpsPointList& chunk);
  void TakeReply(const CInternetException& failure);
  uint32_t ParseBody();
  CHttpClient& Client();
  CHttpClient* ClientIfMade();

  std::atomic<uint32_t> m_status = kRouteInvalidRequest;
  Completion m_completion;
  std::mutex m_clientMutex;               ///< guards which client there is
  std::unique_ptr<CHttpClient> m_client;  ///< made with the first request
  std::optional<StringSink> m_body;
  Legs m_legs;
  std::vector<CGpsPointList> m_chunks;
  size_t m_currentChunk = 0;
  uint32_t m_travelMode = 0;
  std::unique_ptr<CRouteOptions> m_options;
  std::atomic<bool> m_cancelled = false;
  std::atomic<bool> m_requested = false;  ///< whether the client had a request since `Calculate`
};
