'use strict';
// The service's names for the settings that the setters set. People write a key with single
// backslashes, messages carry them doubled.

const kPen = String.raw`ComponentsDriver\PenHandler\PenTransducer`;
const kEraser = String.raw`ComponentsDriver\BTButtonHandler\ButtonBTEraserEnd`;
const kTablet = String.raw`ComponentsDriver\ComponentsTablet`;
const kOpaque = String.raw`ComponentsDriver\OpaqueSettings`;
const kRadialMenu = String.raw`${kPen}\RadialMenuHandler`;

const kWedgeNames =
    ['East', 'Southeast', 'South', 'Southwest', 'West', 'Northwest', 'North', 'Northeast'];
const kWedgesPerRing = kWedgeNames.length;

const keys = {
  // A button is four settings; these are what their keys begin with.
  eraserSingle: String.raw`${kEraser}\ButtonSingle`,
  eraserDouble: String.raw`${kEraser}\ButtonDouble`,
  eraserLong: String.raw`${kEraser}\ButtonLong`,
  upperSideSwitch: String.raw`${kPen}\ButtonUpperSide\ButtonSingle`,
  lowerSideSwitch: String.raw`${kPen}\ButtonLowerSide\ButtonSingle`,
  autoExecute: String.raw`${kTablet}\ButtonAutoExecute\ButtonSingle`,
  wedge(wedge) {
    const ring = wedge < kWedgesPerRing ? '' : '2';
    const name = kWedgeNames[wedge % kWedgesPerRing];
    return String.raw`${kRadialMenu}\ButtonRadial${name}${ring}\ButtonSingle`;
  },

  upperHoverClick: String.raw`${kPen}\ButtonUpperSide\HoverClick`,
  lowerHoverClick: String.raw`${kPen}\ButtonLowerSide\HoverClick`,
  pressureCurve: String.raw`${kPen}\ButtonTip\PressureCurve`,
  tiltSensitivity: String.raw`${kPen}\TiltSensitivity`,
  batteryAlertDelay: String.raw`${kPen}\EPXBatteryAlertDelay`,
  penGestures: String.raw`${kPen}\PenGesturesEnabled`,
  magnifier: String.raw`${kPen}\MagnifierEnabled`,
  penAlert: String.raw`${kTablet}\PenAlertEnabled`,
  dockPowerSaving: String.raw`${kTablet}\PenDockPowerSavingEnabled`,
  undockedTimerWait: String.raw`${kTablet}\UndockedTimerWait`,
  centerRightClick: String.raw`${kRadialMenu}\RadialMenuCenterRightClick`,
  zonesCount: (ring) => String.raw`${kRadialMenu}\RadialMenuZonesCount${ring === 0 ? '' : '2'}`,
  zoomMap: String.raw`ComponentsDriver\SlavedDisplayZoomMap`,
  opaqueEnabled: String.raw`${kOpaque}\OpaqueModeEnabledGlobal`,
  opaqueOrientation: String.raw`${kOpaque}\OpaqueOrientation`,
  opaqueInputMode: String.raw`${kOpaque}\OpaqueInputMode`,
  opaqueMapping: String.raw`${kOpaque}\OpaqueMapping`,
  opaqueSetupGuide: String.raw`${kOpaque}\OpaqueModeInSetupGuide`,
  opaqueRememberDisplay: String.raw`${kOpaque}\OpaqueModeRememberDisplay`,
  opaqueDisplayPath: String.raw`${kOpaque}\OpaqueDisplayPath`,

  capturedKeys: String.raw`ComponentsDriver\BTButtonHandler\CapturedKeystrokesEntities`,
  // One that every service has and that the library never asks for.
  unasked: String.raw`ComponentsDriver\ShowHoverClickUI`,
};

function valueRequest(key) {
  // An application may have it from a message, with its backslashes doubled.
  const single = key.replace(/\\\\/g, '\\');
  return `{"GetVal":"${single.replace(/\\/g, '\\\\')}"}`;
}

// What the library itself asks first on a connection. Any service acknowledges it.
const kConnectionProbe = '{"Connected":"?"}';

module.exports = { keys, kConnectionProbe, kWedgesPerRing, valueRequest };
