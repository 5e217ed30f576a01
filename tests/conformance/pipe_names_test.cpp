// How a client finds a pipe: absent, free, busy.

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;
using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;

Outcome Open(const std::wstring& name) {
  return Try([&] { return Handle(OpenClient(name)).IsOpen(); });
}

Outcome WaitForPipe(const std::wstring& name, DWORD ms) {
  return Try([&] { return WaitNamedPipeW(name.c_str(), ms); });
}

TEST(PipeNames, WithoutAPipeAreNotFound) {
  const std::wstring name = UniquePipeName();
  EXPECT_EQ(Open(name), FailsWith(ERROR_FILE_NOT_FOUND));
}

TEST(PipeNames, WithoutAPipeAreNotWaitedFor) {
  const std::wstring name = UniquePipeName();
  const auto start = Clock::now();
  EXPECT_EQ(WaitForPipe(name, 60000), FailsWith(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(WaitForPipe(name, NMPWAIT_USE_DEFAULT_WAIT), FailsWith(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(WaitForPipe(name, NMPWAIT_WAIT_FOREVER), FailsWith(ERROR_FILE_NOT_FOUND));
  EXPECT_LT(Clock::now() - start, 30s);
}

TEST(PipeNames, OfAPipeThatIsThereAreFound) {
  const std::wstring name = UniquePipeName();
  const Handle server(CreateServer(name));
  EXPECT_TRUE(WaitForPipe(name, 60000).succeeded);
  EXPECT_TRUE(WaitForPipe(name, NMPWAIT_WAIT_FOREVER).succeeded);
  EXPECT_TRUE(Open(name).succeeded);
}

TEST(PipeNames, AreTheSameInUpperAndLowerCase) {
  const std::wstring name = UniquePipeName();
  const Handle server(CreateServer(name));
  std::wstring upper = name;
  for (wchar_t& unit : upper) {
    if (unit >= L'a' && unit <= L'z') unit = static_cast<wchar_t>(unit - L'a' + L'A');
  }
  EXPECT_NE(upper, name);
  EXPECT_TRUE(Open(upper).succeeded);
}

TEST(PipeNames, GoWithTheLastServersEndEvenIfAClientStays) {
  PipePair pair;
  pair.server.Close();
  EXPECT_EQ(Open(pair.name), FailsWith(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(WaitForPipe(pair.name, 60000), FailsWith(ERROR_FILE_NOT_FOUND));
}

TEST(PipeNames, OfABusyPipeCannotBeOpened) {
  const PipePair pair;
  EXPECT_EQ(Open(pair.name), FailsWith(ERROR_PIPE_BUSY));
}

TEST(PipeNames, OfABusyPipeAreWaitedForUntilTheTimeIsOver) {
  const PipePair pair;
  const auto start = Clock::now();
  EXPECT_EQ(WaitForPipe(pair.name, 200), FailsWith(ERROR_SEM_TIMEOUT));
  EXPECT_GE(Clock::now() - start, 150ms);
}

TEST(PipeNames, OfABusyPipeAreWaitedForAsLongAsThePipeSays) {
  const PipePair pair({.defaultWaitMs = 200});
  const auto start = Clock::now();
  EXPECT_EQ(WaitForPipe(pair.name, NMPWAIT_USE_DEFAULT_WAIT), FailsWith(ERROR_SEM_TIMEOUT));
  EXPECT_GE(Clock::now() - start, 150ms);
}

TEST(PipeNames, OfABusyPipeThatSaysNothingAreWaitedForShortly) {
  const PipePair pair;
  const auto start = Clock::now();
  EXPECT_EQ(WaitForPipe(pair.name, NMPWAIT_USE_DEFAULT_WAIT), FailsWith(ERROR_SEM_TIMEOUT));
  EXPECT_LT(Clock::now() - start, 20s);
}

TEST(PipeNames, AreFreeWhenTheServerListensAgain) {
  PipePair pair({.instances = 1});
  Io listening;
  std::thread server([&] {
    Sleep(50);
    EXPECT_TRUE(DisconnectNamedPipe(pair.server.Get()));
    listening.Connect(pair.server.Get());
  });
  EXPECT_TRUE(WaitForPipe(pair.name, kPatienceMs).succeeded);
  server.join();
  EXPECT_TRUE(Open(pair.name).succeeded);
}

TEST(PipeNames, AreFreeWhenAnotherInstanceIsMade) {
  const PipePair pair;
  HANDLE another = INVALID_HANDLE_VALUE;
  std::thread server([&] {
    Sleep(50);
    another = CreateServer(pair.name);
  });
  EXPECT_TRUE(WaitForPipe(pair.name, kPatienceMs).succeeded);
  server.join();
  const Handle owner(another);
  EXPECT_TRUE(Open(pair.name).succeeded);
}

TEST(PipeNames, AreNotFreeWhileTheServerHasOnlyDisconnected) {
  const PipePair pair({.instances = 1});
  EXPECT_TRUE(DisconnectNamedPipe(pair.server.Get()));
  EXPECT_EQ(Open(pair.name), FailsWith(ERROR_PIPE_BUSY));
  EXPECT_EQ(WaitForPipe(pair.name, 50), FailsWith(ERROR_SEM_TIMEOUT));
}

// At once or when the time is over, as the platform likes.
TEST(PipeNames, ThatGoWhileTheyAreWaitedForAreNotFoundFree) {
  PipePair pair;
  std::thread server([&] {
    Sleep(50);
    pair.server.Close();
  });
  EXPECT_FALSE(WaitForPipe(pair.name, 500).succeeded);
  server.join();
}

TEST(PipeNames, TakeAsManyInstancesAsTheFirstOneSays) {
  const std::wstring name = UniquePipeName();
  const PipeKind two{.instances = 2};
  const Handle first(CreateServer(name, two));
  const Handle second(CreateServer(name, two));
  EXPECT_TRUE(second.IsOpen());
  EXPECT_EQ(Try([&] { return Handle(CreateServer(name, two)).IsOpen(); }),
            FailsWith(ERROR_PIPE_BUSY));
}

TEST(PipeNames, AreTakenInTheOrderInWhichTheInstancesListen) {
  const std::wstring name = UniquePipeName();
  const Handle first(CreateServer(name));
  const Handle second(CreateServer(name));
  const Handle client(OpenClient(name));
  Io write;
  EXPECT_EQ(write.Write(first.Get(), "to the client"), kSuccess);
  Io refused;
  EXPECT_EQ(refused.Write(second.Get(), "to nobody"), FailsWith(ERROR_PIPE_LISTENING));
}

}  // namespace
