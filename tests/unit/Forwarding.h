// For functions that hand a call on to the host: whether all arguments arrive in their places at the service
// that it is for, and the answer comes back.
#pragma once

#include <gtest/gtest.h>

#include <tuple>
#include <type_traits>
#include <utility>

#include "RecordingHost.h"

// A value that no other position has.
template <class Value>
Value DistinctValue(std::size_t position) {
  if constexpr (std::is_pointer_v<Value>) {
    return reinterpret_cast<Value>(position * 1000);
  } else if constexpr (!std::is_void_v<Value>) {
    return static_cast<Value>(position);
  }
}

template <class Result, class... Arguments>
void ExpectForwards(Result (*function)(Arguments...), Result (*VYRAHostServices::*service)(Arguments...),
                    int callersLine = __builtin_LINE()) {
  const testing::ScopedTrace trace("the test", callersLine, "forwarded here");
  const auto sent = []<std::size_t... position>(std::index_sequence<position...>) {
    return std::tuple<int, Arguments...>{1, DistinctValue<Arguments>(position + 1)...};
  }
  (std::index_sequence_for<Arguments...>());
  static std::tuple<int, Arguments...> received;  // the number of calls, and what the last one brought
  received = {};
  gHost.services.*service = [](Arguments... arguments) {
    received = {std::get<0>(received) + 1, arguments...};
    return DistinctValue<Result>(50);
  };
  const auto call = [&](int, Arguments... arguments) { return function(arguments...); };
  if constexpr (std::is_void_v<Result>) {
    std::apply(call, sent);
  } else {
    EXPECT_EQ(std::apply(call, sent), DistinctValue<Result>(50));
  }
  EXPECT_TRUE(received == sent);
}
