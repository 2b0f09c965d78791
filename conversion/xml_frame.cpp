#include "conversion/xml_frame.h"

#include "base/status.h"
#include "conversion/xml_fault_text.h"
#include "platform/debug_log.h"
#include "platform/sequential_file.h"

namespace {

// The result of `parse`, which is true for a document that was read to its end; false for one that
// is not well-formed, with a line in the debug log.
template <typename Parse>
bool ParseWatched(CXmlReader& reader, ConversionContext& context, Parse&& parse) {
  reader.Watch([&context](uint64_t bytesDone) { return context.GoesOn(bytesDone); });
  try {
    return parse();
  } catch (const XML_Error error) {
    const XmlFault fault = reader.FaultOf(error);
    DebugLog(reader.DescribeError(error));
    if (error == XML_ERROR_NO_MEMORY) context.Keep(kStatusOutOfMemory);
    context.failure.line = fault.line;
    context.failure.column = fault.column;
    context.failure.detailTextId = XmlFaultText(error);
    return false;
  }
}

uint32_t StatusOf(bool isRead, const ConversionContext& context) {
  if (context.IsCancelled()) return kStatusCancelled;
  return isRead ? kStatusSuccess : kStatusFailure;
}

}  // namespace

uint32_t ParseXmlBytes(CXmlReader& reader, std::string_view bytes, ConversionContext& context) {
  const bool isRead = ParseWatched(reader, context, [&] {
    reader.ParseBytes(bytes);
    return true;
  });
  return StatusOf(isRead, context);
}

uint32_t ParseXmlSource(CXmlReader& reader, ConversionContext& context, const XmlSource& source) {
  return StatusOf(ParseWatched(reader, context, [&] { return reader.ParseSource(source); }),
                  context);
}

uint32_t ReadXmlFile(CXmlReader& reader, const WideString& path, ConversionContext& context) {
  if (context.incoming) return ParseXmlSource(reader, context, context.incoming);
  SequentialFile file;
  if (context.Keep(file.Open(path))) return kStatusFailure;
  context.Begin(ConversionProgress::Stage::kReading, file.Size());
  const bool isRead = ParseWatched(reader, context, [&] { return reader.ParseFile(file); });
  // A change meanwhile may also be why the parse has failed.
  context.Keep(file.Status());
  const bool isUnchanged = context.Keep(file.CheckUnchanged()) == kStatusSuccess;
  return StatusOf(isRead && isUnchanged, context);
}
