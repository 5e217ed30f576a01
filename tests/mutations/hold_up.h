// For the changes that hold a thread up for a moment.
#pragma once

extern "C" int usleep(unsigned int microseconds);

inline void HoldUpMs(unsigned int ms) {
  usleep(ms * 1000);
}
