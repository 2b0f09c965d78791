#include "net/curl/curl_transport.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <utility>

#include "net/internet_exception.h"

namespace {

// Polling ends earlier for whatever happens; this is how long an idle thread sleeps.
constexpr int kIdlePollMs = 60'000;

thread_local bool isOwnThread = false;

// The status of the first failure while a transfer is made ready.
template <typename Action>
uint32_t CodeOf(Action&& action) {
  try {
    return action();
  } catch (const CInternetException& failure) {
    return failure.code;
  } catch (const std::exception&) {
    return kInternetOutOfMemory;
  }
}

uint64_t NumberOf(CURL* easy) {
  void* number = nullptr;
  curl_easy_getinfo(easy, CURLINFO_PRIVATE, &number);
  return reinterpret_cast<uintptr_t>(number);
}

}  // namespace

std::unique_ptr<CurlTransport> CurlTransport::Create() {
  if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) return nullptr;
  CURLM* const multi = curl_multi_init();
  if (!multi) return nullptr;
  std::unique_ptr<CurlTransport> transport(new CurlTransport(multi));
  // It runs until the process ends, like the transport.
  std::thread([running = transport.get()] { running->Run(); }).detach();
  return transport;
}

uint64_t CurlTransport::NewNumber() {
  const std::lock_guard lock(m_mutex);
  return ++m_lastNumber;
}

void CurlTransport::Post(Task task) {
  {
    const std::lock_guard lock(m_mutex);
    m_tasks.push_back(std::move(task));
  }
  curl_multi_wakeup(m_multi);
}

uint64_t CurlTransport::OpenSession() { return NewNumber(); }

void CurlTransport::CloseSession(uint64_t session) {
  Post([this, session] {
    const auto found = m_shares.find(session);
    if (found == m_shares.end()) return;
    curl_share_cleanup(found->second);
    m_shares.erase(found);
  });
}

uint64_t CurlTransport::Begin(uint64_t session, HttpTransfer request, HttpTransferEvents& events) {
  const uint64_t id = NewNumber();
  auto transfer = std::make_shared<std::unique_ptr<CurlTransfer>>(
      std::make_unique<CurlTransfer>(std::move(request), events));
  Post([this, session, id, transfer] {
    const uint32_t code = CodeOf([&] { return (*transfer)->Prepare(ShareOf(session), id); });
    Add(id, std::move(*transfer), code);
  });
  return id;
}

void CurlTransport::Cancel(uint64_t transfer) {
  Post([this, transfer] { End(transfer, kInternetCancelled); });
}

// A share keeps the connections of one session apart from those of all others.
CURLSH* CurlTransport::ShareOf(uint64_t session) {
  CURLSH*& share = m_shares[session];
  if (!share) {
    share = curl_share_init();
    if (share) curl_share_setopt(share, CURLSHOPT_SHARE, CURL_LOCK_DATA_CONNECT);
  }
  return share;
}

void CurlTransport::Add(uint64_t id, std::unique_ptr<CurlTransfer> transfer, uint32_t code) {
  m_transfers[id] = std::move(transfer);
  if (code == 0) {
    AddHandle(id);
  } else {
    End(id, code);
  }
}

void CurlTransport::AddHandle(uint64_t id) {
  const CURLMcode result = curl_multi_add_handle(m_multi, m_transfers.at(id)->Handle());
  if (result != CURLM_OK) End(id, kInternetOutOfMemory);
}

// Nothing of the transfer is left when its end is told, so that a new one may follow at once.
void CurlTransport::End(uint64_t id, uint32_t code) {
  const auto found = m_transfers.find(id);
  if (found == m_transfers.end()) return;
  HttpTransferEvents& events = found->second->Events();
  const uint32_t status = found->second->HttpStatus();
  if (CURL* const easy = found->second->Handle()) curl_multi_remove_handle(m_multi, easy);
  m_transfers.erase(found);
  events.OnEnd(code, status);
}

void CurlTransport::RunTasks() {
  std::vector<Task> tasks;
  {
    const std::lock_guard lock(m_mutex);
    tasks.swap(m_tasks);
  }
  for (const Task& task : tasks) task();
}

void CurlTransport::CollectEnded() {
  int left = 0;
  while (const CURLMsg* const message = curl_multi_info_read(m_multi, &left)) {
    if (message->msg != CURLMSG_DONE) continue;
    const uint64_t id = NumberOf(message->easy_handle);
    const CURLcode result = message->data.result;
    CurlTransfer& transfer = *m_transfers.at(id);
    curl_multi_remove_handle(m_multi, transfer.Handle());
    bool goesOn = false;
    const uint32_t code = CodeOf([&] {
      uint32_t failure = 0;
      goesOn = transfer.Continue(result, failure);
      return failure;
    });
    if (goesOn && code == 0) {
      AddHandle(id);
    } else {
      End(id, code);
    }
  }
}

void CurlTransport::EndIdle() {
  const auto now = CurlTransfer::Clock::now();
  std::vector<uint64_t> late;
  for (const auto& [id, transfer] : m_transfers) {
    if (transfer->Deadline() <= now) late.push_back(id);
  }
  for (const uint64_t id : late) End(id, kInternetTimeout);
}

int CurlTransport::PollTimeout() const {
  auto soonest = CurlTransfer::Clock::now() + std::chrono::milliseconds(kIdlePollMs);
  for (const auto& [id, transfer] : m_transfers) soonest = std::min(soonest, transfer->Deadline());
  const auto left =
      std::chrono::ceil<std::chrono::milliseconds>(soonest - CurlTransfer::Clock::now());
  return static_cast<int>(std::clamp<int64_t>(left.count(), 0, kIdlePollMs));
}

bool CurlTransport::IsOnOwnThread() const { return isOwnThread; }

void CurlTransport::Run() {
  isOwnThread = true;
  for (;;) {
    RunTasks();
    int running = 0;
    curl_multi_perform(m_multi, &running);
    CollectEnded();
    EndIdle();
    curl_multi_poll(m_multi, nullptr, 0, PollTimeout(), nullptr);
  }
}
