#include "clients/pipes.h"

#include <string>
#include <string_view>

#include "settings/number_conversion.h"
#include "support/system_failure.h"

namespace bench {
namespace {

constexpr DWORD kWaitMs = 10'000;

std::wstring PipeName(std::wstring_view prefix, DWORD session) {
  return std::wstring(prefix) + KorvuISD::UnsignedDecimal(session);
}

KorvuISD::PipeHandle OpenPipe(const std::wstring& name, DWORD access, DWORD flags) {
  Check(WaitNamedPipeW(name.c_str(), kWaitMs), "WaitNamedPipeW");
  KorvuISD::PipeHandle pipe(
      CreateFileW(name.c_str(), access, 0, nullptr, OPEN_EXISTING, flags, nullptr));
  Check(pipe.IsOpen(), "CreateFileW");
  DWORD mode = PIPE_READMODE_MESSAGE;
  Check(SetNamedPipeHandleState(pipe.Get(), &mode, nullptr, nullptr), "SetNamedPipeHandleState");
  return pipe;
}

}  // namespace

Pipes OpenPipes(DWORD flags) {
  DWORD session = 0;
  Check(ProcessIdToSessionId(GetCurrentProcessId(), &session), "ProcessIdToSessionId");
  const std::wstring sendOnly = PipeName(LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_)", session);
  const std::wstring duplex = PipeName(LR"(\\.\pipe\KorvuSettingsSyncher_)", session);
  Pipes pipes;
  pipes.sendOnly = OpenPipe(sendOnly, GENERIC_READ | FILE_WRITE_ATTRIBUTES, flags);
  pipes.duplex = OpenPipe(duplex, GENERIC_READ | GENERIC_WRITE, flags);
  return pipes;
}

}  // namespace bench
