// Every callback of the header arrives as its event, with what the service announced.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { isDeepStrictEqual } from 'node:util';
import { Settings } from 'korvu-settings';
import { connected, withService } from './support/fixture.mjs';
import { next } from './support/wait.mjs';

// What is done at the service, and what the event brings: a value, some of its members, or what says
// whether it is the value. "toggle" sets a switch to what it is not, and the function takes the switch
// out of the event's value.
const cases = {
  versions: ['announce HIDRouterVersion 9.8.7', (value) => value.hidRouterVersion === '9.8.7'],
  eraserSingle: [
    'set ButtonBTEraserEnd\\ButtonSingle\\ButtonFunctionName My eraser',
    ({ name, ...rest }) => name === 'My eraser' && Object.keys(rest).join() === 'function'],
  eraserDouble: [
    'set ButtonBTEraserEnd\\ButtonDouble\\ButtonFunctionName Twice', { name: 'Twice' }],
  eraserLong: ['set ButtonBTEraserEnd\\ButtonLong\\ButtonFunctionName Long', { name: 'Long' }],
  upperSideSwitch: ['toggle ButtonUpperSide\\HoverClick', ({ hoverClick }) => hoverClick],
  lowerSideSwitch: ['toggle ButtonLowerSide\\HoverClick', ({ hoverClick }) => hoverClick],
  pressureCurve: ['set PressureCurve 5', 5],
  tiltSensitivity: ['set TiltSensitivity 41', 41],
  batteryAlertDelay: ['set EPXBatteryAlertDelay 77', 77],
  centerRightClick: ['toggle RadialMenuCenterRightClick'],
  displayZoomMap: [
    'announce SlavedDisplayZoomMap { 1, -2, 3, 4 }{ 5, 6, 7, 8 }',
    [{ a: 1, b: -2, c: 3, d: 4 }, { a: 5, b: 6, c: 7, d: 8 }]],
  opaqueEnabledGlobal: ['toggle OpaqueModeEnabledGlobal'],
  opaqueDisplayPath: ['set OpaqueDisplayPath \\\\.\\DISPLAY\u00e4\u{1f58a}', '\\\\.\\DISPLAY\u00e4\u{1f58a}'],
  opaqueOrientation: ['set OpaqueOrientation 105', 2],
  opaqueInputMode: ['toggle OpaqueInputMode'],
  // The service counts the two mappings the other way round.
  opaqueMapping: ['toggle OpaqueMapping', (value) => 1 - value],
  radialWedgeEx: [
    'set ButtonRadialWest2\\ButtonSingle\\ButtonFunctionName Second west', { name: 'Second west' }],
  radialZonesCount: ['set RadialMenuZonesCount2 3', { ring: 1, count: 3 }],
  autoExecuteButton: [
    'set ButtonAutoExecute\\ButtonSingle\\ButtonFunctionName Undocked', { name: 'Undocked' }],
  penDockPowerSaving: ['toggle PenDockPowerSavingEnabled'],
  penAlertEnabled: ['toggle PenAlertEnabled'],
  opaqueInSetupGuide: ['toggle OpaqueModeInSetupGuide'],
  opaqueRememberDisplay: ['toggle OpaqueModeRememberDisplay'],
  undockedTimerWait: ['set UndockedTimerWait 12345', 12345],
  penGesturesEnabled: ['toggle PenGesturesEnabled'],
  magnifierEnabled: ['toggle MagnifierEnabled'],
};

function check(expected) {
  if (typeof expected === 'function') return expected;
  if (typeof expected !== 'object') return (value) => value === expected;
  return (value) => {
    if (Array.isArray(expected)) return isDeepStrictEqual(value, expected);
    return Object.keys(expected).every((name) => value[name] === expected[name]);
  };
}

test('each setting of the service arrives as its event', connected(async (settings, service) => {
  for (const [name, [command, expected]] of Object.entries(cases)) {
    let line = command;
    let isIt = check(expected);
    if (command.startsWith('toggle ')) {
      const key = command.slice('toggle '.length);
      const flipped = Number(!Number(await service.stored(key)));
      const pick = expected ?? ((value) => value);
      line = `set ${key} ${flipped}`;
      isIt = (value) => pick(value) === flipped;
    }
    const isKeyed = name === 'radialZonesCount';
    const arrives = next(settings, name, (value) =>
        isIt(value) && (isKeyed || settings.values[name] === value));
    await service.command(line);
    await arrives;
  }
  assert.deepEqual(settings.values.radialZonesCount[1], { ring: 1, count: 3 });
}));

const lists = {
  runAppOptions: ['RunAppOptionsList'],
  topButtonSingleOptions: ['TopButtonSingleOptionsList'],
  topButtonDoubleOptions: ['TopButtonDoubleOptionsList'],
  topButtonLongOptions: ['TopButtonLongOptionsList'],
  sideSwitchOptions: ['SideSwitchOptionsList'],
  radialWedgeOptions: ['RadialWedgeOptionsList'],
  autoUndockOptions: ['AutoUndockOptionsList'],
};

test('each list of options arrives whole', connected(async (settings, service) => {
  for (const [name, [key]] of Object.entries(lists)) {
    const before = settings.values[name].length;
    const arrives = next(settings, name);
    const items = key === 'RunAppOptionsList' ?
        '[{"c:\\\\paint.exe":"New paint"},{"c:\\\\write.exe":"New write"}]' :
        '[{"91":"New paint"},{"92":"New write"}]';
    await service.command(`raw {"${key}":${items}}`);
    const options = await arrives;
    assert.equal(options.length, before + 2, name);
    const codes = key === 'RunAppOptionsList' ? [88, 88] : [91, 92];
    assert.deepEqual(
        options.filter((option) => ['New paint', 'New write'].includes(option.name)),
        [{ function: codes[0], name: 'New paint' }, { function: codes[1], name: 'New write' }], name);
    assert.equal(settings.values[name], options);
  }
}));

test('the monitors arrive with the one that is selected', connected(async (settings, service) => {
  await settings.setOpaqueModeDisplayPath('second');
  const arrives = next(settings, 'monitorOptions');
  await service.command('raw {"MonitorOptionsList":[{"first":"Left"},{"second":"Right"}]}');
  assert.deepEqual(await arrives, {
    monitors: [
      { displayPath: 'first', displayName: 'Left' }, { displayPath: 'second', displayName: 'Right' },
    ],
    selected: 1,
  });
}));

test('a pen, its module, its battery and the dock arrive as one record', connected(
    async (settings, service) => {
      const module = next(settings, 'penInfo', (pen) => pen.moduleConnected === 1);
      await service.command('pen 4E7A10C3 100237 in');
      await service.command('module connect');
      await module;
      const docked = next(settings, 'penInfo', (pen) => pen.docked === 1);
      await service.command('battery 55 charging');
      await service.command('dock on');
      const pen = await docked;
      assert.equal(pen.serialNumber, '4E7A10C3');
      assert.equal(pen.penId, '100237');
      assert.equal(pen.batteryStatus, 55);
      assert.equal(pen.batteryCharging, 1);
      assert.equal(pen.inProximity, 1);
      assert.equal(pen.module.serialNumber, '4E7A10C3');
      assert.deepEqual(Object.keys(pen.module), ['version', 'moduleId', 'productId', 'serialNumber']);
      assert.deepEqual(Object.keys(pen), [
        'serialNumber', 'penId', 'module', 'batteryStatus', 'batteryCharging', 'inProximity',
        'vendorId', 'penType', 'firmwareVersion', 'sensorId', 'moduleConnected', 'docked',
      ]);
      assert.equal(settings.values.penInfo['4E7A10C3'], pen);
    }));

test('features arrive for every value, and values has both', connected(
    async (settings, service) => {
      for (const [key, feature] of [['IsDockable', 0], ['OpaqueModeSupported', 1]]) {
        for (const supported of [0, 1]) {
          const arrives = next(settings, 'featureSupport', (value) =>
              value.feature === feature && value.supported === supported);
          await service.command(`announce ${key} ${supported}`);
          await arrives;
          assert.equal(settings.values.featureSupport[feature].supported, supported);
        }
      }
    }));

test('the library\'s own limits arrive before the connection', async () => {
  const settings = new Settings();
  const seen = {};
  for (const name of ['firstRange', 'secondRange', 'wedgeCapacity']) {
    settings.on(name, (value) => { seen[name] = value; });
  }
  await assert.rejects(settings.connect({ timeoutMs: 0 }), { code: 'ERR_KORVU_NO_SERVICE' });
  assert.deepEqual(seen, {
    firstRange: { minimum: 0, maximum: 6 },
    secondRange: { minimum: -90, maximum: 90 },
    wedgeCapacity: 16,
  });
});

test('keystrokes keep lone NULs and arrive outside a capture, too', connected(
    async (settings, service) => {
      const arrives = next(settings, 'capturedKeystrokes', (text) => text !== '');
      await service.command(
          'raw {"ComponentsDriver\\\\BTButtonHandler\\\\CapturedKeystrokes":"a\0b"}');
      assert.equal(await arrives, 'a\0b');
      assert.ok(!('capturedKeystrokes' in settings.values));
    }));

test('below API version 2 wedges arrive as radialWedge', connected(async (settings, service) => {
  settings.on('radialWedgeEx', () => assert.fail('a wedge of the newer kind'));
  // Other wedges are still being asked for, so what values has is looked at when the event comes.
  const arrives = next(settings, 'radialWedge', (value) =>
      value.name === 'West of old' && settings.values.radialWedge === value);
  await service.command('set ButtonRadialWest\\ButtonSingle\\ButtonFunctionName West of old');
  await arrives;
}, { apiVersion: 1 }));

test('values is a frozen snapshot that later events leave as it is', connected(
    async (settings, service) => {
      const before = settings.values;
      assert.ok(Object.isFrozen(before) && Object.isFrozen(before.eraserSingle));
      assert.equal(before.tiltSensitivity, 12);
      const arrives = next(settings, 'tiltSensitivity');
      await service.command('set TiltSensitivity 13');
      await arrives;
      assert.equal(before.tiltSensitivity, 12);
      assert.equal(settings.values.tiltSensitivity, 13);
    }));
