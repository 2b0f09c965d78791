#include "app/link_output.h"

#include "app/console_text.h"
#include "app/output_sink.h"
#include "base/status.h"
#include "markup/json_string.h"
#include "platform/open_link.h"
#include "platform/output_file.h"

bool PrintLinks(const std::vector<std::string>& links) {
  OutputSink sink;
  for (const std::string& link : links) sink.Write(link + "\n");
  return sink.Finish();
}

bool PrintJsonLinks(const WideString& source, const WideString& target,
                    const std::vector<std::string>& links) {
  OutputSink sink;
  sink.Write("{\"source\": ");
  WriteJsonString(sink, ShownPath(source));
  sink.Write(", \"target\": ");
  WriteJsonString(sink, ShownPath(target));
  sink.Write(", \"status\": 0, \"links\": [");
  const char* separator = "";
  for (const std::string& link : links) {
    sink.Write(separator);
    WriteJsonString(sink, link);
    separator = ", ";
  }
  sink.Write("]}\n");
  return sink.Finish();
}

uint32_t OpenLinks(const std::vector<std::string>& links) {
  if (!HasDesktop()) return kStatusSuccess;
  for (const std::string& link : links) {
    if (const uint32_t error = OpenLink(link)) return error;
  }
  return kStatusSuccess;
}

uint32_t SaveLinks(const WideString& path, const std::vector<std::string>& links) {
  OutputFile file(path);
  for (const std::string& link : links) file.Write(link + "\n");
  return file.Commit();
}
