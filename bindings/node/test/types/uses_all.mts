// Uses everything that index.d.ts declares; package.test.mjs checks that it does. Never run: what a
// wrong declaration would fail is the compilation.

import {
  Settings, KorvuError, LogLevel, Feature, ButtonFunction, menuButtonId, menuIndex, buttonIndex,
} from 'korvu-settings';
import type {
  Button, ButtonAssignment, CallOptions, ConnectOptions, ConnectionEvents, ErrorCode, FeatureSupport,
  KeyCapture, ModuleIdentity, MonitorOption, MonitorOptions, Pen, RadialZonesCount, Range, Reply,
  SettingsEvents, SettingsOptions, SideSwitch, StoredButton, Values, Versions, ZoomMapEntry,
} from 'korvu-settings';

function take<Expected>(_value: Expected): void {}

const options: SettingsOptions = { apiVersion: 9, timeoutMs: 1000, watchIntervalMs: 5000 };
const settings = new Settings(options);
const plain: Settings = new Settings().unref().ref();
take<number>(plain.apiVersion);
take<boolean>(plain.isConnected);

settings
    .on('versions', (value: Versions) => take<string>(value.hidRouterVersion + value.serviceVersion))
    .on('penInfo', (value: Pen) => {
      take<string[]>([value.serialNumber, value.penId, value.firmwareVersion]);
      take<number[]>([
        value.batteryStatus, value.batteryCharging, value.inProximity, value.vendorId, value.penType,
        value.sensorId, value.moduleConnected, value.docked,
      ]);
      const module: ModuleIdentity = value.module;
      take<string[]>([module.version, module.moduleId, module.serialNumber]);
      take<number>(module.productId);
    })
    .on('eraserSingle', (value: Button) => take<string>(value.name))
    .on('eraserDouble', (value: Button) => take<number>(value.function))
    .on('eraserLong', (value: Button) => take<Button>(value))
    .on('upperSideSwitch', (value: SideSwitch) => take<number>(value.hoverClick))
    .on('lowerSideSwitch', (value: SideSwitch) => take<Button>(value.button))
    .on('pressureCurve', (value: number) => take<number>(value))
    .on('tiltSensitivity', (value: number) => take<number>(value))
    .on('batteryAlertDelay', (value: number) => take<number>(value))
    .on('radialWedge', (value: Button) => take<Button>(value))
    .on('centerRightClick', (value: number) => take<number>(value))
    .on('capturedKeystrokes', (value: string) => take<string>(value))
    .on('displayZoomMap', (value: readonly ZoomMapEntry[]) => take<number[]>(
        value.flatMap(({ a, b, c, d }) => [a, b, c, d])))
    .on('runAppOptions', (value: readonly Button[]) => take<Button>(value[0]))
    .on('topButtonSingleOptions', (value: readonly Button[]) => take<Button>(value[0]))
    .on('topButtonDoubleOptions', (value: readonly Button[]) => take<Button>(value[0]))
    .on('topButtonLongOptions', (value: readonly Button[]) => take<Button>(value[0]))
    .on('sideSwitchOptions', (value: readonly Button[]) => take<Button>(value[0]))
    .on('firstRange', (value: Range) => take<number>(value.minimum))
    .on('secondRange', (value: Range) => take<number>(value.maximum))
    .on('radialWedgeOptions', (value: readonly Button[]) => take<Button>(value[0]))
    .on('wedgeCapacity', (value: number) => take<number>(value))
    .on('opaqueEnabledGlobal', (value: number) => take<number>(value))
    .on('opaqueDisplayPath', (value: string) => take<string>(value))
    .on('opaqueOrientation', (value: number) => take<number>(value))
    .on('opaqueInputMode', (value: number) => take<number>(value))
    .on('opaqueMapping', (value: number) => take<number>(value))
    .on('monitorOptions', (value: MonitorOptions) => {
      take<number>(value.selected);
      value.monitors.forEach((monitor: MonitorOption) => take<string>(
          monitor.displayPath + monitor.displayName));
    })
    .on('radialWedgeEx', (value: Button) => take<Button>(value))
    .on('radialZonesCount', (value: RadialZonesCount) => take<number>(value.ring + value.count))
    .on('autoExecuteButton', (value: Button) => take<Button>(value))
    .on('autoUndockOptions', (value: readonly Button[]) => take<Button>(value[0]))
    .on('penDockPowerSaving', (value: number) => take<number>(value))
    .on('penAlertEnabled', (value: number) => take<number>(value))
    .on('featureSupport', (value: FeatureSupport) => take<number>(value.feature + value.supported))
    .on('opaqueInSetupGuide', (value: number) => take<number>(value))
    .on('opaqueRememberDisplay', (value: number) => take<number>(value))
    .on('undockedTimerWait', (value: number) => take<number>(value))
    .on('penGesturesEnabled', (value: number) => take<number>(value))
    .on('magnifierEnabled', (value: number) => take<number>(value))
    .on('connected', () => {})
    .on('lost', () => {});
settings.once('tiltSensitivity', (value) => take<number>(value)).once('lost', () => {});
settings.off('tiltSensitivity', (value) => take<number>(value)).off('lost', () => {});
// @ts-expect-error: the value is no text
settings.on('tiltSensitivity', (value: string) => take<string>(value));
// @ts-expect-error: there is no such event
settings.on('tilt', () => {});

const values: Values = settings.values;
take<number | undefined>(values.tiltSensitivity);
take<Pen | undefined>(values.penInfo?.['4E7A10C3']);
take<RadialZonesCount | undefined>(values.radialZonesCount?.[1]);
take<FeatureSupport | undefined>(values.featureSupport?.[Feature.dockable]);
take<FeatureSupport | undefined>(values.featureSupport?.[Feature.opaqueMode]);
// @ts-expect-error: passing events have no last value
take(values.capturedKeystrokes);
// @ts-expect-error: a snapshot stays as it is
values.tiltSensitivity = 3;
take<keyof SettingsEvents>('tiltSensitivity');
take<keyof ConnectionEvents>('lost');

const connectOptions: ConnectOptions = { timeoutMs: Infinity };
await settings.connect(connectOptions);
await settings.connect();
const call: CallOptions = { timeoutMs: 1000 };
await settings.ready(call);
const reply: Reply = await settings.request('{"Connected":"?"}', call);
take<string>(reply.requestPart + reply.value);
take<string>(await settings.read('MonitorOptionsList', call));
await settings.setLogLevel(LogLevel.verbose);
await settings.setLogLevel(LogLevel.info);
await settings.setLogLevel(LogLevel.error);
await settings.setLogLevel(LogLevel.off);

const capture: KeyCapture = settings.captureKeys(call);
for await (const text of capture) take<string>(text);
const keys: string = await capture.finish();

const assignment: ButtonAssignment = { function: ButtonFunction.keystrokes, text: keys };
const stored: StoredButton = await settings.setEraserSinglePress(assignment, call);
take<number | null>(stored.function);
take<string | undefined>(stored.name + stored.text);
await settings.setEraserDoublePress({ function: ButtonFunction.runApp, text: 'c:\\a.exe' });
await settings.setEraserLongPress(null);
await settings.setTopSinglePress({ function: ButtonFunction.runAppOption });
await settings.setBottomSinglePress({ function: 1 }, call);
await settings.setDockDetachAction({ function: 1 }, call);
// @ts-expect-error: a function is a record
await settings.setDockDetachAction(1);

take<number | null>(await settings.setTopHoverClick(true, call));
take<number | null>(await settings.setBottomHoverClick(null));
take<number | null>(await settings.setTipSensitivity(1, call));
take<number | null>(await settings.setTiltSensitivity(null));
take<number | null>(await settings.setBatteryAlertDelay(1));
take<number | null>(await settings.setPenAlert(false));
take<number | null>(await settings.setPenGesturesEnabled(1));
take<number | null>(await settings.setMagnifierEnabled(1));
take<number | null>(await settings.setDockPowerSaving(1));
take<number | null>(await settings.setDockAlertTime(1));

const id: number = menuButtonId(1, 2);
take<number>(menuIndex(id) + buttonIndex(id));
take<StoredButton>(await settings.setMenuOp(id, assignment));
take<StoredButton>(await settings.setMenuOp(id, null, null, call));
take<StoredButton>(await settings.setMenuOp(id, assignment, 'name'));
take<number | null>(await settings.setMenuButtonLimit(id, 8, call));
take<number | null>(await settings.setMenuCenterRightClick(true));

const zoom: ZoomMapEntry[] = await settings.setSlavedDisplayZoom({ a: 0, b: 0, c: 1920, d: 1080 });
take<ZoomMapEntry[]>(zoom);
take<number | null>(await settings.setOpaqueModeEnabled(1));
// @ts-expect-error: it has no default
await settings.setOpaqueModeEnabled(null);
take<number | null>(await settings.setOpaqueModeOrientation(3));
take<number | null>(await settings.setOpaqueModeInputMode(null));
take<number | null>(await settings.setOpaqueModeMapping(1));
take<number | null>(await settings.setOpaqueModeSetupState(2));
take<number | null>(await settings.setOpaqueModeSetupSave(true));
take<string>(await settings.setOpaqueModeDisplayPath('display', call));

try {
  await settings.close();
} catch (error) {
  if (!(error instanceof KorvuError)) throw error;
  const code: ErrorCode = error.code;
  take<'KorvuError'>(error.name);
  take<unknown>(error.stored);
  if (code === 'ERR_KORVU_NOT_TAKEN') take<string>(error.message);
  // @ts-expect-error: there is no such code
  if (code === 'ERR_KORVU_NONE') take<string>(error.message);
}
