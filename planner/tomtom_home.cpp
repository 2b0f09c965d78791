#include "planner/tomtom_home.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "base/localized_text.h"
#include "base/product.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/conversion_context.h"
#include "formats/text/tomtom.h"
#include "io/byte_sink.h"
#include "markup/xml_writer.h"
#include "net/http_server.h"
#include "net/url.h"
#include "platform/open_link.h"
#include "platform/zip_archive.h"

namespace {

constexpr std::string_view kServerUrl = "http://127.0.0.1:8099/";
constexpr std::string_view kLinkScheme = "tomtomhome:contentitem:";
constexpr std::string_view kArchiveFolder = "ITN/";
constexpr std::string_view kItemVersion = "1.0";

// Of a file's name in an address.
constexpr std::string_view kUnescaped = "-_.~";

ZipEntry ItineraryFile(const std::string& title, const CGpsPointArray& list) {
  StringSink sink;
  WriteItnBody(sink, list);
  return {std::string(kArchiveFolder) + title + ".itn", sink.Bytes()};
}

std::vector<ZipEntry> ItineraryFiles(const std::string& baseName, const CGpsPointArray& list,
                                     uint32_t limit) {
  if (limit == 0 || list.Count() <= limit) return {ItineraryFile(baseName, list)};
  std::vector<ZipEntry> files;
  for (size_t start = 0; start < list.Count();) {
    if (start != 0) --start;
    const size_t length = std::min<size_t>(limit, list.Count() - start);
    files.push_back(ItineraryFile(fmt::format("{}_{}", baseName, files.size() + 1),
                                  CGpsWaypointList(list, start, length)));
    start += length;
  }
  return files;
}

std::string AddressOf(const std::string& name) {
  return std::string(kServerUrl) + UrlEscape(name, kUnescaped);
}

std::string Description(const std::string& title, const std::string& archiveUrl, size_t size) {
  StringSink sink;
  {
    CXmlWriter writer(sink);
    writer.Declaration("UTF-8", "1.0");
    CXmlElement item = writer.Element("item");
    item.Attribute("idstr", "itinerary").Attribute("version", kItemVersion);
    item.Child("start");
    item.Child("finish");
    item.Child("title").Attribute("mimetype", "text/plain").Text(title);
    item.Child("description").Attribute("mimetype", "text/plain").Text(title);
    item.Child("download").Child("url").Attribute("location", "main").Text(archiveUrl);
    item.Child("content").Attribute("size", std::to_string(size));
    item.Child("targetdevice").Attribute("models", "all");
    item.Child("price").Attribute("free", "true");
    item.Child("supplier").Attribute("name", kProductName);
  }
  return sink.Bytes();
}

// One for the whole program, since there is one port. It starts with the first hand-off.
CHttpServer& TomTomServer() {
  static CHttpServer server;
  return server;
}

}  // namespace

uint32_t MakeTomTomBundle(const std::string& baseName, const CGpsPointArray& list, uint32_t limit,
                          TomTomBundle& bundle) {
  if (limit == 1 && list.Count() > 1) return kStatusInvalidParameter;
  bundle.archiveName = baseName + ".zip";
  bundle.descriptionName = baseName + ".xml";
  const uint32_t status = MakeZipArchive(ItineraryFiles(baseName, list, limit), bundle.archive);
  if (status != 0) return status;
  bundle.description = Description(list.name.empty() ? baseName : list.name,
                                   AddressOf(bundle.archiveName), bundle.archive.size());
  bundle.link = std::string(kLinkScheme) + AddressOf(bundle.descriptionName);
  return kStatusSuccess;
}

uint32_t WriteTomTomHome(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                         bool) {
  std::string baseName = WideToUtf8Lossy(FileTitleOfPath(path));
  if (baseName.empty()) baseName = LoadTextUtf8(kTextItinerary);
  TomTomBundle bundle;
  if (const uint32_t status = MakeTomTomBundle(baseName, list, splitLimit, bundle)) return status;
  CHttpServer& server = TomTomServer();
  if (server.Port() == 0) {
    if (const uint32_t status = server.Start()) return ContextInPlace()->Keep(status);
  }
  const std::string archive = "/" + bundle.archiveName;
  const std::string description = "/" + bundle.descriptionName;
  server.AddContent(archive, std::move(bundle.archive));
  server.AddContent(description, std::move(bundle.description));
  const uint32_t status = OpenLink(bundle.link);
  if (status != 0) {  // nobody was told to come for it
    server.RemoveContent(archive);
    server.RemoveContent(description);
  }
  return ContextInPlace()->Keep(status);
}

bool WaitUntilTomTomHasFetched(std::chrono::milliseconds time) {
  return TomTomServer().WaitUntilFetched(time);
}
