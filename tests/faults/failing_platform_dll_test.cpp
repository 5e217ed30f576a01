// Each of the platform's calls that a connection makes fails, at its first, second and a later use.

#include <atomic>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "faults/faults_test.h"
#include "support/import_hooks.h"

using namespace support;

namespace {

// The locks of the C++ runtime use the platform's calls, too, and do not outlive their failure.
bool IsOfRuntime(HANDLE handle, auto...) {
  return IsRuntimeHandle(handle);
}
bool IsOfRuntime(DWORD count, const HANDLE* handles, auto...) {
  return count > 0 && IsRuntimeHandle(handles[0]);
}
bool IsOfRuntime(auto...) {
  return false;
}

struct PlatformCall {
  const char* name;
  // From now on use number `nth` of it fails; counts the uses.
  std::function<void(const Library&, int nth, std::atomic<int>& uses)> failAt;
  std::function<void()> failNoMore;
  std::vector<int> uses;  // that are made to fail
};
void PrintTo(const PlatformCall& call, std::ostream* out) {
  *out << call.name;
}

template <class Hook, class Result>
PlatformCall Failing(const char* name, Result result, DWORD error, std::vector<int> uses) {
  const auto failAt = [=](const Library& library, int nth, std::atomic<int>& used) {
    Hook::Set(library, [=, &used](auto... arguments) -> decltype(Hook::Real(arguments...)) {
      if (IsOfRuntime(arguments...) || ++used != nth) return Hook::Real(arguments...);
      SetLastError(error);
      return result;
    });
  };
  return {name, failAt, Hook::Clear, std::move(uses)};
}

class FailingPlatform : public FaultsTest, public testing::WithParamInterface<PlatformCall> {
 protected:
  // `work` runs once for each use that is made to fail, and must come to that use.
  void FailEachUse(const std::function<void(int nth)>& work) {
    const PlatformCall& call = GetParam();
    Usage before;
    for (size_t i = 0; i <= call.uses.size(); ++i) {
      // The first round fails nothing: what is made once is there after it.
      const int nth = i == 0 ? 0 : call.uses[i - 1];
      const std::string what = call.name + std::string(" ") + std::to_string(nth);
      uses = 0;
      call.failAt(library, nth, uses);
      work(nth);
      ASSERT_NO_FATAL_FAILURE(ExpectRecovery(what));
      call.failNoMore();
      EXPECT_GE(uses, nth) << what << " was not reached";
      ASSERT_NO_FATAL_FAILURE(ExpectRecovery(what + ", afterwards"));
      if (i == 0) before = CurrentUsage();
    }
    ExpectUsage(before);
  }

  inline static std::atomic<int> uses;
};

class FailingInTraffic : public FailingPlatform {};

TEST_P(FailingInTraffic, IsRecoveredFrom) {
  FailEachUse([&](int) {
    SendRequests(10);
    library.KorvuISD_SetTiltSensitivity(3, 1);
    service.Command("burst TiltSensitivity 20");
  });
}

INSTANTIATE_TEST_SUITE_P(
    Of, FailingInTraffic,
    testing::Values(Failing<GetOverlappedResultHook>("GetOverlappedResult", FALSE,
                                                     ERROR_BROKEN_PIPE, {1, 2, 3, 9}),
                    Failing<ReadFileHook>("ReadFile", FALSE, ERROR_BROKEN_PIPE, {1, 2, 9}),
                    Failing<ResetEventHook>("ResetEvent", FALSE, ERROR_INVALID_HANDLE,
                                            {1, 2, 3, 9}),
                    Failing<SetEventHook>("SetEvent", FALSE, ERROR_INVALID_HANDLE, {1, 2, 9}),
                    Failing<WaitForMultipleObjectsHook>("WaitForMultipleObjects", WAIT_FAILED,
                                                        ERROR_INVALID_HANDLE, {1, 2, 9}),
                    Failing<WaitForSingleObjectHook>("WaitForSingleObject", WAIT_FAILED,
                                                     ERROR_INVALID_HANDLE, {1, 2, 9}),
                    Failing<WriteFileHook>("WriteFile", FALSE, ERROR_NO_DATA, {1, 2, 5})),
    [](const auto& call) { return std::string(call.param.name); });

class FailingUnderRequests : public FailingPlatform {};

TEST_P(FailingUnderRequests, IsRecoveredFrom) {
  // A read is withdrawn after an exchange, unless an announcement has ended it. One that could not
  // be withdrawn ends with the next announcement.
  int value = 0;
  FailEachUse([&](int nth) {
    for (size_t i = 1; i < 100 && uses < nth; ++i) {
      SendRequests(1);
      ASSERT_TRUE(replies.WaitFor(i));
      service.Command("announce TiltSensitivity " + std::to_string(++value));
      ASSERT_TRUE(recorder.WaitForSlot(kTiltSensitivitySlot, i));
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Of, FailingUnderRequests,
                         testing::Values(Failing<CancelIoExHook>("CancelIoEx", FALSE,
                                                                 ERROR_NOT_FOUND, {1, 2, 5})),
                         [](const auto& call) { return std::string(call.param.name); });

class FailingUnderSetters : public FailingPlatform {};

TEST_P(FailingUnderSetters, IsRecoveredFrom) {
  FailEachUse([&](int) {
    for (int value = 0; value < 3; ++value) library.KorvuISD_SetTiltSensitivity(value, 0);
  });
}

// Without an event there is no exchange, and a request whose exchange it was is not answered.
INSTANTIATE_TEST_SUITE_P(Of, FailingUnderSetters,
                         testing::Values(Failing<CreateEventWHook>("CreateEventW", HANDLE{},
                                                                   ERROR_NOT_ENOUGH_MEMORY,
                                                                   {1, 2, 5})),
                         [](const auto& call) { return std::string(call.param.name); });

class FailingInReconnection : public FailingPlatform {};

TEST_P(FailingInReconnection, IsRecoveredFrom) {
  FailEachUse([&](int) {
    service.Command("drop");
    SendRequests(5);
  });
}

// Fails an event of the connection that comes next: the one that goes may still send a request,
// with an event of its own. Not the first: without it there is no thread to reconnect.
PlatformCall FailingEventsOfNextConnection() {
  static std::atomic<bool> hasThread;
  const auto failAt = [](const Library& library, int nth, std::atomic<int>& used) {
    hasThread = false;
    CreateThreadHook::Set(library, [](auto... arguments) {
      hasThread = true;
      return CreateThreadHook::Real(arguments...);
    });
    CreateEventWHook::Set(library, [=, &used](auto... arguments) {
      if (!hasThread || ++used != nth) return CreateEventWHook::Real(arguments...);
      SetLastError(ERROR_NOT_ENOUGH_MEMORY);
      return HANDLE{};
    });
  };
  const auto failNoMore = [] {
    CreateEventWHook::Clear();
    CreateThreadHook::Clear();
  };
  return {"CreateEventW", failAt, failNoMore, {2, 3, 9}};
}

INSTANTIATE_TEST_SUITE_P(
    Of, FailingInReconnection,
    testing::Values(
        FailingEventsOfNextConnection(),
        Failing<CreateFileWHook>("CreateFileW", INVALID_HANDLE_VALUE, ERROR_PIPE_BUSY, {1, 2}),
        Failing<CreateThreadHook>("CreateThread", HANDLE{}, ERROR_NOT_ENOUGH_MEMORY, {1}),
        Failing<SetNamedPipeHandleStateHook>("SetNamedPipeHandleState", FALSE,
                                             ERROR_PIPE_NOT_CONNECTED, {1, 2}),
        Failing<WaitNamedPipeWHook>("WaitNamedPipeW", FALSE, ERROR_SEM_TIMEOUT, {1})),
    [](const auto& call) { return std::string(call.param.name); });

}  // namespace
