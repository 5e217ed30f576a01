'use strict';
// The library's callbacks as events, in the order of the header: the place in this table is the kind
// of a letter.

const button = ([functionCode, name]) => Object.freeze({ function: functionCode, name });
const number = ([value]) => value;
const text = number;
const range = ([minimum, maximum]) => Object.freeze({ minimum, maximum });

const sideSwitch = ([functionCode, name, hoverClick]) =>
    Object.freeze({ button: button([functionCode, name]), hoverClick });

// Records of `size` fields, one after another.
function list(fields, size, toRecord) {
  const records = [];
  for (let at = 0; at < fields.length; at += size) {
    records.push(toRecord(fields.slice(at, at + size)));
  }
  return Object.freeze(records);
}

const options = (fields) => list(fields, 2, button);

const zoomMap = (fields) => list(fields, 4, ([a, b, c, d]) => Object.freeze({ a, b, c, d }));

const versions = ([hidRouterVersion, serviceVersion]) =>
    Object.freeze({ hidRouterVersion, serviceVersion });

function pen([serialNumber, penId, version, moduleId, productId, moduleSerialNumber, batteryStatus,
              batteryCharging, inProximity, vendorId, penType, firmwareVersion, sensorId,
              moduleConnected, docked]) {
  const module = Object.freeze(
      { version, moduleId, productId, serialNumber: moduleSerialNumber });
  return Object.freeze({
    serialNumber, penId, module, batteryStatus, batteryCharging, inProximity, vendorId, penType,
    firmwareVersion, sensorId, moduleConnected, docked,
  });
}

const monitors = ([selected, ...texts]) => Object.freeze({
  monitors: list(texts, 2, ([displayPath, displayName]) =>
      Object.freeze({ displayPath, displayName })),
  selected,
});

// `keyOf`: of which of several things the event tells; `values` then has the last of each.
// `isPassing`: what happened, rather than what is: `values` does not have it.
// `isPerConnection`: it comes for every value that arrives, changed or not, and so once with each
// connection that is opened.
const events = [
  { name: 'versions', read: versions },
  { name: 'penInfo', read: pen, keyOf: (value) => value.serialNumber },
  { name: 'eraserSingle', read: button },
  { name: 'eraserDouble', read: button },
  { name: 'eraserLong', read: button },
  { name: 'upperSideSwitch', read: sideSwitch },
  { name: 'lowerSideSwitch', read: sideSwitch },
  { name: 'pressureCurve', read: number },
  { name: 'tiltSensitivity', read: number },
  { name: 'batteryAlertDelay', read: number },
  { name: 'radialWedge', read: button },
  { name: 'centerRightClick', read: number },
  { name: 'capturedKeystrokes', read: text, isPassing: true },
  { name: 'displayZoomMap', read: zoomMap },
  { name: 'runAppOptions', read: options, isPerConnection: true },
  { name: 'topButtonSingleOptions', read: options, isPerConnection: true },
  { name: 'topButtonDoubleOptions', read: options, isPerConnection: true },
  { name: 'topButtonLongOptions', read: options, isPerConnection: true },
  { name: 'sideSwitchOptions', read: options, isPerConnection: true },
  { name: 'firstRange', read: range },
  { name: 'secondRange', read: range },
  { name: 'radialWedgeOptions', read: options, isPerConnection: true },
  { name: 'wedgeCapacity', read: number },
  { name: 'opaqueEnabledGlobal', read: number },
  { name: 'opaqueDisplayPath', read: text },
  { name: 'opaqueOrientation', read: number },
  { name: 'opaqueInputMode', read: number },
  { name: 'opaqueMapping', read: number },
  { name: 'monitorOptions', read: monitors, isPerConnection: true },
  { name: 'radialWedgeEx', read: button },
  {
    name: 'radialZonesCount',
    read: ([ring, count]) => Object.freeze({ ring, count }),
    keyOf: (value) => value.ring,
  },
  { name: 'autoExecuteButton', read: button },
  { name: 'autoUndockOptions', read: options, isPerConnection: true },
  { name: 'penDockPowerSaving', read: number },
  { name: 'penAlertEnabled', read: number },
  {
    name: 'featureSupport',
    read: ([feature, supported]) => Object.freeze({ feature, supported }),
    keyOf: (value) => value.feature,
    isPerConnection: true,
  },
  { name: 'opaqueInSetupGuide', read: number },
  { name: 'opaqueRememberDisplay', read: number },
  { name: 'undockedTimerWait', read: number },
  { name: 'penGesturesEnabled', read: number },
  { name: 'magnifierEnabled', read: number },
];

module.exports = { events };
