#pragma once

#include <string>
#include <utility>

#include "io/byte_sink.h"
#include "model/point_list.h"

/// The bytes that a writer's body gives for a list, with what else the body wants to know.
template <typename WriteBody, typename... Options>
std::string BytesOf(WriteBody&& writeBody, const CGpsPointArray& list, Options&&... options) {
  StringSink sink;
  std::forward<WriteBody>(writeBody)(sink, list, std::forward<Options>(options)...);
  return sink.Bytes();
}
