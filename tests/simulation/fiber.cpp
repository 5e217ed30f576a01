#include "fiber.h"

#include <cstdlib>
#include <utility>
#include <vector>

#include <cxxabi.h>
#include <sys/mman.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SIMULATION_UNDER_ASAN 1
#include <sanitizer/asan_interface.h>
#include <sanitizer/common_interface_defs.h>
#endif
#endif

namespace simulation {
namespace {

constexpr size_t kStackBytes = 256 * 1024;
constexpr size_t kGuardBytes = 4096;

Fiber* g_cameFrom = nullptr;
Fiber* g_comesTo = nullptr;

// What a switch leaves on the stack: the registers that a function must keep, and where it goes on.
struct Frame {
  void* kept[6];
  void (*next)();
};

// Not the C library's swapcontext: that asks the system to change the signal mask at each switch,
// and AddressSanitizer's version of it wipes the shadow of the whole stack.
#if !defined(__x86_64__)
#error "the simulator switches stacks on x86-64 only"
#endif
extern "C" void SimulationSwitchStacks(void** from, void* to);
asm(R"(
.text
.type SimulationSwitchStacks, @function
SimulationSwitchStacks:
  pushq %rbp
  pushq %rbx
  pushq %r12
  pushq %r13
  pushq %r14
  pushq %r15
  movq %rsp, (%rdi)
  movq %rsi, %rsp
  popq %r15
  popq %r14
  popq %r13
  popq %r12
  popq %rbx
  popq %rbp
  ret
.size SimulationSwitchStacks, .-SimulationSwitchStacks
)");

// Kept for the fibers to come: to ask the system for one takes longer than most switches.
std::vector<char*>& FreeStacks() {
  static auto& free = *new std::vector<char*>;
  return free;
}

char* TakeStack() {
  auto& free = FreeStacks();
  if (!free.empty()) {
    char* const stack = free.back();
    free.pop_back();
    return stack;
  }
  void* const pages = mmap(nullptr, kGuardBytes + kStackBytes, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (pages == MAP_FAILED) std::abort();
  mprotect(pages, kGuardBytes, PROT_NONE);
  return static_cast<char*>(pages) + kGuardBytes;
}

}  // namespace

Fiber::Fiber(void (*routine)(void*), void* argument)
    : routine(routine), argument(argument), stack(TakeStack()) {
  stackBottom = stack;
  stackBytes = kStackBytes;
  // As a function finds the stack when it has been called: 8 bytes off a multiple of 16.
  auto* const frame = reinterpret_cast<Frame*>(stack + kStackBytes - 8 - sizeof(Frame));
  *frame = Frame{{}, &Fiber::Enter};
  stackTop = frame;
}

Fiber::~Fiber() {
  if (!stack) return;
#if defined(SIMULATION_UNDER_ASAN)
  __asan_unpoison_memory_region(stack, kStackBytes);
#endif
  FreeStacks().push_back(stack);
}

void Fiber::SwitchTo(Fiber& next, [[maybe_unused]] bool forGood) {
  auto& current = *reinterpret_cast<Handled*>(abi::__cxa_get_globals());
  handled = std::exchange(current, next.handled);
  g_cameFrom = this;
#if defined(SIMULATION_UNDER_ASAN)
  __sanitizer_start_switch_fiber(forGood ? nullptr : &keptBySanitizer, next.stackBottom,
                                 next.stackBytes);
#endif
  g_comesTo = &next;
  SimulationSwitchStacks(&stackTop, next.stackTop);
  Arrive();
}

void Fiber::Arrive() {
#if defined(SIMULATION_UNDER_ASAN)
  const void* bottom = nullptr;
  size_t bytes = 0;
  __sanitizer_finish_switch_fiber(keptBySanitizer, &bottom, &bytes);
  if (!g_cameFrom->stack) {
    g_cameFrom->stackBottom = bottom;
    g_cameFrom->stackBytes = bytes;
  }
#endif
}

void Fiber::Enter() {
  Fiber& self = *g_comesTo;
  self.Arrive();
  self.routine(self.argument);
}

}  // namespace simulation
