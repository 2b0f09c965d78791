#include "ui/settings_trouble.h"

#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/reason_text.h"
#include "platform/settings_backend.h"
#include "ui/text.h"

namespace {

// A text with the settings file's name in it, and the reason behind it.
QString DescribeFailure(uint32_t textId, uint32_t status) {
  const WideString file = UserSettingsFile();
  if (file.empty()) return Text(kTextSettingsWithoutHome);
  return FilledText(textId, WideToUtf8Lossy(file)) + FromUtf8(DescribeReason(status, file));
}

}  // namespace

QString DescribeReadTrouble(uint32_t status, const std::vector<std::string>& messages) {
  QStringList sentences;
  for (const std::string& message : messages) sentences += FromUtf8(message);
  sentences.removeDuplicates();
  if (sentences.isEmpty() && status != kStatusSuccess)
    sentences += DescribeFailure(kTextSettingsNotRead, status);
  return sentences.join(QLatin1Char(' '));
}

QString DescribeStoreTrouble(uint32_t status) {
  QStringList sentences;
  // That a read had to do without the file meanwhile is over.
  const WideString damaged = TakeSettingsNews().damagedFile;
  if (!damaged.empty()) sentences += FilledText(kTextSettingsDamaged, WideToUtf8Lossy(damaged));
  if (status != kStatusSuccess) sentences += DescribeFailure(kTextSettingsNotWritten, status);
  return sentences.join(QLatin1Char(' '));
}
