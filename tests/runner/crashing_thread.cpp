// A test program that crashes before its end, and not on its first thread.

#include <cstdio>
#include <thread>

int main() {
  std::puts("Running");
  std::fflush(stdout);
  std::thread([] {
    volatile int* const nowhere = nullptr;
    *nowhere = 1;
  }).join();
}
