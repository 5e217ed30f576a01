/**
 * @file KorvuTabletSettingsAPI.h
 * @brief Reads and changes the settings of the tablet driver's settings service.
 *
 * This one file is the whole public interface of `KorvuTabletSettingsAPI.dll`. It is valid C11 and
 * C++11 and later, for 64-bit Windows.
 *
 * ## Life cycle
 *
 * 1. KorvuISD_SetAPIVersion declares which calls and callbacks the application knows.
 * 2. KorvuISD_SetLogLevel, if wanted, switches the trace on.
 * 3. KorvuISD_RegisterCallbacks hands over the callbacks and a context pointer.
 * 4. KorvuISD_Connect opens the connection to the service of this Windows session. The library then
 *    asks for every setting by itself, and the values arrive through the callbacks.
 * 5. Setters ask the service for changes; the stored value comes back through the callbacks.
 * 6. KorvuISD_Shutdown ends the connection and drops all registrations.
 *
 * Nothing enforces this order: every function may be called at any time, but callbacks that are
 * registered after the values have arrived are told of later changes only, and what a setter queues
 * before the connection opens is lost.
 *
 * ## What surprises
 *
 * - KorvuISD_Shutdown on a client that never connected does not return. Call it only after
 *   KorvuISD_Connect has answered KorvuISD_ErrorNone.
 * - KorvuISD_Shutdown must not be called from a callback: it waits for the thread that it is on.
 * - KorvuISD_Shutdown does not return from `DllMain` or, while the process exits, from the
 *   destructor of a static object in a DLL: Windows has ended the library's thread by then, or does
 *   not let it end while the loader's lock is held. Call it before, or let the process end without.
 * - Value callbacks run on the library's thread with the library's lock held. Most functions here
 *   take that lock. So a callback must never wait for another thread that may be inside one of
 *   these functions. In particular, where callbacks are marshalled to a user-interface thread, they
 *   must be posted, not sent: a user-interface thread that calls a function of this library while
 *   the callback waits for that thread never comes back. Language bindings that marshal callbacks
 *   synchronously deadlock in just this way.
 * - A lost connection is regained in the background. No function and no callback reports the loss
 *   or the return; after it, every value is requested afresh, and changed ones are called back.
 *
 * ## Threads
 *
 * Every function may be called from any thread, and from inside a callback, unless its comment says
 * otherwise. One library-wide recursive lock serialises the work. No function but KorvuISD_Connect
 * and KorvuISD_Shutdown waits for an answer of the service: setters queue their messages and
 * return. But the lock is held while a connection is opened, also when a lost one is regained in
 * the background, and that waits up to a second for the service's second pipe; until then every
 * function that takes the lock waits, too. A thread that must never stall so long, such as that of
 * a user interface, calls setters from another one. And a callback of the application holds up all
 * of these functions for as long as it runs. The library has one thread of its own for each
 * connection, the *library's thread*: it talks to the service and calls the callbacks. It keeps the
 * DLL loaded until it has ended.
 *
 * ## Setters {#setters}
 *
 * The functions that ask the service to change something share a contract. Their comments say what
 * differs: the range of the value, the callback, the least API version.
 *
 * - **What is sent.** A setter queues the message that sets the value and a request for the value
 *   that the service then holds, as one unit, and returns before either is sent. One that assigns a
 *   function to a button queues the function code, the companion text if the code has one, and
 *   requests for the code and for the name, which the service derives.
 * - **Value.** 32 bits. "Sent unchecked" means as unsigned decimal whatever its range: -1 goes out
 *   as 4294967295. A button's function is a ButtonFunctionValue.
 * - **Empty.** 32 bits, zero or not. If nonzero, an empty value is sent, which asks the service for
 *   the default; the value is then ignored, and a pointer to it is not followed and may be null.
 * - **Threads.** Any thread, inside a callback too. It may wait for the library's lock, and so up
 * to a second while a connection is being opened; see Threads above.
 * - **Ownership.** Nothing is kept: records and texts are read during the call only.
 * - **Errors.** None reported. While the library shuts down the call is dropped.
 * - **Callbacks.** The one that the comment names comes later, on the library's thread, if the
 *   stored value changed. An API version beside it is the least that has this callback.
 * - **While not connected.** The change is lost: what is queued is discarded when a connection
 *   opens.
 *
 * ## Text and numbers
 *
 * Text is UTF-16. "Terminated" means that it ends with a zero code unit; "counted" text comes with
 * a count of code units and need not be terminated. Sizes are in code units unless a comment says
 * bytes. The flags of the setters and of the records are 32-bit integers, zero or not. Texts that
 * the application passes go to the service as they stand: nothing is escaped.
 *
 * ## Stability
 *
 * Sizes, offsets and the order of callbacks never change for an API version; later versions append.
 * All functions use the platform's standard calling convention. A C++ exception leaves a function
 * only where its comment says so, or as `std::bad_alloc` where there is no memory; of the messages
 * of that call none is queued then. A callback must not let one out.
 */
#ifndef KORVU_TABLET_SETTINGS_API_H
#define KORVU_TABLET_SETTINGS_API_H

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

#if defined(_WIN32) && !defined(_WIN64)
#error "KorvuTabletSettingsAPI is a library for 64-bit Windows"
#endif

/** Calling convention of all functions and callbacks. */
#if defined(_WIN32)
#define KORVUISD_CALL __stdcall
#else
#define KORVUISD_CALL
#endif

/** Marks a function that the DLL exports; define KORVUISD_BUILDING_LIBRARY only to build the DLL.
 */
#if defined(_WIN32) && !defined(KORVUISD_BUILDING_LIBRARY)
#define KORVUISD_API __declspec(dllimport)
#else
#define KORVUISD_API
#endif

/** Highest API version that this library knows; KorvuISD_SetAPIVersion takes higher ones as this.
 */
#define KORVUISD_API_VERSION_MAX 9

/** Ordinal of KorvuISD_SendManual, which the DLL exports without a name. */
#define KORVUISD_SEND_MANUAL_ORDINAL 1

/** Capacity of a name array, in code units, terminator included. */
#define KORVUISD_NAME_CAPACITY 512

/** Capacity of the short texts of VersionInfo and PenInfo, in code units, terminator included. */
#define KORVUISD_SHORT_TEXT_CAPACITY 16

/** Function code of a button that types keystrokes; its ButtonFunctionValue carries text. */
#define KORVUISD_FUNCTION_KEYSTROKES 8

/** Function code of a button that starts an application; its ButtonFunctionValue carries text. */
#define KORVUISD_FUNCTION_RUN_APP 23

/** Function code in the records that OnRunAppOptions receives. */
#define KORVUISD_FUNCTION_RUN_APP_OPTION 88

/** The width of the enumerations, which C++ lets us fix. */
#ifdef __cplusplus
#define KORVUISD_ENUM_BASE : int32_t
#else
#define KORVUISD_ENUM_BASE
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Result of KorvuISD_Connect, 32 bits wide. */
typedef enum KorvuISD_Error KORVUISD_ENUM_BASE {
  /** Success; also "already connected", and "skipped, since the client is shutting down". */
  KorvuISD_ErrorNone = 0,
  /** The service was not there in time, or the connection could not be set up; see the trace. */
  KorvuISD_ErrorFailed = 1
} KorvuISD_Error;

/** Trace switch, 32 bits wide. Any value but KorvuISD_LogLevelOff switches the trace on. */
typedef enum KorvuISD_LogLevel KORVUISD_ENUM_BASE {
  /** Trace on. The library makes no difference between the levels that are on. */
  KorvuISD_LogLevelVerbose = 0,
  /** Trace on, as KorvuISD_LogLevelVerbose. */
  KorvuISD_LogLevelInfo = 1,
  /** Trace on, as KorvuISD_LogLevelVerbose. */
  KorvuISD_LogLevelError = 2,
  /** Trace off, the default. */
  KorvuISD_LogLevelOff = 3
} KorvuISD_LogLevel;

/** Versions of the driver's two programs, both terminated. */
typedef struct VersionInfo {
  /** Version of the HID router. A text of 16 code units is cut to 15. */
  wchar_t hidRouterVersion[KORVUISD_SHORT_TEXT_CAPACITY];
  /** Version of the settings service. A text of 16 code units is cut to 15. */
  wchar_t serviceVersion[KORVUISD_SHORT_TEXT_CAPACITY];
} VersionInfo;

/** A button, or an entry of an option list: what it does and how that is called. */
typedef struct ButtonRecord {
  /** Function code as the service sent it. The service defines the codes. */
  int32_t function;
  /**
   * Display name. The name of a button is terminated: one that does not fit is cut to 511 code
   * units, or to 510 where the cut would divide a surrogate pair. The name of an option is cut to
   * 512 code units and is then not terminated: read at most KORVUISD_NAME_CAPACITY of them.
   */
  wchar_t name[KORVUISD_NAME_CAPACITY];
} ButtonRecord;

/** A side switch: its button and its hover-click setting. */
typedef struct KorvuISD_SideSwitch {
  /** What the switch does. */
  ButtonRecord button;
  /** 1: the switch clicks while the pen hovers; 0: it does not. */
  int32_t hoverClick;
} KorvuISD_SideSwitch;

/** Identity of the Bluetooth module of a pen. All zero until the module has told it. */
typedef struct KorvuISD_ModuleIdentity {
  /** Version, terminated, cut to 15 code units. */
  wchar_t version[KORVUISD_SHORT_TEXT_CAPACITY];
  /** Module id, terminated, cut to 15 code units. */
  wchar_t moduleId[KORVUISD_SHORT_TEXT_CAPACITY];
  /** Product id: the low 16 bits of the number that the service sent. */
  uint16_t productId;
  /** Serial number, terminated, cut to 15 code units. It equals that of the pen it sits in. */
  wchar_t serialNumber[KORVUISD_SHORT_TEXT_CAPACITY];
} KorvuISD_ModuleIdentity;

/**
 * What is known of one pen.
 *
 * A pen appears when its serial number and its pen id are both known. A battery or dock value for a
 * pen that is not known yet makes a record that is empty but for that value, its serial number too;
 * that is filled in when the tablet names the pen, or when the pen has told its serial number and
 * its pen id.
 */
typedef struct PenInfo {
  /** Serial number, terminated, cut to 15 code units. */
  wchar_t serialNumber[KORVUISD_SHORT_TEXT_CAPACITY];
  /** Pen id, terminated, cut to 15 code units. */
  wchar_t penId[KORVUISD_SHORT_TEXT_CAPACITY];
  /** The Bluetooth module in this pen. */
  KorvuISD_ModuleIdentity module;
  /** Battery status as the service sent it; -1 until one has arrived. */
  int32_t batteryStatus;
  /** Charging state: the low 8 bits of the number that the service sent. */
  uint8_t batteryCharging;
  /** 1: the pen is near the tablet; 0: it is not. */
  int32_t inProximity;
  /** Vendor id: the low 8 bits of the number that the service sent. */
  uint8_t vendorId;
  /** Pen type: the low 16 bits of the number that the service sent. */
  uint16_t penType;
  /** Firmware version of the tablet, terminated, cut to 15 code units. */
  wchar_t firmwareVersion[KORVUISD_SHORT_TEXT_CAPACITY];
  /** Sensor id of the tablet. */
  int32_t sensorId;
  /**
   * 1: the Bluetooth module is connected; 0: it is not. Stays 0 below API version 3. A module that
   * has moved to another pen may still count as connected in the record of the pen before.
   */
  int32_t moduleConnected;
  /**
   * 1: a pen is in the tablet's dock; 0: none is. A change of the current pen's goes into all
   * records; a record that a battery value makes starts with 0 all the same. Below API version 7
   * the dock is ignored once a pen is known.
   */
  int32_t docked;
} PenInfo;

/** One entry of the display zoom map: the four numbers that KorvuISD_SetSlavedDisplayZoom takes. */
typedef struct KorvuISD_ZoomMapEntry {
  /** First field of the first pair. */
  int32_t a;
  /** Second field of the first pair. */
  int32_t b;
  /** First field of the second pair. */
  int32_t c;
  /** Second field of the second pair. */
  int32_t d;
} KorvuISD_ZoomMapEntry;

/** Two numbers that KorvuISD_SetSlavedDisplayZoom takes by value. */
typedef struct KorvuISD_ZoomPair {
  /** First number. */
  int32_t first;
  /** Second number. */
  int32_t second;
} KorvuISD_ZoomPair;

/** A monitor that opaque mode may use. Both texts are terminated and cut as a button's name is. */
typedef struct KorvuISD_MonitorOption {
  /** Display path, the text that KorvuISD_SetOpaqueModeDisplayPath takes. */
  wchar_t displayPath[KORVUISD_NAME_CAPACITY];
  /** Display name. */
  wchar_t displayName[KORVUISD_NAME_CAPACITY];
} KorvuISD_MonitorOption;

/**
 * The function that a button setter assigns.
 *
 * `text` is read for the codes KORVUISD_FUNCTION_KEYSTROKES (the keystroke sequence) and
 * KORVUISD_FUNCTION_RUN_APP (the application's path, or a display name of the run-application
 * options) only; a record with another code may end before it. Where it is read, it must be
 * terminated. A text that needs more than the array may run on past it in a larger block.
 */
typedef struct ButtonFunctionValue {
  /** Function code; sent as signed decimal. */
  int32_t function;
  /** Terminated text, stored inline. */
  wchar_t text[KORVUISD_NAME_CAPACITY];
} ButtonFunctionValue;

/** Feature number of OnFeatureSupport: the tablet can hold a pen in its dock. */
#define KORVUISD_FEATURE_DOCKABLE 0
/** Feature number of OnFeatureSupport: opaque mode is supported. */
#define KORVUISD_FEATURE_OPAQUE_MODE 1

/** Receives a 32-bit setting. @param context as registered @param value the setting */
typedef void(KORVUISD_CALL* KorvuISD_ValueCallback)(void* context, int32_t value);

/** Receives versions. @param context as registered @param versions valid during the call */
typedef void(KORVUISD_CALL* KorvuISD_VersionsCallback)(void* context, const VersionInfo* versions);

/** Receives a pen. @param context as registered @param pen valid during the call */
typedef void(KORVUISD_CALL* KorvuISD_PenInfoCallback)(void* context, const PenInfo* pen);

/**
 * Receives a button.
 * @param context   as registered
 * @param button    valid during the call
 * @param reserved  0
 */
typedef void(KORVUISD_CALL* KorvuISD_ButtonCallback)(void* context, const ButtonRecord* button,
                                                     int32_t reserved);

/**
 * Receives a side switch.
 * @param context      as registered
 * @param sideSwitch   valid during the call
 * @param reserved     0 after a change of the name; carries no value after a change of hover click
 */
typedef void(KORVUISD_CALL* KorvuISD_SideSwitchCallback)(void* context,
                                                         const KorvuISD_SideSwitch* sideSwitch,
                                                         int32_t reserved);

/**
 * Receives a wedge of the radial menu.
 * @param context   as registered
 * @param reserved  0
 * @param wedge     valid during the call
 */
typedef void(KORVUISD_CALL* KorvuISD_WedgeCallback)(void* context, int32_t reserved,
                                                    const ButtonRecord* wedge);

/**
 * Receives counted text.
 * @param context    as registered
 * @param text       UTF-16, not terminated, valid during the call
 * @param codeUnits  length of `text` in code units; may be 0
 */
typedef void(KORVUISD_CALL* KorvuISD_CountedTextCallback)(void* context, const wchar_t* text,
                                                          uint64_t codeUnits);

/** Receives text. @param context as registered @param text terminated, valid during the call */
typedef void(KORVUISD_CALL* KorvuISD_TextCallback)(void* context, const wchar_t* text);

/**
 * Receives the display zoom map.
 * @param context  as registered
 * @param entries  array of `count` entries, valid during the call; never null
 * @param count    number of entries, 1 or more: an empty map is not reported
 */
typedef void(KORVUISD_CALL* KorvuISD_ZoomMapCallback)(void* context,
                                                      const KorvuISD_ZoomMapEntry* entries,
                                                      uint64_t count);

/**
 * Receives an option list: all that the service has offered since the client was made. The list of
 * OnRunAppOptions also has the texts that a setter could not find in it.
 * @param context  as registered
 * @param options  array of `count` records, valid during the call; read at most 512 code units of
 *                 a name; may be null if `count` is 0
 * @param count    number of records; may be 0
 */
typedef void(KORVUISD_CALL* KorvuISD_OptionsCallback)(void* context, const ButtonRecord* options,
                                                      uint64_t count);

/**
 * Receives the monitors that opaque mode may use: those of the service's last list.
 * @param context   as registered
 * @param monitors  array of `count` records, valid during the call; may be null if `count` is 0
 * @param count     number of records; may be 0
 * @param selected  index of the monitor that the opaque display path names at this moment, or -1; a
 *                  new path alone brings no call
 */
typedef void(KORVUISD_CALL* KorvuISD_MonitorsCallback)(void* context,
                                                       const KorvuISD_MonitorOption* monitors,
                                                       uint64_t count, int32_t selected);

/** Receives a range. @param context as registered @param minimum lowest @param maximum highest */
typedef void(KORVUISD_CALL* KorvuISD_RangeCallback)(void* context, int32_t minimum,
                                                    int32_t maximum);

/** Receives a count. @param context as registered @param count the number */
typedef void(KORVUISD_CALL* KorvuISD_CountCallback)(void* context, uint64_t count);

/**
 * Receives the number of wedges that a ring of the radial menu shows.
 * @param context  as registered
 * @param ring     0 for the first ring, 1 for the second
 * @param count    the low 8 bits of the number that the service sent
 */
typedef void(KORVUISD_CALL* KorvuISD_ZonesCallback)(void* context, int32_t ring, uint8_t count);

/**
 * Receives whether the tablet supports a feature.
 * @param context    as registered
 * @param feature    KORVUISD_FEATURE_DOCKABLE or KORVUISD_FEATURE_OPAQUE_MODE
 * @param supported  0 or 1
 */
typedef void(KORVUISD_CALL* KorvuISD_FeatureCallback)(void* context, int32_t feature,
                                                      int32_t supported);

/**
 * Receives the reply to a manual request, once for each request; see KorvuISD_SendManual.
 *
 * Unlike the other callbacks it is called without the library's lock.
 *
 * @param context      as passed to KorvuISD_SendManual
 * @param text         the request part and, right after it, the reply value: one terminated text,
 *                     valid during the call
 * @param partLengths  two lengths in code units: of the request part and of the reply value; valid
 *                     during the call
 * @param partCount    2
 */
typedef void(KORVUISD_CALL* ManualReplyCallback)(void* context, const wchar_t* text,
                                                 size_t* partLengths, size_t partCount);

/**
 * The application's callbacks.
 *
 * A null pointer means that the application does not want that callback. The library reads the
 * members that the declared API version opens and no more, so an application of version 0 may hand
 * over a record that ends after OnWedgeCapacity.
 *
 * A value callback comes when the value that the library holds has changed, on the library's
 * thread, with the library's lock held. OnPenInfo comes for every attribute that a connected
 * Bluetooth module announces. The option lists, the monitors, OnFeatureSupport and
 * OnCapturedKeystrokes come for every value that arrives, even the same one again or an empty one;
 * so each connection brings them once. OnWedgeCapacity, OnFirstRange and OnSecondRange come from
 * KorvuISD_RegisterCallbacks instead, on its caller's thread. Where several registrations stand,
 * each callback goes to all of them, from the lowest context pointer to the highest. Pointers are
 * valid during the call. A callback may call any function of the library but KorvuISD_Shutdown, may
 * register and remove registrations, its own included, and must not throw.
 */
typedef struct KorvuISD_Callbacks {
  /** Versions of the driver. Not called while either text has more than 16 code units. API 0. */
  KorvuISD_VersionsCallback OnVersions;
  /**
   * A pen changed, or its Bluetooth module told something, new or not. A pen that is seen for the
   * first time is not reported, unless a Bluetooth module waited for it. Where a module disconnects
   * whose own record does not say so, the record of the pen at hand comes. API 0.
   */
  KorvuISD_PenInfoCallback OnPenInfo;
  /** The eraser's single press. API 0. */
  KorvuISD_ButtonCallback OnEraserSingle;
  /** The eraser's double press. API 0. */
  KorvuISD_ButtonCallback OnEraserDouble;
  /** The eraser's long press. API 0. */
  KorvuISD_ButtonCallback OnEraserLong;
  /** The upper side switch. API 0. */
  KorvuISD_SideSwitchCallback OnUpperSideSwitch;
  /** The lower side switch. API 0. */
  KorvuISD_SideSwitchCallback OnLowerSideSwitch;
  /** Tip sensitivity: the number of the pressure curve. API 0. */
  KorvuISD_ValueCallback OnPressureCurve;
  /** Tilt sensitivity. API 0. */
  KorvuISD_ValueCallback OnTiltSensitivity;
  /** Delay of the battery alert. API 0. */
  KorvuISD_ValueCallback OnBatteryAlertDelay;
  /** A wedge of the first ring, while the API version is below 2. API 0. */
  KorvuISD_ButtonCallback OnRadialWedge;
  /** Right click in the centre of the radial menu, 0 or 1. API 0. */
  KorvuISD_ValueCallback OnCenterRightClick;
  /** Keystrokes of a capture, as display text; empty ones outside a capture, too. API 0. */
  KorvuISD_CountedTextCallback OnCapturedKeystrokes;
  /** The display zoom map changed. API 0. */
  KorvuISD_ZoomMapCallback OnDisplayZoomMap;
  /** Applications that a button can start; see KORVUISD_FUNCTION_RUN_APP_OPTION. API 0. */
  KorvuISD_OptionsCallback OnRunAppOptions;
  /** Functions for the eraser's single press. API 0. */
  KorvuISD_OptionsCallback OnTopButtonSingleOptions;
  /** Functions for the eraser's double press. API 0. */
  KorvuISD_OptionsCallback OnTopButtonDoubleOptions;
  /** Functions for the eraser's long press. API 0. */
  KorvuISD_OptionsCallback OnTopButtonLongOptions;
  /** Functions for the side switches. API 0. */
  KorvuISD_OptionsCallback OnSideSwitchOptions;
  /** 0 and 6, at registration. API 0. */
  KorvuISD_RangeCallback OnFirstRange;
  /** -90 and 90, at registration. API 0. */
  KorvuISD_RangeCallback OnSecondRange;
  /** Functions for the wedges of the radial menu. API 0. */
  KorvuISD_OptionsCallback OnRadialWedgeOptions;
  /** 16, the number of wedges, at registration. API 0. */
  KorvuISD_CountCallback OnWedgeCapacity;
  /** Opaque mode is on, 0 or 1. API 1. */
  KorvuISD_ValueCallback OnOpaqueEnabledGlobal;
  /** Display path of opaque mode; may be empty. API 1. */
  KorvuISD_TextCallback OnOpaqueDisplayPath;
  /** Orientation of opaque mode, 0 to 3, or -1 for one that the library does not know. API 1. */
  KorvuISD_ValueCallback OnOpaqueOrientation;
  /** Input mode of opaque mode, 0 or 1, or -1 for one that the library does not know. API 1. */
  KorvuISD_ValueCallback OnOpaqueInputMode;
  /** Mapping of opaque mode, 0 or 1, or -1 for one that the library does not know. API 1. */
  KorvuISD_ValueCallback OnOpaqueMapping;
  /** Monitors that opaque mode may use. API 1. */
  KorvuISD_MonitorsCallback OnMonitorOptions;
  /** A wedge of either ring, from API version 2 on. API 2. */
  KorvuISD_WedgeCallback OnRadialWedgeEx;
  /** Number of wedges that a ring shows. API 2. */
  KorvuISD_ZonesCallback OnRadialZonesCount;
  /** What the tablet does when a pen leaves the dock. API 4. */
  KorvuISD_ButtonCallback OnAutoExecuteButton;
  /** Functions for a pen that leaves the dock. API 4. */
  KorvuISD_OptionsCallback OnAutoUndockOptions;
  /** Power saving in the dock, 0 or 1. API 4. */
  KorvuISD_ValueCallback OnPenDockPowerSaving;
  /** Alert for a pen left behind, 0 or 1. API 4. */
  KorvuISD_ValueCallback OnPenAlertEnabled;
  /** Whether the tablet supports a feature; called for every value that arrives. API 5. */
  KorvuISD_FeatureCallback OnFeatureSupport;
  /** Opaque mode is in its setup guide, 0 or 1. API 6. */
  KorvuISD_ValueCallback OnOpaqueInSetupGuide;
  /** Opaque mode remembers the display, 0 or 1. API 6. */
  KorvuISD_ValueCallback OnOpaqueRememberDisplay;
  /** Time until the alert for an undocked pen. API 7. */
  KorvuISD_ValueCallback OnUndockedTimerWait;
  /** Pen gestures, 0 or 1. API 8. */
  KorvuISD_ValueCallback OnPenGesturesEnabled;
  /** Magnifier, 0 or 1. API 8. */
  KorvuISD_ValueCallback OnMagnifierEnabled;
} KorvuISD_Callbacks;

/**
 * @name Client
 * @{
 */

/**
 * Switches the trace on or off.
 *
 * Switched on, every step of the library goes to the debugger output and, as a line with time,
 * process and thread, to a file in `c:\korvu` whose name holds date, time and process id. It is the
 * only report of failures besides the result of KorvuISD_Connect. A change from one level that is
 * on to another keeps the file.
 *
 * @param level  KorvuISD_LogLevelOff (3) for off, any other 32-bit value for on
 * @threadsafety any thread, inside a callback too; may wait for the library's lock
 * @ownership    nothing is kept
 * @errors       none reported; a file that cannot be written is skipped
 * @callbacks    none
 * @unconnected  works; the level also outlives KorvuISD_Shutdown
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetLogLevel(KorvuISD_LogLevel level);

/**
 * Declares the API version that the application was written for.
 *
 * Call it first: the version opens functions ("least API version" in their comments) and callbacks.
 * A registration keeps the callbacks that were open when it was made, so register again after
 * raising the version.
 *
 * @param version  signed; above KORVUISD_API_VERSION_MAX it counts as that. A negative one is kept
 *                 as given and opens what 0 opens. Before the first call it is 0.
 * @threadsafety any thread, inside a callback too; never waits
 * @ownership    nothing is kept
 * @errors       none
 * @callbacks    none
 * @unconnected  works; the version also outlives KorvuISD_Shutdown
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetAPIVersion(int32_t version);

/**
 * Registers callbacks under a context pointer, replaces them, or removes them.
 *
 * Before it returns it calls, for this registration alone, OnWedgeCapacity (16), OnFirstRange
 * (0, 6) and OnSecondRange (-90, 90). Values arrive later, when the service sends them; values that
 * the library has received before are not repeated.
 *
 * @param callbacks  the record; the library copies the members that the API version opens, and
 *                   members that it does not open keep what an earlier registration of the same
 *                   context gave. Null removes the registration of `context`, which must exist:
 *                   null for a context without registration is forbidden.
 * @param context    any value, null too; handed to each callback, and the name of the registration
 * @threadsafety any thread, inside a callback too; may wait for the library's lock
 * @ownership    the record is copied; `context` is never followed
 * @errors       none reported; dropped while the library shuts down
 * @callbacks    OnWedgeCapacity, OnFirstRange, OnSecondRange, on the caller's thread
 * @unconnected  works; KorvuISD_Shutdown drops all registrations
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_RegisterCallbacks(const KorvuISD_Callbacks* callbacks,
                                                           void* context);

/**
 * Waits for the settings service of this Windows session and connects to it.
 *
 * Every setting is then requested in the background, and the values arrive through the callbacks.
 * From then on the connection is kept: a lost one is silently opened again, and until then
 * this function still answers KorvuISD_ErrorNone at once.
 *
 * A finite time-out may end sooner than its nominal length while the pipe exists and is busy, since
 * waiting for a busy pipe counts twice.
 *
 * @param timeoutMs  milliseconds; 0 waits without end, looking every millisecond; 4294967295 waits
 *                   without end, looking every second
 * @return KorvuISD_ErrorNone when connected, when already connected, or when skipped because the
 *         client is shutting down; KorvuISD_ErrorFailed when the service did not appear in time or
 *         the connection could not be set up (the trace tells which)
 * @threadsafety any thread; inside a callback only with a connection, or the time-out is spent with
 *               the lock held
 * @ownership    nothing is kept; the library starts a thread, which keeps the DLL loaded
 * @errors       as returned
 * @callbacks    all value callbacks, later, on the library's thread
 * @unconnected  this is what changes it; messages queued before are discarded
 * @since        API version 0
 */
KORVUISD_API KorvuISD_Error KORVUISD_CALL KorvuISD_Connect(uint32_t timeoutMs);

/**
 * Ends the connection and forgets registrations and values.
 *
 * Afterwards the library is as freshly loaded, but for API version and log level. When the function
 * has returned no callback of the old client runs or comes any more; manual requests that were not
 * answered yet stay unanswered. Queued messages are not sent any more.
 *
 * On a client that never connected the function **does not return**: it waits for a thread that was
 * never started. Nor does it while the process exits, or in `DllMain`: the thread that it waits for
 * has been ended, or cannot end. While the service is away it returns only when the running attempt
 * to reconnect has ended, which takes up to 30 seconds.
 *
 * @threadsafety any thread of the application, but never inside a callback: it would wait for
 *               itself. Other threads may go on calling functions of the library.
 * @ownership    frees all copies of callback records
 * @errors       none reported
 * @callbacks    none
 * @unconnected  does not return if the client never connected
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_Shutdown(void);

/**
 * Sends a message of the application's own making and hands the service's reply to a callback.
 *
 * The DLL exports it by ordinal 1 alone: link the import library, or use
 * `GetProcAddress(module, MAKEINTRESOURCEA(KORVUISD_SEND_MANUAL_ORDINAL))`.
 *
 * The callback comes once for each registration, where a registration is a pair of message text and
 * context: a second request with the same text and context, made before the first was sent, takes
 * its place. It receives the *request part* (the text between the first `":"` and the last two
 * characters of the message: the key of a value request, the value of a set message) and the *reply
 * value*:
 *
 * | what happened | request part | reply value |
 * |---|---|---|
 * | a value request was answered | the key | the value |
 * | another message was acknowledged | the value | `1` |
 * | the exchange failed | as above | empty |
 * | the connection was lost, or opened, before the message was sent | empty | empty |
 *
 * Only a shutdown leaves a request unanswered (and, should Windows refuse to create an event for
 * the exchange, that failure). A message of fewer than two characters has an empty request part.
 *
 * @param message   terminated, sent as it stands; null is forbidden
 * @param context   any value, null too; handed to the callback
 * @param callback  null is forbidden
 * @threadsafety any thread, inside a callback too; may wait for the library's lock. The callback
 *               runs on the library's thread, without the lock.
 * @ownership    `message` is copied; `context` is never followed
 * @errors       told by an empty reply value; dropped, callback and all, while the library shuts
 *               down
 * @callbacks    `callback`; and for the value of a setting, that setting's callback before it
 * @unconnected  answered with empty texts when a connection opens
 * @since        API version 9; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SendManual(const wchar_t* message, void* context,
                                                    ManualReplyCallback callback);

/** @} */

/**
 * @name Buttons of the pen and the dock
 * @{
 */

/**
 * Assigns a function to a single press of the eraser end.
 *
 * @param value  the function; null is forbidden unless `empty` is nonzero
 * @param empty  nonzero: asks for the default
 * @contract     as every setter: @ref setters
 * @callbacks    OnEraserSingle, if the name changed
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetEraserSinglePress(const ButtonFunctionValue* value,
                                                              int32_t empty);

/**
 * Assigns a function to a double press of the eraser end.
 *
 * @param value  the function; null is forbidden unless `empty` is nonzero
 * @param empty  nonzero: asks for the default
 * @contract     as every setter: @ref setters
 * @callbacks    OnEraserDouble, if the name changed
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetEraserDoublePress(const ButtonFunctionValue* value,
                                                              int32_t empty);

/**
 * Assigns a function to a long press of the eraser end.
 *
 * @param value  the function; null is forbidden unless `empty` is nonzero
 * @param empty  nonzero: asks for the default
 * @contract     as every setter: @ref setters
 * @callbacks    OnEraserLong, if the name changed
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetEraserLongPress(const ButtonFunctionValue* value,
                                                            int32_t empty);

/**
 * Assigns a function to the upper side switch.
 *
 * @param value  the function; null is forbidden unless `empty` is nonzero
 * @param empty  nonzero: asks for the default
 * @contract     as every setter: @ref setters
 * @callbacks    OnUpperSideSwitch, if the name changed
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetTopSinglePress(const ButtonFunctionValue* value,
                                                           int32_t empty);

/**
 * Switches hover click of the upper side switch.
 *
 * @param value  0 off, 1 on; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnUpperSideSwitch
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetTopHoverClick(int32_t value, int32_t empty);

/**
 * Assigns a function to the lower side switch.
 *
 * @param value  the function; null is forbidden unless `empty` is nonzero
 * @param empty  nonzero: asks for the default
 * @contract     as every setter: @ref setters
 * @callbacks    OnLowerSideSwitch, if the name changed
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetBottomSinglePress(const ButtonFunctionValue* value,
                                                              int32_t empty);

/**
 * Switches hover click of the lower side switch.
 *
 * @param value  0 off, 1 on; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnLowerSideSwitch
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetBottomHoverClick(int32_t value, int32_t empty);

/**
 * Assigns what the tablet does when a pen leaves the dock.
 *
 * @param value  the function; null is forbidden unless `empty` is nonzero
 * @param empty  nonzero: asks for the default
 * @contract     as every setter: @ref setters
 * @callbacks    OnAutoExecuteButton (API version 4), if the name changed
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetDockDetachAction(const ButtonFunctionValue* value,
                                                             int32_t empty);

/** @} */

/**
 * @name Plain settings
 * @{
 */

/**
 * Asks the service to store a new tip sensitivity.
 *
 * @param value  number of the pressure curve; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnPressureCurve
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetTipSensitivity(int32_t value, int32_t empty);

/**
 * Asks the service to store a new tilt sensitivity.
 *
 * @param value  setting step; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnTiltSensitivity
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetTiltSensitivity(int32_t value, int32_t empty);

/**
 * Asks the service to store a new delay of the battery alert.
 *
 * @param value  delay in the unit of the service; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnBatteryAlertDelay
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetBatteryAlertDelay(int32_t value, int32_t empty);

/**
 * Switches the alert for a pen left behind.
 *
 * @param value  0 off, 1 on; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnPenAlertEnabled (API version 4)
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetPenAlert(int32_t value, int32_t empty);

/**
 * Switches pen gestures.
 *
 * @param value  0 off, 1 on; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnPenGesturesEnabled (API version 8)
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetPenGesturesEnabled(int32_t value, int32_t empty);

/**
 * Switches the magnifier.
 *
 * @param value  0 off, 1 on; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnMagnifierEnabled (API version 8)
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetMagnifierEnabled(int32_t value, int32_t empty);

/**
 * Switches power saving in the dock.
 *
 * @param value  0 off, 1 on; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnPenDockPowerSaving (API version 4)
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetDockPowerSaving(int32_t value, int32_t empty);

/**
 * Asks the service to store the time until the alert for an undocked pen.
 *
 * @param value  time in the unit of the service; a negative one is sent as 1, one above
 *               35791 as 35791
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnUndockedTimerWait
 * @since        API version 7; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetDockAlertTime(int32_t value, int32_t empty);

/** @} */

/**
 * @name Radial menu
 *
 * A menu-button identifier names a wedge of the radial menu: its button index in bits 0 to 7 (0 to
 * 7, clockwise from East) and its ring, the menu index, in bits 16 to 23 (0 or 1).
 * @{
 */

/**
 * Builds a menu-button identifier.
 *
 * @param menu    menu index, 8 bits; not checked
 * @param button  button index, 8 bits; not checked
 * @return       the identifier, 32 bits; its other bits are 0
 * @threadsafety any thread, inside a callback too; never waits
 * @ownership    nothing is kept
 * @errors       none
 * @callbacks    none
 * @unconnected  works
 * @since        API version 0
 */
KORVUISD_API uint32_t KORVUISD_CALL KorvuISD_BuildMenuButtonId(uint8_t menu, uint8_t button);

/**
 * Takes the menu index out of a menu-button identifier.
 *
 * @param id  identifier; its bits outside 16 to 23 are ignored
 * @return       the menu index, 8 bits
 * @threadsafety any thread, inside a callback too; never waits
 * @ownership    nothing is kept
 * @errors       none
 * @callbacks    none
 * @unconnected  works
 * @since        API version 0
 */
KORVUISD_API uint8_t KORVUISD_CALL KorvuISD_GetMenuIndex(uint32_t id);

/**
 * Takes the button index out of a menu-button identifier.
 *
 * @param id  identifier; its bits outside 0 to 7 are ignored
 * @return       the button index, 8 bits
 * @threadsafety any thread, inside a callback too; never waits
 * @ownership    nothing is kept
 * @errors       none
 * @callbacks    none
 * @unconnected  works
 * @since        API version 0
 */
KORVUISD_API uint8_t KORVUISD_CALL KorvuISD_GetButtonIndex(uint32_t id);

/**
 * Assigns a function to a wedge of the radial menu.
 *
 * Queues the function code, the companion text if the code has one, the name if one is given, and
 * value requests for code and name, as one unit, and returns before any is sent.
 *
 * Button indices above 7 are not rejected: index 8 of the first ring is the first wedge of the
 * second. An identifier beyond the last wedge (of the first ring below API version 2, else of the
 * second) is ignored.
 *
 * @param id     menu-button identifier; bits 8 to 15 and 24 to 31 are ignored
 * @param value  the function; null is forbidden unless `empty` is nonzero
 * @param empty  nonzero: asks for the default, and `name` is ignored
 * @param name   terminated display name, or null to let the service derive one; an empty one is
 *               sent as empty
 * @contract     as every setter: @ref setters
 * @callbacks    OnRadialWedge, or OnRadialWedgeEx from API version 2 on, if the name changed
 * @since        API version 0; the second ring from API version 2 on
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetMenuOp(uint32_t id, const ButtonFunctionValue* value,
                                                   int32_t empty, const wchar_t* name);

/**
 * Sets how many wedges a ring of the radial menu shows.
 *
 * @param id     menu-button identifier of any wedge of the ring. Pass a menu index of 0 or 1: a
 *               higher one is not rejected but addresses the setting that comes next in the key
 *               table.
 * @param limit  number of wedges, 8 bits; sent unchecked
 * @contract     as every setter: @ref setters
 * @errors       a menu index so high that no key exists for it (116 or more) throws
 *               std::out_of_range, "invalid map<K, T> key", and nothing is sent: only C++ code of
 *               the same compiler family can catch it.
 * @callbacks    OnRadialZonesCount
 * @since        API version 2; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetMenuButtonLimit(uint32_t id, uint8_t limit);

/**
 * Switches the right click in the centre of the radial menu.
 *
 * @param value  0 off, 1 on; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnCenterRightClick
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetMenuCenterRightClick(int32_t value, int32_t empty);

/** @} */

/**
 * @name Keystroke capture
 * @{
 */

/**
 * Starts to capture the keys that the user presses.
 *
 * Queues one set message. Until KorvuISD_FinishKeyCapture, the service announces what was captured;
 * OnCapturedKeystrokes shows it as display text, and the library holds the sequence for
 * KorvuISD_FinishKeyCapture.
 *
 * @contract     as every setter: @ref setters
 * @callbacks    OnCapturedKeystrokes, for each announcement
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_StartKeyCapture(void);

/**
 * Collects the captured keystroke sequence and ends the capture.
 *
 * Clears the first `codeUnits` *bytes* of the buffer (the first half of its code units), copies the
 * sequence without a terminator, forgets it, and queues one set message that ends the capture. So
 * clear the buffer yourself, and pass one code unit less than it has, to get terminated text
 * whatever its length.
 *
 * A sequence that is longer than the buffer is lost: nothing is copied, and it is forgotten too.
 * One of exactly the buffer's length fits. If nothing is held, the first code unit is set to 0. The
 * function may also be called without a capture.
 *
 * @param buffer     receives the sequence, UTF-16; null is forbidden unless `codeUnits` is 0
 * @param codeUnits  length of `buffer` in code units, 64 bits; nothing is written beyond it, so at
 *                   0 nothing is written
 * @threadsafety any thread, inside a callback too; may wait for the library's lock, and so up to
 *               a second while a connection is being opened; see Threads
 * @ownership    `buffer` is written during the call only
 * @errors       none reported; a sequence that was lost shows in the trace. While the library shuts
 *               down only the clearing happens.
 * @callbacks    none
 * @unconnected  collects what is held; the message that ends the capture is lost
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_FinishKeyCapture(wchar_t* buffer, uint64_t codeUnits);

/** @} */

/**
 * @name Displays and opaque mode
 * @{
 */

/**
 * Asks the service to store a new display zoom map of one entry.
 *
 * The whole map is replaced.
 *
 * @param first   first pair, two signed 32-bit numbers, by value
 * @param second  second pair
 * @param empty   nonzero: asks for the default, and the pairs are ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnDisplayZoomMap
 * @since        API version 0
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetSlavedDisplayZoom(KorvuISD_ZoomPair first,
                                                              KorvuISD_ZoomPair second,
                                                              int32_t empty);

/**
 * Switches opaque mode.
 *
 * @param value  0 off, 1 on; sent unchecked
 * @contract     as every setter: @ref setters
 * @callbacks    OnOpaqueEnabledGlobal
 * @since        API version 1; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetOpaqueModeEnabled(int32_t value);

/**
 * Asks the service to store a new orientation of opaque mode.
 *
 * @param orientation  0 to 3, as OnOpaqueOrientation reports it; any other value counts as 0
 * @param empty        nonzero: asks for the default, and `orientation` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnOpaqueOrientation
 * @since        API version 1; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetOpaqueModeOrientation(int32_t orientation,
                                                                  int32_t empty);

/**
 * Asks the service to store a new input mode of opaque mode.
 *
 * @param mode   0 or 1, as OnOpaqueInputMode reports it; any other value counts as 0
 * @param empty  nonzero: asks for the default, and `mode` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnOpaqueInputMode
 * @since        API version 1; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetOpaqueModeInputMode(int32_t mode, int32_t empty);

/**
 * Asks the service to store a new mapping of opaque mode.
 *
 * @param mapping  0 or 1, as OnOpaqueMapping reports it; any other value counts as 0
 * @param empty    nonzero: asks for the default, and `mapping` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnOpaqueMapping
 * @since        API version 1; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetOpaqueModeMapping(int32_t mapping, int32_t empty);

/**
 * Tells the service which step of the setup guide of opaque mode is shown.
 *
 * @param state  0 to 2; any other value counts as 0
 * @param empty  nonzero: asks for the default, and `state` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnOpaqueInSetupGuide
 * @since        API version 6; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetOpaqueModeSetupState(int32_t state, int32_t empty);

/**
 * Sets whether opaque mode remembers the display.
 *
 * @param value  0 off, 1 on; sent unchecked
 * @param empty  nonzero: asks for the default, and `value` is ignored
 * @contract     as every setter: @ref setters
 * @callbacks    OnOpaqueRememberDisplay
 * @since        API version 6; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetOpaqueModeSetupSave(int32_t value, int32_t empty);

/**
 * Asks the service to store a new display path of opaque mode.
 *
 * @param path  terminated, sent as it stands; an empty one is sent as empty; null is forbidden
 * @contract     as every setter: @ref setters
 * @callbacks    OnOpaqueDisplayPath
 * @since        API version 1; below it the function does nothing
 */
KORVUISD_API void KORVUISD_CALL KorvuISD_SetOpaqueModeDisplayPath(const wchar_t* path);

/** @} */

#ifdef __cplusplus
}
#endif

/** @cond The layout that the DLL and its applications share; a change here breaks them. */
#if defined(_WIN64)
#if defined(__cplusplus)
#define KORVUISD_SIZE_IS(type, bytes) static_assert(sizeof(type) == (bytes), #type)
#define KORVUISD_OFFSET_IS(type, member, bytes) \
  static_assert(offsetof(type, member) == (bytes), #type "." #member)
#else
#define KORVUISD_SIZE_IS(type, bytes) _Static_assert(sizeof(type) == (bytes), #type)
#define KORVUISD_OFFSET_IS(type, member, bytes) \
  _Static_assert(offsetof(type, member) == (bytes), #type "." #member)
#endif
KORVUISD_SIZE_IS(KorvuISD_Error, 4);
KORVUISD_SIZE_IS(KorvuISD_LogLevel, 4);
KORVUISD_SIZE_IS(VersionInfo, 64);
KORVUISD_OFFSET_IS(VersionInfo, hidRouterVersion, 0);
KORVUISD_OFFSET_IS(VersionInfo, serviceVersion, 32);
KORVUISD_SIZE_IS(ButtonRecord, 1028);
KORVUISD_OFFSET_IS(ButtonRecord, function, 0);
KORVUISD_OFFSET_IS(ButtonRecord, name, 4);
KORVUISD_SIZE_IS(KorvuISD_SideSwitch, 1032);
KORVUISD_OFFSET_IS(KorvuISD_SideSwitch, button, 0);
KORVUISD_OFFSET_IS(KorvuISD_SideSwitch, hoverClick, 1028);
KORVUISD_SIZE_IS(KorvuISD_ModuleIdentity, 98);
KORVUISD_OFFSET_IS(KorvuISD_ModuleIdentity, version, 0);
KORVUISD_OFFSET_IS(KorvuISD_ModuleIdentity, moduleId, 32);
KORVUISD_OFFSET_IS(KorvuISD_ModuleIdentity, productId, 64);
KORVUISD_OFFSET_IS(KorvuISD_ModuleIdentity, serialNumber, 66);
KORVUISD_SIZE_IS(PenInfo, 224);
KORVUISD_OFFSET_IS(PenInfo, serialNumber, 0);
KORVUISD_OFFSET_IS(PenInfo, penId, 32);
KORVUISD_OFFSET_IS(PenInfo, module, 64);
KORVUISD_OFFSET_IS(PenInfo, batteryStatus, 164);
KORVUISD_OFFSET_IS(PenInfo, batteryCharging, 168);
KORVUISD_OFFSET_IS(PenInfo, inProximity, 172);
KORVUISD_OFFSET_IS(PenInfo, vendorId, 176);
KORVUISD_OFFSET_IS(PenInfo, penType, 178);
KORVUISD_OFFSET_IS(PenInfo, firmwareVersion, 180);
KORVUISD_OFFSET_IS(PenInfo, sensorId, 212);
KORVUISD_OFFSET_IS(PenInfo, moduleConnected, 216);
KORVUISD_OFFSET_IS(PenInfo, docked, 220);
KORVUISD_SIZE_IS(KorvuISD_ZoomMapEntry, 16);
KORVUISD_OFFSET_IS(KorvuISD_ZoomMapEntry, a, 0);
KORVUISD_OFFSET_IS(KorvuISD_ZoomMapEntry, b, 4);
KORVUISD_OFFSET_IS(KorvuISD_ZoomMapEntry, c, 8);
KORVUISD_OFFSET_IS(KorvuISD_ZoomMapEntry, d, 12);
KORVUISD_SIZE_IS(KorvuISD_ZoomPair, 8);
KORVUISD_OFFSET_IS(KorvuISD_ZoomPair, first, 0);
KORVUISD_OFFSET_IS(KorvuISD_ZoomPair, second, 4);
KORVUISD_SIZE_IS(KorvuISD_MonitorOption, 2048);
KORVUISD_OFFSET_IS(KorvuISD_MonitorOption, displayPath, 0);
KORVUISD_OFFSET_IS(KorvuISD_MonitorOption, displayName, 1024);
KORVUISD_SIZE_IS(ButtonFunctionValue, 1028);
KORVUISD_OFFSET_IS(ButtonFunctionValue, function, 0);
KORVUISD_OFFSET_IS(ButtonFunctionValue, text, 4);
KORVUISD_SIZE_IS(KorvuISD_Callbacks, 41 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnVersions, 0 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnPenInfo, 1 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnEraserSingle, 2 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnEraserDouble, 3 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnEraserLong, 4 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnUpperSideSwitch, 5 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnLowerSideSwitch, 6 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnPressureCurve, 7 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnTiltSensitivity, 8 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnBatteryAlertDelay, 9 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnRadialWedge, 10 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnCenterRightClick, 11 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnCapturedKeystrokes, 12 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnDisplayZoomMap, 13 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnRunAppOptions, 14 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnTopButtonSingleOptions, 15 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnTopButtonDoubleOptions, 16 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnTopButtonLongOptions, 17 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnSideSwitchOptions, 18 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnFirstRange, 19 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnSecondRange, 20 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnRadialWedgeOptions, 21 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnWedgeCapacity, 22 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnOpaqueEnabledGlobal, 23 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnOpaqueDisplayPath, 24 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnOpaqueOrientation, 25 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnOpaqueInputMode, 26 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnOpaqueMapping, 27 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnMonitorOptions, 28 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnRadialWedgeEx, 29 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnRadialZonesCount, 30 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnAutoExecuteButton, 31 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnAutoUndockOptions, 32 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnPenDockPowerSaving, 33 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnPenAlertEnabled, 34 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnFeatureSupport, 35 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnOpaqueInSetupGuide, 36 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnOpaqueRememberDisplay, 37 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnUndockedTimerWait, 38 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnPenGesturesEnabled, 39 * 8);
KORVUISD_OFFSET_IS(KorvuISD_Callbacks, OnMagnifierEnabled, 40 * 8);
#undef KORVUISD_SIZE_IS
#undef KORVUISD_OFFSET_IS
#endif
/** @endcond */

#endif
