/**
 * @file settings.hpp
 * @brief The callbacks and the connection of KorvuTabletSettingsAPI.h for C++20.
 *
 * Header only, in terms of the C interface alone; setters are called directly. What
 * KorvuTabletSettingsAPI.h says of callbacks holds for the functions of korvu::Callbacks too: they
 * run on the library's thread with the library's lock held. Hand over to other threads what they
 * bring, and never wait in them for a thread that may call the library, or that may make or destroy
 * a korvu::Registration.
 *
 * The library is one for the process, and so are its connection and its API version:
 * korvu::Registration and korvu::Connection declare KORVUISD_API_VERSION_MAX for all of it.
 */
#ifndef KORVU_SETTINGS_HPP
#define KORVU_SETTINGS_HPP

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

#include "../KorvuTabletSettingsAPI.h"

namespace korvu {

/**
 * The text in an array of a record, which has no terminator if it fills the array.
 *
 * @param array  UTF-16
 * @return the text without terminator; it lives as long as the array
 */
template <size_t capacity>
std::wstring_view TextOf(const wchar_t (&array)[capacity]) {
  return {array, static_cast<size_t>(std::find(array, array + capacity, L'\0') - array)};
}

/**
 * What to call when a value arrives; an empty function is not called.
 *
 * Each is the member of KorvuISD_Callbacks of the same name, without its context and its reserved
 * arguments. What it is handed is valid during the call.
 *
 * @threadsafety called one at a time, on the library's thread with its lock held; OnWedgeCapacity,
 *               OnFirstRange and OnSecondRange on the thread that makes the Registration or opens
 *               the Connection
 */
struct Callbacks {
  /** Receives a number, or a switch as 0 or 1. */
  using Value = std::function<void(int32_t value)>;
  /** Receives a button or a wedge; TextOf reads its name. */
  using Button = std::function<void(const ButtonRecord& button)>;
  /** Receives a side switch. */
  using SideSwitch = std::function<void(const KorvuISD_SideSwitch& sideSwitch)>;
  /** Receives an option list; TextOf reads a name of it. */
  using Options = std::function<void(std::span<const ButtonRecord> options)>;
  /** Receives a range. */
  using Range = std::function<void(int32_t minimum, int32_t maximum)>;
  /** Receives text. */
  using Text = std::function<void(std::wstring_view text)>;

  std::function<void(const VersionInfo& versions)> OnVersions; /**< See KorvuISD_Callbacks. */
  std::function<void(const PenInfo& pen)> OnPenInfo;           /**< See KorvuISD_Callbacks. */
  Button OnEraserSingle;                                       /**< See KorvuISD_Callbacks. */
  Button OnEraserDouble;                                       /**< See KorvuISD_Callbacks. */
  Button OnEraserLong;                                         /**< See KorvuISD_Callbacks. */
  SideSwitch OnUpperSideSwitch;                                /**< See KorvuISD_Callbacks. */
  SideSwitch OnLowerSideSwitch;                                /**< See KorvuISD_Callbacks. */
  Value OnPressureCurve;                                       /**< See KorvuISD_Callbacks. */
  Value OnTiltSensitivity;                                     /**< See KorvuISD_Callbacks. */
  Value OnBatteryAlertDelay;                                   /**< See KorvuISD_Callbacks. */
  Value OnCenterRightClick;                                    /**< See KorvuISD_Callbacks. */
  Text OnCapturedKeystrokes;                                   /**< See KorvuISD_Callbacks. */
  /** See KorvuISD_Callbacks. */
  std::function<void(std::span<const KorvuISD_ZoomMapEntry> entries)> OnDisplayZoomMap;
  Options OnRunAppOptions;                             /**< See KorvuISD_Callbacks. */
  Options OnTopButtonSingleOptions;                    /**< See KorvuISD_Callbacks. */
  Options OnTopButtonDoubleOptions;                    /**< See KorvuISD_Callbacks. */
  Options OnTopButtonLongOptions;                      /**< See KorvuISD_Callbacks. */
  Options OnSideSwitchOptions;                         /**< See KorvuISD_Callbacks. */
  Range OnFirstRange;                                  /**< See KorvuISD_Callbacks. */
  Range OnSecondRange;                                 /**< See KorvuISD_Callbacks. */
  Options OnRadialWedgeOptions;                        /**< See KorvuISD_Callbacks. */
  std::function<void(uint64_t count)> OnWedgeCapacity; /**< See KorvuISD_Callbacks. */
  Value OnOpaqueEnabledGlobal;                         /**< See KorvuISD_Callbacks. */
  Text OnOpaqueDisplayPath;                            /**< See KorvuISD_Callbacks. */
  Value OnOpaqueOrientation;                           /**< See KorvuISD_Callbacks. */
  Value OnOpaqueInputMode;                             /**< See KorvuISD_Callbacks. */
  Value OnOpaqueMapping;                               /**< See KorvuISD_Callbacks. */
  /** `selected` is the index of a monitor, or -1. */
  std::function<void(std::span<const KorvuISD_MonitorOption> monitors, int32_t selected)>
      OnMonitorOptions;
  /** A wedge of either ring. OnRadialWedge has no counterpart: it is for API versions below 2. */
  Button OnRadialWedgeEx;
  /** `ring` is 0 or 1. */
  std::function<void(int32_t ring, uint8_t count)> OnRadialZonesCount;
  Button OnAutoExecuteButton;  /**< See KorvuISD_Callbacks. */
  Options OnAutoUndockOptions; /**< See KorvuISD_Callbacks. */
  Value OnPenDockPowerSaving;  /**< See KorvuISD_Callbacks. */
  Value OnPenAlertEnabled;     /**< See KorvuISD_Callbacks. */
  /** `feature` is KORVUISD_FEATURE_DOCKABLE or KORVUISD_FEATURE_OPAQUE_MODE. */
  std::function<void(int32_t feature, bool isSupported)> OnFeatureSupport;
  Value OnOpaqueInSetupGuide;    /**< See KorvuISD_Callbacks. */
  Value OnOpaqueRememberDisplay; /**< See KorvuISD_Callbacks. */
  Value OnUndockedTimerWait;     /**< See KorvuISD_Callbacks. */
  Value OnPenGesturesEnabled;    /**< See KorvuISD_Callbacks. */
  Value OnMagnifierEnabled;      /**< See KorvuISD_Callbacks. */

  /**
   * Receives an exception that left one of the functions above; nothing may leave this one. Where
   * it is empty, such an exception ends the program, as one that leaves a thread does.
   */
  std::function<void(std::exception_ptr exception)> OnException;
};

/** @cond How callbacks of the C interface find their functions. */
namespace detail {

// The functions of one registration. They may destroy that registration while one of them runs.
struct Receiver {
  std::recursive_mutex mutex;  // held while a function runs, so that none runs after the end
  bool isActive = true;
  Callbacks callbacks;
};

// The library is one for the process, and this is what the process has of it: its registrations and
// the number of its connections. The library knows registrations by their numbers and hands these
// back: what a late callback brings is looked up, and never followed.
class Library {
 public:
  static Library& Instance() {
    // Never destroyed: the library's thread may call back until the process ends.
    static Library& library = *new Library;
    return library;
  }

  uintptr_t Add(Callbacks callbacks) {
    const auto receiver = std::make_shared<Receiver>();
    receiver->callbacks = std::move(callbacks);
    std::unique_lock lock(mutex);
    const uintptr_t number = ++lastNumber;
    entries.emplace(number, Entry{receiver});
    Register(number, lock);
    return number;
  }

  void Remove(uintptr_t number) noexcept {
    std::unique_lock lock(mutex);
    const auto entry = entries.extract(number);
    if (entry.mapped().state == State::kRegistered) {
      Call(lock, [&] { KorvuISD_RegisterCallbacks(nullptr, Context(number)); });
    }
    lock.unlock();
    const std::lock_guard noneRuns(entry.mapped().receiver->mutex);
    entry.mapped().receiver->isActive = false;
  }

  std::shared_ptr<Receiver> Find(void* context) {
    const std::lock_guard lock(mutex);
    const auto entry = entries.find(reinterpret_cast<uintptr_t>(context));
    return entry == entries.end() ? nullptr : entry->second.receiver;
  }

  bool Connect(uint32_t timeoutMs) {
    const std::lock_guard lock(connectionMutex);
    KorvuISD_SetAPIVersion(KORVUISD_API_VERSION_MAX);
    RegisterAll();
    if (KorvuISD_Connect(timeoutMs) != KorvuISD_ErrorNone) return false;
    ++connectionCount;
    return true;
  }

  void Disconnect() {
    const std::lock_guard lock(connectionMutex);
    // A client that never connected would not come back from its shutdown; this one did connect.
    if (--connectionCount == 0) ShutDown();
  }

 private:
  enum class State { kDropped, kUnderWay, kRegistered };
  struct Entry {
    std::shared_ptr<Receiver> receiver;
    State state = State::kDropped;
  };

  static void* Context(uintptr_t number) { return reinterpret_cast<void*>(number); }

  void Register(uintptr_t number, std::unique_lock<std::mutex>& lock);

  // Those that a shutdown has dropped, or that were made while it ran.
  void RegisterAll() {
    std::unique_lock lock(mutex);
    for (auto next = entries.begin(); next != entries.end();) {
      const uintptr_t number = next->first;
      Register(number, lock);
      next = entries.upper_bound(number);
    }
  }

  // False if it was removed while its registration was under way, which leaves that to us.
  bool Settle(uintptr_t number) {
    const std::lock_guard lock(mutex);
    const auto entry = entries.find(number);
    if (entry == entries.end()) return false;
    entry->second.state = State::kRegistered;
    return true;
  }

  // The library drops all registrations while it shuts down, and what is then asked of it is either
  // dropped or meant for the client after that. So nothing is asked until it is through.
  void ShutDown() {
    std::unique_lock lock(mutex);
    isShuttingDown = true;
    changed.wait(lock, [&] { return callsUnderWay == 0; });
    lock.unlock();
    KorvuISD_Shutdown();
    lock.lock();
    for (auto& [number, entry] : entries) entry.state = State::kDropped;
    isShuttingDown = false;
  }

  // Not under our lock: callbacks come with the library's lock held and then take ours.
  template <class Work>
  void Call(std::unique_lock<std::mutex>& lock, const Work& work) {
    if (isShuttingDown) return;
    ++callsUnderWay;
    lock.unlock();
    work();
    lock.lock();
    --callsUnderWay;
    changed.notify_all();
  }

  std::mutex connectionMutex;  // taken before any other, and never in a callback
  int connectionCount = 0;

  std::mutex mutex;  // and what follows is guarded by it
  std::condition_variable changed;
  std::map<uintptr_t, Entry> entries;
  uintptr_t lastNumber = 0;
  int callsUnderWay = 0;
  bool isShuttingDown = false;
};

// An exception must not get into the library, so what leaves this ends the program.
template <class Function, class... Arguments>
void Deliver(void* context, Function Callbacks::*function, const Arguments&... arguments) noexcept {
  const auto receiver = Library::Instance().Find(context);
  if (!receiver) return;
  const std::lock_guard lock(receiver->mutex);
  if (!receiver->isActive) return;
  const Callbacks& callbacks = receiver->callbacks;
  if (!callbacks.OnException) return (callbacks.*function)(arguments...);
  try {
    (callbacks.*function)(arguments...);
  } catch (...) {
    callbacks.OnException(std::current_exception());
  }
}

template <auto function, class Record>
void KORVUISD_CALL OnRecord(void* context, const Record* record) {
  Deliver(context, function, *record);
}
template <auto function, class Record>
void KORVUISD_CALL OnButton(void* context, const Record* record, int32_t) {
  Deliver(context, function, *record);
}
template <auto function>
void KORVUISD_CALL OnWedge(void* context, int32_t, const ButtonRecord* wedge) {
  Deliver(context, function, *wedge);
}
template <auto function, class... Numbers>
void KORVUISD_CALL OnNumbers(void* context, Numbers... numbers) {
  Deliver(context, function, numbers...);
}
template <auto function>
void KORVUISD_CALL OnCountedText(void* context, const wchar_t* text, uint64_t codeUnits) {
  Deliver(context, function, std::wstring_view(text, static_cast<size_t>(codeUnits)));
}
template <auto function>
void KORVUISD_CALL OnTerminatedText(void* context, const wchar_t* text) {
  Deliver(context, function, std::wstring_view(text));
}
template <auto function, class Record, class... Further>
void KORVUISD_CALL OnRecords(void* context, const Record* records, uint64_t count,
                             Further... further) {
  Deliver(context, function, std::span(records, static_cast<size_t>(count)), further...);
}
template <auto function>
void KORVUISD_CALL OnFeature(void* context, int32_t feature, int32_t isSupported) {
  Deliver(context, function, feature, isSupported != 0);
}

// The library is told of those functions only that are there.
inline KorvuISD_Callbacks RecordFor(const Callbacks& callbacks) {
  KorvuISD_Callbacks record{};
  const auto set = []<class Slot>(Slot& slot, const auto& function,
                                  std::type_identity_t<Slot> callback) {
    if (function) slot = callback;
  };
#define KORVU_SET(member, callback) \
  set(record.member, callbacks.member, callback<&Callbacks::member>)
  KORVU_SET(OnVersions, OnRecord);
  KORVU_SET(OnPenInfo, OnRecord);
  KORVU_SET(OnEraserSingle, OnButton);
  KORVU_SET(OnEraserDouble, OnButton);
  KORVU_SET(OnEraserLong, OnButton);
  KORVU_SET(OnUpperSideSwitch, OnButton);
  KORVU_SET(OnLowerSideSwitch, OnButton);
  KORVU_SET(OnPressureCurve, OnNumbers);
  KORVU_SET(OnTiltSensitivity, OnNumbers);
  KORVU_SET(OnBatteryAlertDelay, OnNumbers);
  KORVU_SET(OnCenterRightClick, OnNumbers);
  KORVU_SET(OnCapturedKeystrokes, OnCountedText);
  KORVU_SET(OnDisplayZoomMap, OnRecords);
  KORVU_SET(OnRunAppOptions, OnRecords);
  KORVU_SET(OnTopButtonSingleOptions, OnRecords);
  KORVU_SET(OnTopButtonDoubleOptions, OnRecords);
  KORVU_SET(OnTopButtonLongOptions, OnRecords);
  KORVU_SET(OnSideSwitchOptions, OnRecords);
  KORVU_SET(OnFirstRange, OnNumbers);
  KORVU_SET(OnSecondRange, OnNumbers);
  KORVU_SET(OnRadialWedgeOptions, OnRecords);
  KORVU_SET(OnWedgeCapacity, OnNumbers);
  KORVU_SET(OnOpaqueEnabledGlobal, OnNumbers);
  KORVU_SET(OnOpaqueDisplayPath, OnTerminatedText);
  KORVU_SET(OnOpaqueOrientation, OnNumbers);
  KORVU_SET(OnOpaqueInputMode, OnNumbers);
  KORVU_SET(OnOpaqueMapping, OnNumbers);
  KORVU_SET(OnMonitorOptions, OnRecords);
  KORVU_SET(OnRadialWedgeEx, OnWedge);
  KORVU_SET(OnRadialZonesCount, OnNumbers);
  KORVU_SET(OnAutoExecuteButton, OnButton);
  KORVU_SET(OnAutoUndockOptions, OnRecords);
  KORVU_SET(OnPenDockPowerSaving, OnNumbers);
  KORVU_SET(OnPenAlertEnabled, OnNumbers);
  KORVU_SET(OnFeatureSupport, OnFeature);
  KORVU_SET(OnOpaqueInSetupGuide, OnNumbers);
  KORVU_SET(OnOpaqueRememberDisplay, OnNumbers);
  KORVU_SET(OnUndockedTimerWait, OnNumbers);
  KORVU_SET(OnPenGesturesEnabled, OnNumbers);
  KORVU_SET(OnMagnifierEnabled, OnNumbers);
#undef KORVU_SET
  return record;
}

inline void Library::Register(uintptr_t number, std::unique_lock<std::mutex>& lock) {
  const auto entry = entries.find(number);
  if (entry->second.state != State::kDropped || isShuttingDown) return;
  entry->second.state = State::kUnderWay;
  const KorvuISD_Callbacks record = RecordFor(entry->second.receiver->callbacks);
  Call(lock, [&] {
    KorvuISD_SetAPIVersion(KORVUISD_API_VERSION_MAX);
    KorvuISD_RegisterCallbacks(&record, Context(number));
    if (!Settle(number)) KorvuISD_RegisterCallbacks(nullptr, Context(number));
  });
}

}  // namespace detail
/** @endcond */

/**
 * Callbacks that are called as long as this object lives, over any number of connections.
 *
 * Make it before the Connection: values that the library has received before are not repeated.
 *
 * @threadsafety made and destroyed on any thread, in a callback of its own too; when the destructor
 *               returns no callback of it runs on another thread, and none comes any more
 */
class Registration {
 public:
  /**
   * Registers the callbacks.
   *
   * OnWedgeCapacity, OnFirstRange and OnSecondRange are called before it returns.
   *
   * @param callbacks  kept until the object is destroyed
   */
  explicit Registration(Callbacks callbacks)
      : number(detail::Library::Instance().Add(std::move(callbacks))) {}

  /**
   * Takes the other one's callbacks over.
   *
   * @param other  empty afterwards
   */
  Registration(Registration&& other) noexcept : number(std::exchange(other.number, 0)) {}
  /**
   * Ends its own callbacks and takes the other one's over.
   *
   * @param other  empty afterwards
   * @return this object
   */
  Registration& operator=(Registration&& other) noexcept {
    Registration taken(std::move(other));
    std::swap(number, taken.number);
    return *this;
  }
  /** Ends the callbacks. */
  ~Registration() {
    if (number != 0) detail::Library::Instance().Remove(number);
  }

 private:
  uintptr_t number;
};

/**
 * The process's connection to the settings service, open as long as one such object lives.
 *
 * A lost connection is opened again silently, in the background.
 *
 * @threadsafety opened and destroyed on any thread, but never inside a callback
 */
class Connection {
 public:
  /**
   * Waits for the service and connects to it, or joins the connection that this process has.
   *
   * @param timeout  0 and less looks once; std::chrono::milliseconds::max() waits without end
   * @return nothing if there is no service, or no connection to it could be set up
   */
  [[nodiscard]] static std::optional<Connection> Open(std::chrono::milliseconds timeout) {
    // To the library 0 is without end, and so is the highest number, which looks less often.
    const auto timeoutMs = std::clamp<int64_t>(timeout.count(), 1, UINT32_MAX);
    if (!detail::Library::Instance().Connect(static_cast<uint32_t>(timeoutMs))) return {};
    return Connection();
  }

  /**
   * Takes the other one's place.
   *
   * @param other  no longer a connection afterwards
   */
  Connection(Connection&& other) noexcept : isOpen(std::exchange(other.isOpen, false)) {}
  /**
   * Gives its own place up and takes the other one's.
   *
   * @param other  no longer a connection afterwards
   * @return this object
   */
  Connection& operator=(Connection&& other) noexcept {
    Connection taken(std::move(other));
    std::swap(isOpen, taken.isOpen);
    return *this;
  }
  /**
   * The last one of the process shuts the library down.
   *
   * That takes a tenth of a second, or up to 30 seconds while the service is away. What setters
   * have queued and was not sent yet is dropped.
   */
  ~Connection() {
    if (isOpen) detail::Library::Instance().Disconnect();
  }

 private:
  Connection() = default;

  bool isOpen = true;
};

}  // namespace korvu

#endif
