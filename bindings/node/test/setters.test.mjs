// Every setter resolves with what the service has stored, whether that changes anything or not.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { isDeepStrictEqual } from 'node:util';
import { menuButtonId } from 'korvu-settings';
import { connected } from './support/fixture.mjs';
import { next, until } from './support/wait.mjs';

// Announcements of earlier steps may come behind a receipt, and that of the last step behind them.
async function assertShown(settings, event, isIt) {
  await until(() => isIt(settings.values[event]), `values.${event} to be right`);
}

// Setter, event, key at the service, values with what the service stores for them.
const numbers = [
  ['setTipSensitivity', 'pressureCurve', 'PressureCurve', { 4: '4', 0: '0' }],
  ['setTiltSensitivity', 'tiltSensitivity', 'TiltSensitivity', { 37: '37', 2147483647: '2147483647' }],
  ['setBatteryAlertDelay', 'batteryAlertDelay', 'EPXBatteryAlertDelay', { 99: '99', 0: '0' }],
  ['setPenAlert', 'penAlertEnabled', 'PenAlertEnabled', { 0: '0', 1: '1' }],
  ['setPenGesturesEnabled', 'penGesturesEnabled', 'PenGesturesEnabled', { 0: '0', 1: '1' }],
  ['setMagnifierEnabled', 'magnifierEnabled', 'MagnifierEnabled', { 1: '1', 0: '0' }],
  ['setDockPowerSaving', 'penDockPowerSaving', 'PenDockPowerSavingEnabled', { 1: '1', 0: '0' }],
  ['setDockAlertTime', 'undockedTimerWait', 'UndockedTimerWait', { 35791: '35791', 5: '5' }],
  ['setMenuCenterRightClick', 'centerRightClick', 'RadialMenuCenterRightClick', { 1: '1', 0: '0' }],
  ['setOpaqueModeEnabled', 'opaqueEnabledGlobal', 'OpaqueModeEnabledGlobal', { 1: '1', 0: '0' }],
  ['setOpaqueModeOrientation', 'opaqueOrientation', 'OpaqueOrientation',
    { 1: '102', 2: '105', 3: '104', 0: '103' }],
  ['setOpaqueModeInputMode', 'opaqueInputMode', 'OpaqueInputMode', { 1: '1', 0: '0' }],
  ['setOpaqueModeMapping', 'opaqueMapping', 'OpaqueMapping', { 1: '0', 0: '1' }],
  ['setOpaqueModeSetupState', 'opaqueInSetupGuide', 'OpaqueModeInSetupGuide',
    { 2: '2', 1: '1', 0: '0' }],
  ['setOpaqueModeSetupSave', 'opaqueRememberDisplay', 'OpaqueModeRememberDisplay', { 1: '1', 0: '0' }],
];

test('setters of numbers and switches', connected(async (settings, service) => {
  for (const [setter, event, key, values] of numbers) {
    for (const [value, stored] of Object.entries(values)) {
      const wanted = Number(value);
      assert.equal(await settings[setter](wanted), wanted, setter);
      assert.equal(await service.stored(key), stored, setter);
      const shown = setter === 'setOpaqueModeSetupState' ? Number(wanted !== 0) : wanted;
      await assertShown(settings, event, (value) => value === shown);
      // Nothing changes, so no event comes; the receipt does.
      assert.equal(await settings[setter](wanted), wanted, setter);
    }
  }
}));

test('null asks for the default, and resolves with it', connected(async (settings, service) => {
  for (const [setter, , key, values] of numbers) {
    if (setter === 'setOpaqueModeEnabled') continue;
    await service.command(`set ${key}`);
    const fallback = await service.stored(key);
    const other = Object.keys(values).find((value) => values[value] !== fallback);
    await settings[setter](Number(other));
    assert.notEqual(await service.stored(key), fallback, setter);
    const stored = await settings[setter](null);
    assert.equal(await service.stored(key), fallback, setter);
    assert.equal(typeof stored, 'number', setter);
  }
  await assert.rejects(settings.setOpaqueModeEnabled(null), TypeError);
}));

test('switches take booleans, too', connected(async (settings) => {
  assert.equal(await settings.setMagnifierEnabled(true), 1);
  assert.equal(await settings.setMagnifierEnabled(false), 0);
}));

const buttons = [
  ['setEraserSinglePress', 'eraserSingle', 'ButtonBTEraserEnd\\ButtonSingle'],
  ['setEraserDoublePress', 'eraserDouble', 'ButtonBTEraserEnd\\ButtonDouble'],
  ['setEraserLongPress', 'eraserLong', 'ButtonBTEraserEnd\\ButtonLong'],
  ['setTopSinglePress', 'upperSideSwitch', 'ButtonUpperSide\\ButtonSingle'],
  ['setBottomSinglePress', 'lowerSideSwitch', 'ButtonLowerSide\\ButtonSingle'],
  ['setDockDetachAction', 'autoExecuteButton', 'ButtonAutoExecute\\ButtonSingle'],
];

test('setters of buttons', connected(async (settings, service) => {
  for (const [setter, event, key] of buttons) {
    const stored = await settings[setter]({ function: 8, text: 'Ctrl+Alt+\u00e9' });
    assert.equal(stored.function, 8, setter);
    assert.equal(stored.text, 'Ctrl+Alt+\u00e9', setter);
    assert.equal(await service.stored(`${key}\\ButtonFunction`), '8', setter);
    assert.equal(await service.stored(`${key}\\ButtonFunctionKeystrokes`), 'Ctrl+Alt+\u00e9', setter);
    await assertShown(settings, event, (value) => {
      const { function: code, name } = value.button ?? value;
      return code === 8 && name === stored.name;
    });

    assert.deepEqual(Object.keys(await settings[setter]({ function: 3 })), ['function', 'name']);
    assert.deepEqual(await settings[setter]({ function: -7 }), { function: -7, name: 'Function -7' });
    const standard = await settings[setter](null);
    assert.equal(String(standard.function), await service.stored(`${key}\\ButtonFunction`), setter);
    assert.equal(standard.name, await service.stored(`${key}\\ButtonFunctionName`), setter);
  }
}));

test('an application is set by its path, and by its name in the list', connected(
    async (settings, service) => {
      const key = 'ButtonUpperSide\\ButtonSingle\\ButtonFunctionAppPath';
      const byPath = await settings.setTopSinglePress({ function: 23, text: 'c:\\some\\tool.exe' });
      assert.equal(byPath.text, 'c:\\some\\tool.exe');
      const listed = next(settings, 'runAppOptions');
      await service.command('raw {"RunAppOptionsList":[{"c:\\\\a\\\\easel.exe":"Easel"}]}');
      await listed;
      const byName = await settings.setTopSinglePress({ function: 23, text: 'Easel' });
      assert.equal(byName.text, await service.stored(key));
      assert.match(byName.text, /easel\.exe$/);
    }));

test('a text longer than the record\'s array goes out whole', connected(async (settings, service) => {
  const text = 'x'.repeat(2000);
  assert.equal((await settings.setEraserLongPress({ function: 8, text })).text, text);
}));

test('hover click of the side switches', connected(async (settings) => {
  for (const [setter, event] of [
    ['setTopHoverClick', 'upperSideSwitch'], ['setBottomHoverClick', 'lowerSideSwitch']]) {
    for (const value of [1, 0, 1]) {
      assert.equal(await settings[setter](value), value);
      await assertShown(settings, event, ({ hoverClick }) => hoverClick === value);
    }
    assert.equal(typeof await settings[setter](null), 'number');
  }
}));

test('all wedges of both rings', connected(async (settings, service) => {
  const names =
      ['East', 'Southeast', 'South', 'Southwest', 'West', 'Northwest', 'North', 'Northeast'];
  for (const ring of [0, 1]) {
    for (const [index, name] of names.entries()) {
      const key = `ButtonRadial${name}${ring === 0 ? '' : '2'}\\ButtonSingle\\ButtonFunctionName`;
      const wanted = `${name} of ring ${ring}`;
      const stored = await settings.setMenuOp(menuButtonId(ring, index), { function: 3 }, wanted);
      assert.deepEqual(stored, { function: 3, name: wanted });
      assert.equal(await service.stored(key), wanted);
      await assertShown(settings, 'radialWedgeEx', (value) => value.name === wanted);
    }
  }
  // Index 8 of the first ring is the first wedge of the second.
  await settings.setMenuOp(menuButtonId(0, 8), { function: 4 }, 'spilt');
  assert.equal(await service.stored('ButtonRadialEast2\\ButtonSingle\\ButtonFunctionName'), 'spilt');
  const derived = await settings.setMenuOp(menuButtonId(0, 8), { function: 3 });
  assert.notEqual(derived.name, 'spilt');
  assert.equal(typeof (await settings.setMenuOp(menuButtonId(0, 8), null)).function, 'number');
}));

test('the number of wedges of a ring', connected(async (settings, service) => {
  for (const [ring, key] of [[0, 'RadialMenuZonesCount'], [1, 'RadialMenuZonesCount2']]) {
    for (const limit of [6, 0, 255]) {
      assert.equal(await settings.setMenuButtonLimit(menuButtonId(ring, 3), limit), limit);
      assert.equal(await service.stored(key), String(limit));
      await assertShown(settings, 'radialZonesCount', (value) => value[ring].count === limit);
    }
  }
}));

test('the display zoom map', connected(async (settings) => {
  const entry = { a: -2147483648, b: 2, c: 2147483647, d: -4 };
  assert.deepEqual(await settings.setSlavedDisplayZoom(entry), [entry]);
  await assertShown(settings, 'displayZoomMap', ([shown]) => isDeepStrictEqual(shown, entry));
  assert.ok(Array.isArray(await settings.setSlavedDisplayZoom(null)));
}));

test('the display path, with whatever texts JavaScript has', connected(async (settings) => {
  for (const path of ['\\\\.\\DISPLAY1', '\ud800 lone \udc00', '\u{1f58a}', 'x'.repeat(3000)]) {
    assert.equal(await settings.setOpaqueModeDisplayPath(path), path);
    await assertShown(settings, 'opaqueDisplayPath', (value) => value === path);
  }
  assert.equal(typeof await settings.setOpaqueModeDisplayPath(''), 'string');
}));

test('setters called in a row all resolve, and the last one stands', connected(
    async (settings, service) => {
      const setters = [];
      for (let value = 1; value <= 200; ++value) setters.push(settings.setTiltSensitivity(value));
      const stored = await Promise.all(setters);
      assert.equal(stored.at(-1), 200);
      assert.equal(await service.stored('TiltSensitivity'), '200');
      await assertShown(settings, 'tiltSensitivity', (value) => value === 200);
    }));

test('below API version 9 the event is the receipt', connected(async (settings, service) => {
  assert.equal(await settings.setTiltSensitivity(55), 55);
  assert.equal(await settings.setTiltSensitivity(55), 55);
  assert.equal(await service.stored('TiltSensitivity'), '55');
  assert.equal((await settings.setEraserSinglePress({ function: 5 })).function, 5);
  assert.equal(await settings.setTopHoverClick(1), 1);
  assert.equal(await settings.setMenuButtonLimit(menuButtonId(1, 0), 5), 5);
  const entry = { a: 9, b: 8, c: 7, d: 6 };
  assert.deepEqual(await settings.setSlavedDisplayZoom(entry), [entry]);
  assert.equal(await settings.setOpaqueModeDisplayPath('below'), 'below');
  assert.equal((await settings.setMenuOp(menuButtonId(1, 2), { function: 5 })).function, 5);
}, { apiVersion: 8 }));
