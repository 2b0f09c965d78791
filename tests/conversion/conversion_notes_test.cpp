#include "conversion/conversion_notes.h"

#include <gtest/gtest.h>

namespace {

TEST(ConversionNotes, GoToTheInnermostListener) {
  NoteConversion(EConversionNote::kLinePassedOver);
  ConversionNotes outer;
  NoteConversion(EConversionNote::kLinePassedOver);
  {
    const ConversionNotes inner;
    NoteConversion(EConversionNote::kLinePassedOver, 5);
    NoteConversion(EConversionNote::kStopNotFound);
    EXPECT_EQ(inner.Count(EConversionNote::kLinePassedOver), 5u);
    EXPECT_EQ(inner.Count(EConversionNote::kStopNotFound), 1u);
  }
  NoteConversion(EConversionNote::kLinePassedOver);
  EXPECT_EQ(outer.Count(EConversionNote::kLinePassedOver), 2u);
  EXPECT_EQ(outer.Count(EConversionNote::kStopNotFound), 0u);
}

}  // namespace
