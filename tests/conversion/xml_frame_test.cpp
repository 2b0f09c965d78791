#include "conversion/xml_frame.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "base/text_ids.h"
#include "tests/temporary_folder.h"

namespace {

// Counts elements.
class CountingReader final : public CXmlReader {
 public:
  void EndElement(const XML_Char*) override { ++count; }

  size_t count = 0;
};

TEST(XmlFrame, ReadsFiles) {
  const TemporaryFolder folder;
  ConversionContext context;
  CountingReader reader;
  EXPECT_EQ(ReadXmlFile(reader, folder.Put("a.xml", "\xEF\xBB\xBF<a><b/></a>"), context), 0u);
  EXPECT_EQ(reader.count, 2u);
  EXPECT_EQ(ReadXmlFile(reader, folder.WidePathTo("none.xml"), context), kStatusFailure);
  EXPECT_EQ(context.failure.platformError, kStatusFileNotFound);
  EXPECT_EQ(ReadXmlFile(reader, folder.Put("empty.xml", ""), context), kStatusFailure);
  EXPECT_EQ(context.failure.detailTextId, kTextXmlEndsEarly);
}

TEST(XmlFrame, TellsWhereAndWhyAndTheDebugLogToo) {
  setenv("CORVANE_DEBUG", "1", 1);
  testing::internal::CaptureStderr();
  ConversionContext context;
  CountingReader reader;
  EXPECT_EQ(ParseXmlBytes(reader, "<a>\n</b>", context), kStatusFailure);
  unsetenv("CORVANE_DEBUG");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "line 2, column 2: mismatched tag\n");
  EXPECT_EQ(context.failure, (FailureReason{0, 2, 3, kTextXmlTagMismatch}));
}

TEST(XmlFrame, EndsWhenItIsCancelled) {
  const TemporaryFolder folder;
  std::string document = "<a>";
  for (int i = 0; i < 200000; ++i) document += "<b/>";
  document += "</a>";
  ConversionContext context;
  context.progress = [&document](const ConversionProgress& progress) {
    EXPECT_EQ(progress.bytesInAll, document.size());
    return progress.bytesDone < 500000;
  };
  CountingReader reader;
  EXPECT_EQ(ReadXmlFile(reader, folder.Put("a.xml", document), context), kStatusCancelled);
  EXPECT_GT(reader.count, 0u);
  EXPECT_LT(reader.count, 200000u);
}

}  // namespace
