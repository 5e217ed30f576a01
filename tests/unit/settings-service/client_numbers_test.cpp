#include "settings-service/client_numbers.h"

#include <gtest/gtest.h>

namespace tool::service {
namespace {

using enum PipeSide;

TEST(ServiceClientNumbers, BothPipesOfAProcessAreOneClient) {
  ClientNumbers numbers;
  EXPECT_EQ(numbers.Connected(kSendOnly, 100), 1u);
  EXPECT_EQ(numbers.Connected(kSendOnly, 200), 2u);
  EXPECT_EQ(numbers.Connected(kDuplex, 200), 2u);
  EXPECT_EQ(numbers.Connected(kDuplex, 100), 1u);
}

TEST(ServiceClientNumbers, SecondClientOfAProcessGetsANumberOfItsOwn) {
  ClientNumbers numbers;
  EXPECT_EQ(numbers.Connected(kSendOnly, 100), 1u);
  EXPECT_EQ(numbers.Connected(kDuplex, 100), 1u);
  EXPECT_EQ(numbers.Connected(kDuplex, 100), 2u);
  EXPECT_EQ(numbers.Connected(kSendOnly, 100), 2u);
}

TEST(ServiceClientNumbers, ClientThatComesBackIsANewOne) {
  ClientNumbers numbers;
  numbers.Connected(kSendOnly, 100);
  numbers.Connected(kDuplex, 100);
  numbers.Disconnected(kSendOnly, 1);
  numbers.Disconnected(kDuplex, 1);
  EXPECT_EQ(numbers.Connected(kSendOnly, 100), 2u);
}

TEST(ServiceClientNumbers, UnknownNumberIsNoMatter) {
  ClientNumbers numbers;
  numbers.Disconnected(kDuplex, 5);
  EXPECT_EQ(numbers.Connected(kSendOnly, 100), 1u);
}

}  // namespace
}  // namespace tool::service
