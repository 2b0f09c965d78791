#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include <curl/curl.h>

#include "net/curl/curl_transfer.h"
#include "net/http_transport.h"

/// All transfers of the program, carried out by libcurl on one thread.
class CurlTransport final : public HttpTransport {
 public:
  /// Null when libcurl or the thread could not start.
  static std::unique_ptr<CurlTransport> Create();

  uint64_t OpenSession() override;
  void CloseSession(uint64_t session) override;
  uint64_t Begin(uint64_t session, HttpTransfer request, HttpTransferEvents& events) override;
  void Cancel(uint64_t transfer) override;
  bool IsOnOwnThread() const override;

 private:
  using Task = std::function<void()>;

  explicit CurlTransport(CURLM* multi) : m_multi(multi) {}

  uint64_t NewNumber();
  void Post(Task task);
  void Run();
  void RunTasks();
  void CollectEnded();
  void EndIdle();
  int PollTimeout() const;
  CURLSH* ShareOf(uint64_t session);
  /// `code`: the failure of making it ready, 0 for none.
  void Add(uint64_t id, std::unique_ptr<CurlTransfer> transfer, uint32_t code);
  void AddHandle(uint64_t id);
  void End(uint64_t id, uint32_t code);

  CURLM* const m_multi;

  std::mutex m_mutex;  ///< guards what follows up to the blank line
  std::vector<Task> m_tasks;
  uint64_t m_lastNumber = 0;

  // Of the thread alone.
  std::map<uint64_t, std::unique_ptr<CurlTransfer>> m_transfers;
  std::map<uint64_t, CURLSH*> m_shares;  ///< the connections of each session
};
