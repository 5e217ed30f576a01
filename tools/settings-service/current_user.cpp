#include "settings-service/current_user.h"

#include <cstddef>
#include <string>
#include <vector>

#include <sddl.h>

#include "platform/unique_handle.h"
#include "settings-service/system_error.h"

namespace tool::service {
namespace {

constexpr auto kStep = "cannot restrict the pipes to the current user";

// The user's security identifier, as text.
std::wstring CurrentUser() {
  HANDLE opened = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) FailWith(kStep, GetLastError());
  const KorvuISD::UniqueHandle<KorvuISD::KernelHandleTraits> token(opened);

  DWORD byteCount = 0;
  GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &byteCount);
  std::vector<std::byte> buffer(byteCount);
  if (!GetTokenInformation(token.Get(), TokenUser, buffer.data(), byteCount, &byteCount)) {
    FailWith(kStep, GetLastError());
  }
  const auto* user = reinterpret_cast<const TOKEN_USER*>(buffer.data());
  wchar_t* text = nullptr;
  if (!ConvertSidToStringSidW(user->User.Sid, &text)) FailWith(kStep, GetLastError());
  std::wstring identifier = text;
  LocalFree(text);
  return identifier;
}

}  // namespace

CurrentUserOnly::CurrentUserOnly() {
  // Protected, so that nothing is inherited; all access, one entry.
  const std::wstring text = L"D:P(A;;GA;;;" + CurrentUser() + L")";
  void* built = nullptr;
  if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1, &built,
                                                            nullptr)) {
    FailWith(kStep, GetLastError());
  }
  descriptor.reset(built);
  attributes.nLength = sizeof(attributes);
  attributes.lpSecurityDescriptor = descriptor.get();
}

}  // namespace tool::service
