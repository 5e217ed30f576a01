// Reads and changes the settings of a pen tablet driver's settings service. README.md tells how the
// parts go together.
//
// Numbers are 32-bit integers unless said otherwise; flags are 0 or 1. Texts have the code units that
// the library has, lone surrogates too. All records are plain frozen objects.

import { EventEmitter } from 'events';

// What the service tells ---------------------------------------------------------------------------

/** Versions of the driver's two programs. */
export interface Versions {
  /** Version of the HID router; at most 15 code units of it. */
  readonly hidRouterVersion: string;
  /** Version of the settings service; at most 15 code units of it. */
  readonly serviceVersion: string;
}

/** A button, or an entry of an option list: what it does and how that is called. */
export interface Button {
  /** Function code as the service sent it. The service defines the codes. */
  readonly function: number;
  /** Display name. That of a button is cut to 511 code units, that of an option to 512. */
  readonly name: string;
}

/** A side switch: its button and its hover-click setting. */
export interface SideSwitch {
  /** What the switch does. */
  readonly button: Button;
  /** 1: the switch clicks while the pen hovers; 0: it does not. */
  readonly hoverClick: number;
}

/** Identity of the Bluetooth module of a pen. Empty and 0 until the module has told it. */
export interface ModuleIdentity {
  /** Version, cut to 15 code units. */
  readonly version: string;
  /** Module id, cut to 15 code units. */
  readonly moduleId: string;
  /** Product id, 16 bits. */
  readonly productId: number;
  /** Serial number, cut to 15 code units. It equals that of the pen it sits in. */
  readonly serialNumber: string;
}

/**
 * What is known of one pen.
 *
 * A pen appears when its serial number and its pen id are both known. A battery or dock value for a
 * pen that is not known yet makes a record that is empty but for that value, its serial number too.
 */
export interface Pen {
  /** Serial number, cut to 15 code units. */
  readonly serialNumber: string;
  /** Pen id, cut to 15 code units. */
  readonly penId: string;
  /** The Bluetooth module in this pen. */
  readonly module: ModuleIdentity;
  /** Battery status as the service sent it; -1 until one has arrived. */
  readonly batteryStatus: number;
  /** Charging state, 8 bits. */
  readonly batteryCharging: number;
  /** 1: the pen is near the tablet; 0: it is not. */
  readonly inProximity: number;
  /** Vendor id, 8 bits. */
  readonly vendorId: number;
  /** Pen type, 16 bits. */
  readonly penType: number;
  /** Firmware version of the tablet, cut to 15 code units. */
  readonly firmwareVersion: string;
  /** Sensor id of the tablet. */
  readonly sensorId: number;
  /** 1: the Bluetooth module is connected; 0: it is not. Stays 0 below API version 3. */
  readonly moduleConnected: number;
  /** 1: a pen is in the tablet's dock; 0: none is. */
  readonly docked: number;
}

/** One entry of the display zoom map: the four numbers that setSlavedDisplayZoom takes. */
export interface ZoomMapEntry {
  /** First field of the first pair. */
  readonly a: number;
  /** Second field of the first pair. */
  readonly b: number;
  /** First field of the second pair. */
  readonly c: number;
  /** Second field of the second pair. */
  readonly d: number;
}

/** A monitor that opaque mode may use. */
export interface MonitorOption {
  /** Display path, the text that setOpaqueModeDisplayPath takes. */
  readonly displayPath: string;
  /** Display name. */
  readonly displayName: string;
}

/** The monitors of the service's last list. */
export interface MonitorOptions {
  readonly monitors: readonly MonitorOption[];
  /** Index of the monitor that the opaque display path names at this moment, or -1. */
  readonly selected: number;
}

/** A range of values. */
export interface Range {
  readonly minimum: number;
  readonly maximum: number;
}

/** How many wedges a ring of the radial menu shows. */
export interface RadialZonesCount {
  /** 0 for the first ring, 1 for the second. */
  readonly ring: number;
  /** The low 8 bits of the number that the service sent. */
  readonly count: number;
}

/** Whether the tablet supports a feature. */
export interface FeatureSupport {
  /** One of {@link Feature}. */
  readonly feature: number;
  /** 0 or 1. */
  readonly supported: number;
}

/** Values that come as events of the same names. */
export interface SettingsEvents {
  /** Versions of the driver. API version 0. */
  versions: Versions;
  /**
   * A pen changed, or its Bluetooth module told something, new or not. A pen that is seen for the
   * first time is not reported, unless a Bluetooth module waited for it. API version 0.
   */
  penInfo: Pen;
  /** The eraser's single press. API version 0. */
  eraserSingle: Button;
  /** The eraser's double press. API version 0. */
  eraserDouble: Button;
  /** The eraser's long press. API version 0. */
  eraserLong: Button;
  /** The upper side switch. API version 0. */
  upperSideSwitch: SideSwitch;
  /** The lower side switch. API version 0. */
  lowerSideSwitch: SideSwitch;
  /** Tip sensitivity: the number of the pressure curve. API version 0. */
  pressureCurve: number;
  /** Tilt sensitivity, in steps. API version 0. */
  tiltSensitivity: number;
  /** Delay of the battery alert, in the service's unit. API version 0. */
  batteryAlertDelay: number;
  /** A wedge of the first ring, while the API version is below 2. It does not tell which. */
  radialWedge: Button;
  /** Right click in the centre of the radial menu, 0 or 1. API version 0. */
  centerRightClick: number;
  /**
   * Keystrokes of a capture, as display text; empty ones outside a capture, too. Not among
   * `values`. {@link Settings.captureKeys} has them as an iterator. API version 0.
   */
  capturedKeystrokes: string;
  /** The display zoom map changed; it is never empty. API version 0. */
  displayZoomMap: readonly ZoomMapEntry[];
  /** Applications that a button can start; their function is ButtonFunction.runAppOption. API 0. */
  runAppOptions: readonly Button[];
  /** Functions for the eraser's single press. API version 0. */
  topButtonSingleOptions: readonly Button[];
  /** Functions for the eraser's double press. API version 0. */
  topButtonDoubleOptions: readonly Button[];
  /** Functions for the eraser's long press. API version 0. */
  topButtonLongOptions: readonly Button[];
  /** Functions for the side switches. API version 0. */
  sideSwitchOptions: readonly Button[];
  /** 0 and 6, before the connection. API version 0. */
  firstRange: Range;
  /** -90 and 90, before the connection. API version 0. */
  secondRange: Range;
  /** Functions for the wedges of the radial menu. API version 0. */
  radialWedgeOptions: readonly Button[];
  /** 16, the number of wedges, before the connection. API version 0. */
  wedgeCapacity: number;
  /** Opaque mode is on, 0 or 1. API version 1. */
  opaqueEnabledGlobal: number;
  /** Display path of opaque mode; may be empty. API version 1. */
  opaqueDisplayPath: string;
  /** Orientation of opaque mode, 0 to 3, or -1 for one that is not known. API version 1. */
  opaqueOrientation: number;
  /** Input mode of opaque mode, 0 or 1, or -1 for one that is not known. API version 1. */
  opaqueInputMode: number;
  /** Mapping of opaque mode, 0 or 1, or -1 for one that is not known. API version 1. */
  opaqueMapping: number;
  /** Monitors that opaque mode may use. A new path alone brings no event. API version 1. */
  monitorOptions: MonitorOptions;
  /** A wedge of either ring, from API version 2 on. It does not tell which. */
  radialWedgeEx: Button;
  /** Number of wedges that a ring shows; `values` has that of each ring. API version 2. */
  radialZonesCount: RadialZonesCount;
  /** What the tablet does when a pen leaves the dock. API version 4. */
  autoExecuteButton: Button;
  /** Functions for a pen that leaves the dock. API version 4. */
  autoUndockOptions: readonly Button[];
  /** Power saving in the dock, 0 or 1. API version 4. */
  penDockPowerSaving: number;
  /** Alert for a pen left behind, 0 or 1. API version 4. */
  penAlertEnabled: number;
  /** Whether the tablet supports a feature; for every value that arrives. API version 5. */
  featureSupport: FeatureSupport;
  /** Opaque mode is in its setup guide, 0 or 1. API version 6. */
  opaqueInSetupGuide: number;
  /** Opaque mode remembers the display, 0 or 1. API version 6. */
  opaqueRememberDisplay: number;
  /** Time until the alert for an undocked pen, in the service's unit. API version 7. */
  undockedTimerWait: number;
  /** Pen gestures, 0 or 1. API version 8. */
  penGesturesEnabled: number;
  /** Magnifier, 0 or 1. API version 8. */
  magnifierEnabled: number;
}

/** Events that are told of the connection, and only where `watchIntervalMs` asks for them. */
export interface ConnectionEvents {
  /** connect() has succeeded, or the service is back after 'lost'. */
  connected: [];
  /** The service does not answer any more. The library goes on trying to connect. */
  lost: [];
}

/** Events that tell of several things; `values` has the last one of each, by this key. */
interface Keyed {
  /** By serial number. */
  penInfo: { readonly [serialNumber: string]: Pen };
  /** By ring, 0 or 1. */
  radialZonesCount: { readonly [ring: number]: RadialZonesCount };
  /** By {@link Feature}. */
  featureSupport: { readonly [feature: number]: FeatureSupport };
}

/** The last value of each event that has come since connect(). */
export type Values = {
  readonly [Name in Exclude<keyof SettingsEvents, 'capturedKeystrokes'>]?:
      Name extends keyof Keyed ? Keyed[Name] : SettingsEvents[Name];
};

// What the application passes ----------------------------------------------------------------------

export interface SettingsOptions {
  /**
   * Which events and setters are open, 0 to 9; 9 by default. It is one for the process: objects that
   * are connected at the same time have the same. Below 9 the library has no manual requests:
   * request(), read(), ready() and watchIntervalMs are not open, and a setter's receipt is the event
   * alone. One that changes nothing brings no event, so it resolves at once if the value is known to
   * stand, and runs into its time-out otherwise. The event of a wedge does not tell which: there that
   * of another wedge with the same function counts, too.
   */
  apiVersion?: number;
  /** How long a setter or request waits to be confirmed, in milliseconds; 10000 by default. */
  timeoutMs?: number;
  /**
   * How often to look whether the service is there, in milliseconds; never by default. A loss is told
   * up to this and four seconds later.
   */
  watchIntervalMs?: number;
}

export interface ConnectOptions {
  /**
   * How long to wait for the service, in milliseconds; 5000 by default. 0 looks once, Infinity waits
   * without end. A service that is just coming up may take two seconds more.
   */
  timeoutMs?: number;
}

export interface CallOptions {
  /** In place of the object's `timeoutMs`; Infinity for no limit. */
  timeoutMs?: number;
}

/** The function that a setter assigns to a button. */
export interface ButtonAssignment {
  /** Function code. */
  function: number;
  /**
   * For ButtonFunction.keystrokes the sequence, for ButtonFunction.runApp the application's path, or
   * a name of `runAppOptions`. Other functions have none. Left out or empty, the stored one stays.
   */
  text?: string;
}

/** What the service has stored for a button. */
export interface StoredButton {
  function: number | null;
  name: string;
  /** Where the setter was given one. An application is stored by its path. */
  text?: string;
}

export interface Reply {
  /** The key of a value request, the value of any other message; empty if it was not sent. */
  requestPart: string;
  /** The value; `1` for an acknowledgement; empty if there was no answer, or an empty one. */
  value: string;
}

/** What the user types; see {@link Settings.captureKeys}. */
export interface KeyCapture extends AsyncIterableIterator<string> {
  next(): Promise<IteratorResult<string, undefined>>;
  return(value?: unknown): Promise<IteratorResult<string, undefined>>;
  /**
   * Ends the capture and resolves with the sequence that was captured last, as
   * ButtonFunction.keystrokes takes it; empty if there was none. Once called, or once a loop over the
   * texts was left, it always resolves with the same sequence.
   */
  finish(): Promise<string>;
}

/**
 * The settings, and the connection to the service.
 *
 * Any number of objects share the one connection of the process. One that connects later hears of the
 * values that the others have received. Setters may be called at any time once connected, in
 * listeners too, and are carried out in the order of the calls. Each resolves with what the service
 * has stored, and rejects with a {@link KorvuError} otherwise. One that is overtaken by a later call
 * for the same setting before it was confirmed resolves with what is then stored.
 *
 * Arguments that are none reject with a TypeError or a RangeError that names them.
 */
export class Settings extends EventEmitter {
  constructor(options?: SettingsOptions);

  /** The API version of this object. */
  readonly apiVersion: number;
  /** The last value of each event, frozen: a later event makes a new one. */
  readonly values: Values;
  /** Whether connect() has succeeded and close() was not called. A lost connection counts. */
  readonly isConnected: boolean;

  /**
   * Connects to the settings service of this Windows session. The values come as events afterwards.
   * A connection that is lost is regained in the background.
   *
   * Rejects with ERR_KORVU_NO_SERVICE, ERR_KORVU_CLOSED or ERR_KORVU_API_VERSION.
   */
  connect(options?: ConnectOptions): Promise<void>;
  /**
   * Ends it. No event comes any more. The last object that is closed shuts the library down, which
   * takes a tenth of a second, or up to 30 seconds while the service is away; a program need not wait
   * for it. The object can connect again.
   */
  close(): Promise<void>;
  /** An object that is not closed keeps the process alive. After this it does not. */
  unref(): this;
  /** Undoes unref(). */
  ref(): this;

  /** Resolves when all values have come that the service has for a new connection. API version 9. */
  ready(options?: CallOptions): Promise<void>;
  /**
   * Sends a message of the application's own, as it stands, and resolves with the service's reply.
   * Resolves with empty texts if the connection was lost. Rejects with ERR_KORVU_TIMED_OUT.
   * API version 9.
   */
  request(message: string, options?: CallOptions): Promise<Reply>;
  /** The value that the service has for a key, written with single backslashes. API version 9. */
  read(key: string, options?: CallOptions): Promise<string>;
  /**
   * Captures the keys that the user types, one capture at a time. Iterates over the texts that the
   * service shows for them, each in the place of the one before, until the loop is left.
   * Throws ERR_KORVU_BUSY. API version 0.
   */
  captureKeys(options?: CallOptions): KeyCapture;
  /** Switches the library's trace, one for the process, to one of {@link LogLevel}. */
  setLogLevel(level: number): Promise<void>;

  // Buttons. `null` asks for the default.

  /** Assigns a function to a single press of the eraser end; event eraserSingle. API version 0. */
  setEraserSinglePress(value: ButtonAssignment | null, options?: CallOptions): Promise<StoredButton>;
  /** Assigns a function to a double press of the eraser end; event eraserDouble. API version 0. */
  setEraserDoublePress(value: ButtonAssignment | null, options?: CallOptions): Promise<StoredButton>;
  /** Assigns a function to a long press of the eraser end; event eraserLong. API version 0. */
  setEraserLongPress(value: ButtonAssignment | null, options?: CallOptions): Promise<StoredButton>;
  /** Assigns a function to the upper side switch; event upperSideSwitch. API version 0. */
  setTopSinglePress(value: ButtonAssignment | null, options?: CallOptions): Promise<StoredButton>;
  /** Switches hover click of the upper side switch; event upperSideSwitch. API version 0. */
  setTopHoverClick(value: number | boolean | null, options?: CallOptions): Promise<number | null>;
  /** Assigns a function to the lower side switch; event lowerSideSwitch. API version 0. */
  setBottomSinglePress(value: ButtonAssignment | null, options?: CallOptions): Promise<StoredButton>;
  /** Switches hover click of the lower side switch; event lowerSideSwitch. API version 0. */
  setBottomHoverClick(value: number | boolean | null, options?: CallOptions): Promise<number | null>;
  /**
   * Assigns what the tablet does when a pen leaves the dock; event autoExecuteButton, from API version
   * 4 on. API version 0.
   */
  setDockDetachAction(value: ButtonAssignment | null, options?: CallOptions): Promise<StoredButton>;

  // Plain settings. `null` asks for the default; a setter resolves with null where the service has no
  // number.

  /** Sets the number of the pressure curve, 0 or more; event pressureCurve. API version 0. */
  setTipSensitivity(value: number | null, options?: CallOptions): Promise<number | null>;
  /** Sets the tilt sensitivity, in steps, 0 or more; event tiltSensitivity. API version 0. */
  setTiltSensitivity(value: number | null, options?: CallOptions): Promise<number | null>;
  /**
   * Sets the delay of the battery alert, 0 or more, in the service's unit; event batteryAlertDelay.
   * API version 0.
   */
  setBatteryAlertDelay(value: number | null, options?: CallOptions): Promise<number | null>;
  /** Switches the alert for a pen left behind; event penAlertEnabled. API version 0. */
  setPenAlert(value: number | boolean | null, options?: CallOptions): Promise<number | null>;
  /** Switches pen gestures; event penGesturesEnabled. API version 0. */
  setPenGesturesEnabled(
      value: number | boolean | null, options?: CallOptions): Promise<number | null>;
  /** Switches the magnifier; event magnifierEnabled. API version 0. */
  setMagnifierEnabled(value: number | boolean | null, options?: CallOptions): Promise<number | null>;
  /** Switches power saving in the dock; event penDockPowerSaving. API version 0. */
  setDockPowerSaving(value: number | boolean | null, options?: CallOptions): Promise<number | null>;
  /**
   * Sets the time until the alert for an undocked pen, 0 to 35791 in the service's unit; event
   * undockedTimerWait. API version 7.
   */
  setDockAlertTime(value: number | null, options?: CallOptions): Promise<number | null>;

  // The radial menu. `id` comes from menuButtonId().

  /**
   * Assigns a function to a wedge of the radial menu; event radialWedgeEx, or radialWedge below API
   * version 2. `name` is its display name; null or left out lets the service derive one.
   * API version 0; the second ring from API version 2 on.
   */
  setMenuOp(id: number, value: ButtonAssignment | null, name?: string | null, options?: CallOptions):
      Promise<StoredButton>;
  /**
   * Sets how many wedges a ring shows, 0 to 255; `id` is that of any wedge of the ring; event
   * radialZonesCount. API version 2.
   */
  setMenuButtonLimit(id: number, limit: number, options?: CallOptions): Promise<number | null>;
  /** Switches the right click in the centre of the menu; event centerRightClick. API version 0. */
  setMenuCenterRightClick(
      value: number | boolean | null, options?: CallOptions): Promise<number | null>;

  // Displays and opaque mode.

  /**
   * Sets the display zoom map, the whole of it, to one entry; event displayZoomMap. Resolves with the
   * map. API version 0.
   */
  setSlavedDisplayZoom(value: ZoomMapEntry | null, options?: CallOptions): Promise<ZoomMapEntry[]>;
  /** Switches opaque mode, which has no default; event opaqueEnabledGlobal. API version 1. */
  setOpaqueModeEnabled(value: number | boolean, options?: CallOptions): Promise<number | null>;
  /** Sets the orientation of opaque mode, 0 to 3; event opaqueOrientation. API version 1. */
  setOpaqueModeOrientation(value: number | null, options?: CallOptions): Promise<number | null>;
  /** Sets the input mode of opaque mode, 0 or 1; event opaqueInputMode. API version 1. */
  setOpaqueModeInputMode(value: number | null, options?: CallOptions): Promise<number | null>;
  /** Sets the mapping of opaque mode, 0 or 1; event opaqueMapping. API version 1. */
  setOpaqueModeMapping(value: number | null, options?: CallOptions): Promise<number | null>;
  /**
   * Tells the service which step of the setup guide of opaque mode is shown, 0 to 2; event
   * opaqueInSetupGuide, which tells only whether one is. API version 6.
   */
  setOpaqueModeSetupState(value: number | null, options?: CallOptions): Promise<number | null>;
  /** Sets whether opaque mode remembers the display; event opaqueRememberDisplay. API version 6. */
  setOpaqueModeSetupSave(
      value: number | boolean | null, options?: CallOptions): Promise<number | null>;
  /**
   * Sets the display path of opaque mode; event opaqueDisplayPath. From an empty one the service makes
   * its default. API version 1.
   */
  setOpaqueModeDisplayPath(path: string, options?: CallOptions): Promise<string>;

  on<Name extends keyof SettingsEvents>(
      name: Name, listener: (value: SettingsEvents[Name]) => void): this;
  on(name: keyof ConnectionEvents, listener: () => void): this;
  once<Name extends keyof SettingsEvents>(
      name: Name, listener: (value: SettingsEvents[Name]) => void): this;
  once(name: keyof ConnectionEvents, listener: () => void): this;
  off<Name extends keyof SettingsEvents>(
      name: Name, listener: (value: SettingsEvents[Name]) => void): this;
  off(name: keyof ConnectionEvents, listener: () => void): this;
}

/** What the promises of this package reject with. */
export class KorvuError extends Error {
  readonly name: 'KorvuError';
  readonly code: ErrorCode;
  /** With ERR_KORVU_NOT_TAKEN: the value that stands, as the setter would have resolved with it. */
  readonly stored?: unknown;
}

export type ErrorCode =
    /** connect(): the service did not appear in time, or takes no connection. */
    | 'ERR_KORVU_NO_SERVICE'
    /** The object is not connected: connect() has not succeeded, or close() was called. */
    | 'ERR_KORVU_NOT_CONNECTED'
    /** The connection was lost before the change was confirmed, or the service refused it. */
    | 'ERR_KORVU_LOST'
    /** The service has stored something else; `stored` is what. */
    | 'ERR_KORVU_NOT_TAKEN'
    /** Not confirmed in time. It may still be stored. */
    | 'ERR_KORVU_TIMED_OUT'
    /** The API version of the object does not open it, or the process's is another. */
    | 'ERR_KORVU_API_VERSION'
    /** close() was called before the change was confirmed, or before the connection was there. */
    | 'ERR_KORVU_CLOSED'
    /** captureKeys(): keys are being captured already. */
    | 'ERR_KORVU_BUSY'
    /** Thrown when the package is loaded in a worker thread; one thread of a process can have it. */
    | 'ERR_KORVU_WORKER_THREAD'
    /** Thrown when the package is loaded on another system than 64-bit Windows. */
    | 'ERR_KORVU_PLATFORM'
    /** Thrown when the package is loaded by a Node or Electron without Node-API version 8. */
    | 'ERR_KORVU_NODE_VERSION'
    /** Thrown when the package's DLL cannot be loaded. */
    | 'ERR_KORVU_LIBRARY';

/** The identifier of a wedge of the radial menu. */
export function menuButtonId(menu: number, button: number): number;
/** The ring, 0 or 1, of an identifier; 8 bits, not checked. */
export function menuIndex(id: number): number;
/** The place in its ring, 0 to 7 clockwise from East, of an identifier; 8 bits, not checked. */
export function buttonIndex(id: number): number;

/** Levels of the library's trace, which makes no difference between those that are on. */
export const LogLevel: {
  readonly verbose: 0;
  readonly info: 1;
  readonly error: 2;
  readonly off: 3;
};

/** Features of the event featureSupport. */
export const Feature: {
  /** The tablet can hold a pen in its dock. */
  readonly dockable: 0;
  /** Opaque mode is supported. */
  readonly opaqueMode: 1;
};

/** Function codes that this package treats in a way of their own. */
export const ButtonFunction: {
  /** Types keystrokes; the assignment's text is the sequence. */
  readonly keystrokes: 8;
  /** Starts an application; the assignment's text is its path, or its name in runAppOptions. */
  readonly runApp: 23;
  /** In the records of runAppOptions. */
  readonly runAppOption: 88;
};
