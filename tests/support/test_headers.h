// Compiled once for all tests: what nearly each of them includes, and what takes longest to read.
#pragma once

#ifdef _WIN32
#include <windows.h>
#endif

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
