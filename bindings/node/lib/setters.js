'use strict';
// The setters: what each takes, which of the library's functions it calls, and how the service's
// answer reads. A table and four forms.
//
// A form turns the arguments of a call into a change:
//   parameters   for the library's function
//   reads        keys whose values, read back, tell what is stored
//   stored       those values (texts) as a value of the script
//   isTaken      whether what is stored is what was asked for
//   setting      names the setting: a later change of the same one overtakes this one
//   isReported   whether a value of the event tells that the change has been made
//   canStand     whether such a value from before the change tells that nothing is to change
//   ofEvent      that value as what is stored

const { int32, integer, kHighest, object, text } = require('./arguments.js');
const { keys, kWedgesPerRing } = require('./keys.js');

const kKeystrokes = 8;
const kRunApp = 23;

// As the library reads numbers: leading blanks, and anything after the digits, pass.
function numberIn(stored) {
  const match = /^\s*([+-]?\d+)/.exec(stored);
  return match ? Number(match[1]) : null;
}

const same = (value) => value;

// A number or a switch. `codes` are the service's numbers for the values from 0 on; `pick` takes the
// setting out of the event's value, which is `shown(value)` then.
function number({ key, maximum = kHighest, isSwitch = false, hasDefault = true, codes, pick = same,
                  shown = same }) {
  const read = (stored) => {
    const found = numberIn(stored);
    if (found === null) return null;
    if (codes) return codes.indexOf(found);
    return isSwitch ? Number(found !== 0) : found;
  };
  return (given) => {
    const isEmpty = hasDefault && given === null;
    const value = isEmpty ? 0 : integer('value', isSwitch ? unswitch(given) : given, 0, maximum);
    return {
      parameters: hasDefault ? [value, isEmpty] : [value],
      reads: [key],
      setting: key,
      stored: ([stored]) => read(stored),
      isTaken: (stored) => isEmpty || stored === value,
      isReported: (reported) => isEmpty || pick(reported) === shown(value),
      canStand: !isEmpty && shown(value) === value,
      ofEvent: (reported) => isEmpty ? pick(reported) : value,
    };
  };
}

function unswitch(given) {
  return typeof given === 'boolean' ? Number(given) : given;
}

// A function for a button or a wedge. `before` are the library's parameters before the function.
function assignment(place, given, name, before = []) {
  const isEmpty = given === null;
  const functionCode = isEmpty ? 0 : int32('value.function', object('value', given).function);
  const assigned = isEmpty || given.text === undefined ? '' : text('value.text', given.text);
  if (assigned !== '' && functionCode !== kKeystrokes && functionCode !== kRunApp) {
    throw new RangeError(
        `value.text must be left out for function ${functionCode}: only functions ${kKeystrokes} ` +
        `(keystrokes) and ${kRunApp} (an application) have a text`);
  }
  const reads = [String.raw`${place}\ButtonFunction`, String.raw`${place}\ButtonFunctionName`];
  if (assigned !== '') {
    reads.push(String.raw`${place}\ButtonFunction${
      functionCode === kKeystrokes ? 'Keystrokes' : 'AppPath'}`);
  }
  return {
    parameters: [...before, functionCode, assigned, isEmpty],
    reads,
    setting: place,
    stored: ([code, storedName, storedText]) => {
      const stored = { function: numberIn(code), name: storedName };
      return storedText === undefined ? stored : { ...stored, text: storedText };
    },
    isTaken: (stored, values) => {
      if (isEmpty) return true;
      if (stored.function !== functionCode) return false;
      if (name && stored.name !== name) return false;
      return assigned === '' || stored.text === assigned ||
          functionCode === kRunApp && isListedApplication(values, assigned);
    },
    isReported: (reported) =>
        isEmpty || (reported.button ?? reported).function === functionCode,
    canStand: !isEmpty && assigned === '',
    ofEvent: (reported) => reported.button ?? reported,
  };
}

// An application may be given by its name in the list, and is stored by its path.
function isListedApplication({ runAppOptions = [] }, name) {
  return runAppOptions.some((application) => application.name === name);
}

const button = (place) => (given) => assignment(place, given);

function wedge(id, given, name = null) {
  integer('id', id, 0, 0xffffffff);
  const index = (id & 0xff) + (id >>> 16 & 0xff) * kWedgesPerRing;
  if (index >= 2 * kWedgesPerRing) {
    throw new RangeError(`id must name a wedge of one of the two rings, not ${id}`);
  }
  if (name !== null) text('name', name);
  const change = assignment(keys.wedge(index), given, given === null ? null : name, [id]);
  change.parameters.push(name);
  change.canStand = false;  // the event does not tell which wedge it is about
  if (index >= kWedgesPerRing) change.since = 2;
  return change;
}

function wedgeLimit(id, given) {
  const ring = integer('id', id, 0, 0xffffffff) >>> 16 & 0xff;
  if (ring > 1) throw new RangeError(`id must name a wedge of one of the two rings, not ${id}`);
  const limit = integer('limit', given, 0, 0xff);
  const key = keys.zonesCount(ring);
  return {
    parameters: [id, limit],
    reads: [key],
    setting: key,
    stored: ([stored]) => numberIn(stored),
    isTaken: (stored) => stored === limit,
    isReported: (reported) => reported.ring === ring && reported.count === limit,
    canStand: true,
    ofEvent: (reported) => reported.count,
  };
}

function zoom(given) {
  const isEmpty = given === null;
  const { a, b, c, d } = isEmpty ? { a: 0, b: 0, c: 0, d: 0 } : object('value', given);
  const numbers = Object.entries({ a, b, c, d })
      .map(([name, value]) => int32(`value.${name}`, value));
  const isWanted = (map) => map.length === 1 &&
      ['a', 'b', 'c', 'd'].every((name, at) => map[0][name] === numbers[at]);
  return {
    parameters: [...numbers, isEmpty],
    reads: [keys.zoomMap],
    setting: keys.zoomMap,
    stored: ([stored]) => [...stored.matchAll(/\{([^}]*)\}/g)].map(([, entry]) => {
      const [first, second, third, fourth] = entry.split(',').map(numberIn);
      return { a: first, b: second, c: third, d: fourth };
    }),
    isTaken: (stored) => isEmpty || isWanted(stored),
    isReported: (reported) => isEmpty || isWanted(reported),
    canStand: !isEmpty,
    ofEvent: (reported) => reported,
  };
}

function displayPath(given) {
  const path = text('path', given);
  return {
    parameters: [path],
    reads: [keys.opaqueDisplayPath],
    setting: keys.opaqueDisplayPath,
    stored: ([stored]) => stored,
    // From an empty one the service makes its default.
    isTaken: (stored) => path === '' || stored === path,
    isReported: (reported) => path === '' || reported === path,
    canStand: path !== '',
    ofEvent: (reported) => reported,
  };
}

const hoverClick = ({ hoverClick: value }) => value;
const kLongestDockAlertTime = 35791;  // what the tablet's timer holds

// `event` tells of the change; `since` is the API version that opens the setter; `arity` counts its
// parameters, 1 if left out, before the options.
const setters = {
  setEraserSinglePress: { form: button(keys.eraserSingle), event: 'eraserSingle' },
  setEraserDoublePress: { form: button(keys.eraserDouble), event: 'eraserDouble' },
  setEraserLongPress: { form: button(keys.eraserLong), event: 'eraserLong' },
  setTopSinglePress: { form: button(keys.upperSideSwitch), event: 'upperSideSwitch' },
  setTopHoverClick: {
    form: number({ key: keys.upperHoverClick, isSwitch: true, maximum: 1, pick: hoverClick }),
    event: 'upperSideSwitch',
  },
  setBottomSinglePress: { form: button(keys.lowerSideSwitch), event: 'lowerSideSwitch' },
  setBottomHoverClick: {
    form: number({ key: keys.lowerHoverClick, isSwitch: true, maximum: 1, pick: hoverClick }),
    event: 'lowerSideSwitch',
  },
  setDockDetachAction: { form: button(keys.autoExecute), event: 'autoExecuteButton' },

  setTipSensitivity: { form: number({ key: keys.pressureCurve }), event: 'pressureCurve' },
  setTiltSensitivity: { form: number({ key: keys.tiltSensitivity }), event: 'tiltSensitivity' },
  setBatteryAlertDelay: {
    form: number({ key: keys.batteryAlertDelay }),
    event: 'batteryAlertDelay',
  },
  setPenAlert: { form: onOff(keys.penAlert), event: 'penAlertEnabled' },
  setPenGesturesEnabled: { form: onOff(keys.penGestures), event: 'penGesturesEnabled' },
  setMagnifierEnabled: { form: onOff(keys.magnifier), event: 'magnifierEnabled' },
  setDockPowerSaving: { form: onOff(keys.dockPowerSaving), event: 'penDockPowerSaving' },
  setDockAlertTime: {
    form: number({ key: keys.undockedTimerWait, maximum: kLongestDockAlertTime }),
    event: 'undockedTimerWait',
    since: 7,
  },

  setMenuOp: { form: wedge, arity: 3, event: 'radialWedgeEx', eventBelow2: 'radialWedge' },
  setMenuButtonLimit: { form: wedgeLimit, arity: 2, event: 'radialZonesCount', since: 2 },
  setMenuCenterRightClick: { form: onOff(keys.centerRightClick), event: 'centerRightClick' },

  setSlavedDisplayZoom: { form: zoom, event: 'displayZoomMap' },

  setOpaqueModeEnabled: {
    form: onOff(keys.opaqueEnabled, { hasDefault: false }),
    event: 'opaqueEnabledGlobal',
    since: 1,
  },
  setOpaqueModeOrientation: {
    form: number({ key: keys.opaqueOrientation, maximum: 3, codes: [103, 102, 105, 104] }),
    event: 'opaqueOrientation',
    since: 1,
  },
  setOpaqueModeInputMode: {
    form: number({ key: keys.opaqueInputMode, maximum: 1, codes: [0, 1] }),
    event: 'opaqueInputMode',
    since: 1,
  },
  setOpaqueModeMapping: {
    form: number({ key: keys.opaqueMapping, maximum: 1, codes: [1, 0] }),
    event: 'opaqueMapping',
    since: 1,
  },
  setOpaqueModeSetupState: {
    // The event tells only whether there is a step.
    form: number({ key: keys.opaqueSetupGuide, maximum: 2, shown: (step) => Number(step !== 0) }),
    event: 'opaqueInSetupGuide',
    since: 6,
  },
  setOpaqueModeSetupSave: {
    form: onOff(keys.opaqueRememberDisplay),
    event: 'opaqueRememberDisplay',
    since: 6,
  },
  setOpaqueModeDisplayPath: { form: displayPath, event: 'opaqueDisplayPath', since: 1 },
};

function onOff(key, more) {
  return number({ key, isSwitch: true, maximum: 1, ...more });
}

module.exports = { setters };
