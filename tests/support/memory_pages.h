// Pages of memory that notice who touches them.
#pragma once

#include <atomic>
#include <cstddef>
#include <new>

#include <windows.h>

#include "support/pipe_instance.h"

namespace support {

inline constexpr size_t kPageBytes = 4096;

// Memory between two pages that nobody may touch: a step beyond either end ends the process.
class GuardedMemory {
 public:
  explicit GuardedMemory(size_t pageCount)
      : byteCount(pageCount * kPageBytes),
        block(static_cast<std::byte*>(VirtualAlloc(nullptr, byteCount + 2 * kPageBytes,
                                                   MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS))) {
    DWORD before = 0;
    if (!block || !VirtualProtect(Begin(), byteCount, PAGE_READWRITE, &before)) {
      throw std::bad_alloc();
    }
  }
  ~GuardedMemory() { VirtualFree(block, 0, MEM_RELEASE); }
  GuardedMemory(const GuardedMemory&) = delete;
  GuardedMemory& operator=(const GuardedMemory&) = delete;

  std::byte* Begin() { return block + kPageBytes; }
  std::byte* End() { return Begin() + byteCount; }
  // The first byte that must not be touched before the memory.
  void* ForbiddenBefore() { return block; }

 private:
  size_t byteCount;
  std::byte* block;
};

// A page that stops the first thread that touches it, in the midst of its instruction, until the
// test lets it go on. There is one at a time.
class StallingPage {
 public:
  StallingPage()
      : page(static_cast<std::byte*>(
            VirtualAlloc(nullptr, kPageBytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE))) {
    if (!page) throw std::bad_alloc();
    current = this;
    handler = AddVectoredExceptionHandler(1, &StallingPage::OnException);
  }
  ~StallingPage() {
    RemoveVectoredExceptionHandler(handler);
    current = nullptr;
    VirtualFree(page, 0, MEM_RELEASE);
  }
  StallingPage(const StallingPage&) = delete;
  StallingPage& operator=(const StallingPage&) = delete;

  std::byte* Begin() { return page; }

  // From now on whoever touches the page is stopped.
  void Arm() { Protect(PAGE_NOACCESS); }
  [[nodiscard]] bool WaitUntilTouched() {
    return WaitForSingleObject(touched.Get(), 30000) == WAIT_OBJECT_0;
  }
  void LetGoOn() { goOn.Set(); }

 private:
  static LONG CALLBACK OnException(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    StallingPage* const self = current;
    if (record.ExceptionCode != static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION) || !self) {
      return EXCEPTION_CONTINUE_SEARCH;
    }
    const auto address = record.ExceptionInformation[1];
    const auto begin = reinterpret_cast<ULONG_PTR>(self->page);
    if (address < begin || address >= begin + kPageBytes) return EXCEPTION_CONTINUE_SEARCH;
    self->touched.Set();
    WaitForSingleObject(self->goOn.Get(), INFINITE);  // the test ends it
    self->Protect(PAGE_READWRITE);
    return EXCEPTION_CONTINUE_EXECUTION;
  }

  void Protect(DWORD protection) {
    DWORD before = 0;
    VirtualProtect(page, kPageBytes, protection, &before);
  }

  inline static std::atomic<StallingPage*> current{nullptr};
  std::byte* page;
  void* handler = nullptr;
  Event touched;
  Event goOn;
};

}  // namespace support
