#include "core/conversion_driver.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "core/format_search.h"
#include "core/status.h"
#include "core/text.h"

namespace {

// Numbers of the messages and questions.
constexpr uint32_t kTextCannotBeRead = 108;
constexpr uint32_t kTextCannotBeWritten = 109;
constexpr uint32_t kTextNoItinerary = 110;
constexpr uint32_t kTextUnknownFormat = 164;
constexpr uint32_t kTextChangesWillBeLost = 205;
constexpr uint32_t kTextAlreadyOpened = 220;
constexpr uint32_t kTextManyPoints = 271;

// More points than this make the editor slow.
constexpr size_t kManyPoints = 300;

// The message for a status of a read; 0 for none.
uint32_t ReadFailureText(uint32_t status) {
  switch (status) {
    case kStatusSuccess:
    case kStatusDeclined:
    case kStatusCancelled:
      return 0;
    case kStatusSharingViolation:
    case kStatusStorageSharing:
      return kTextAlreadyOpened;
    case kStatusBadFormat:
      return kTextUnknownFormat;
    default:
      return kTextCannotBeRead;
  }
}

// Calls the writer; running out of memory is a failure like any other.
uint32_t CallWriter(FormatWriteFn write, const WideString& path, const CGpsPointArray& list,
                    uint32_t splitLimit, bool silent) {
  try {
    return write(path, list, splitLimit, silent);
  } catch (const std::bad_alloc&) {
    return kStatusOutOfMemory;
  } catch (const std::exception&) {
    return kStatusInternalError;
  }
}

/// The front is busy as long as this lives.
class BusyScope {
 public:
  explicit BusyScope(IConversionFront& front) : m_front(front) { m_front.SetBusy(true); }
  ~BusyScope() { m_front.SetBusy(false); }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;

 private:
  IConversionFront& m_front;
};

}  // namespace

CConversionDriver::CConversionDriver(FormatTable formats, IConversionFront& front,
                                     EChangeTracking tracking)
    : table(std::move(formats)), m_front(front), m_tracking(tracking) {}

uint32_t CConversionDriver::OpenFile(const WideString& path, bool append, bool silent) {
  uint32_t status = kStatusBadFormat;
  {
    const BusyScope busy(m_front);
    status = SearchReaders(table, path, silent,
                           [this, append](const CItineraryFormat&, PointLists& lists) {
                             return MergeLists(lists, append);
                           });
  }
  return Report(status, path, append);
}

uint32_t CConversionDriver::MergeLists(PointLists& lists, bool append) {
  const std::vector<size_t> chosen = m_front.ChooseLists(lists);
  if (chosen.empty()) return kStatusDeclined;
  if (!append) {
    current.Clear();
    sourcePath.clear();
  }
  m_front.ItineraryCleared();
  for (const size_t index : chosen) {
    CGpsPointArray& list = *lists[index];
    current.TakePoints(list);
    if (current.name.empty()) current.name = list.name;
  }
  return kStatusSuccess;
}

uint32_t CConversionDriver::Report(uint32_t status, const WideString& path, bool append) {
  if (status == kStatusSuccess) return ReportSuccess(path, append);
  if (const uint32_t textId = ReadFailureText(status))
    m_front.ShowMessage(EMessageIcon::kError, textId);
  return status;
}

uint32_t CConversionDriver::ReportSuccess(const WideString& path, bool append) {
  if (current.points.empty()) {
    m_front.ShowMessage(EMessageIcon::kWarning, kTextNoItinerary);
    return kStatusFailure;
  }
  if (current.Count() > kManyPoints && !m_front.AskYesNo(EMessageIcon::kWarning, kTextManyPoints))
    return kStatusDeclined;
  if (!append) {
    sourcePath = path;
    if (current.name.empty()) current.name = WideToUtf8Lossy(FileTitleOfPath(path));
  }
  RememberState();
  m_front.ItineraryLoaded();
  return kStatusSuccess;
}

uint32_t CConversionDriver::ExportTo(const WideString& path, const CItineraryFormat& row,
                                     bool silent, uint32_t splitLimit) {
  const BusyScope busy(m_front);
  const uint32_t status = CallWriter(row.write, path, current, splitLimit, silent);
  if (status == kStatusSuccess) {
    RememberState();
  } else {
    m_front.ShowMessage(EMessageIcon::kError, kTextCannotBeWritten);
  }
  return status;
}

bool CConversionDriver::ConfirmDiscard() {
  const bool unchanged = current.name == current.snapshot.name &&
                         std::equal(current.points.begin(), current.points.end(),
                                    current.snapshot.points.begin(), current.snapshot.points.end());
  return unchanged || m_front.AskYesNo(EMessageIcon::kWarning, kTextChangesWillBeLost);
}

void CConversionDriver::RememberState() {
  if (m_tracking == EChangeTracking::kOn) current.snapshot.Assign(current);
}
