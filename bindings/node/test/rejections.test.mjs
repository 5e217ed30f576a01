// Each way in which a promise is not kept, and its code.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { KorvuError, Settings, buttonIndex, menuButtonId, menuIndex } from 'korvu-settings';
import setterTable from '../lib/setters.js';
import { connected, withService } from './support/fixture.mjs';
import { next, until } from './support/wait.mjs';

const { setters } = setterTable;

test('there is no service', async () => {
  const settings = new Settings();
  for (const timeoutMs of [0, 50]) {
    await assert.rejects(settings.connect({ timeoutMs }), (error) =>
        error instanceof KorvuError && error.code === 'ERR_KORVU_NO_SERVICE');
  }
  assert.equal(settings.isConnected, false);
});

test('nothing is connected', async () => {
  const settings = new Settings();
  for (const call of [
    () => settings.setTiltSensitivity(1), () => settings.ready(), () => settings.read('key'),
    () => settings.request('{"Connected":"?"}'), async () => settings.captureKeys()]) {
    await assert.rejects(call(), { code: 'ERR_KORVU_NOT_CONNECTED' });
  }
  await settings.close();
});

// With its replies held back, the service has carried a change out and not been asked for the value.
async function untilStored(service, key, value) {
  await until(async () => await service.stored(key) === value, `${key} to be ${value}`);
}

test('the service holds another value', connected(async (settings, service) => {
  await service.command('hold');
  const rejected = assert.rejects(
      settings.setTiltSensitivity(37), { code: 'ERR_KORVU_NOT_TAKEN', stored: 50 });
  const undisputed = settings.setTopHoverClick(1);
  await untilStored(service, 'TiltSensitivity', '37');
  await service.command('announce TiltSensitivity 50');
  await service.command('release');
  await rejected;
  assert.equal(await undisputed, 1);
}));

test('the service holds another function of a button', connected(async (settings, service) => {
  const key = 'ButtonBTEraserEnd\\ButtonSingle\\ButtonFunction';
  await service.command('hold');
  const rejected = assert.rejects(settings.setEraserSinglePress({ function: 8 }), (error) =>
      error.code === 'ERR_KORVU_NOT_TAKEN' && error.stored.function === 4);
  await untilStored(service, key, '8');
  await service.command(`announce ${key} 4`);
  await service.command('release');
  await rejected;
}));

test('what a button or wedge has is not what was asked for', () => {
  const { setEraserSinglePress, setMenuOp } = setters;
  const keys = setEraserSinglePress.form({ function: 8, text: 'a' });
  assert.ok(keys.isTaken({ function: 8, name: 'x', text: 'a' }, {}));
  assert.ok(!keys.isTaken({ function: 8, name: 'x', text: 'b' }, {}));
  assert.ok(!keys.isTaken({ function: 3, name: 'x', text: 'a' }, {}));
  const application = setEraserSinglePress.form({ function: 23, text: 'Easel' });
  const stored = { function: 23, name: 'Easel', text: 'c:\\easel.exe' };
  assert.ok(!application.isTaken(stored, {}));
  assert.ok(application.isTaken(stored, { runAppOptions: [{ function: 88, name: 'Easel' }] }));
  const named = setMenuOp.form(0, { function: 3 }, 'Name');
  assert.ok(named.isTaken({ function: 3, name: 'Name' }, {}));
  assert.ok(!named.isTaken({ function: 3, name: 'Other' }, {}));
  assert.ok(setMenuOp.form(0, { function: 3 }, '').isTaken({ function: 3, name: 'Derived' }, {}));
});

test('the service refuses a message', connected(async (settings) => {
  const answer = settings.request('{"NoSuchKey":"1"}');
  const rejected = assert.rejects(settings.setTiltSensitivity(38), { code: 'ERR_KORVU_LOST' });
  assert.deepEqual(await answer, { requestPart: '1', value: '' });
  await rejected;
  await storesAgain(settings, 39);
}));

// The library comes back by itself; what is called while it does may still be lost.
async function storesAgain(settings, value) {
  for (;;) {
    try {
      assert.equal(await settings.setTiltSensitivity(value, { timeoutMs: 60_000 }), value);
      return;
    } catch (error) {
      assert.equal(error.code, 'ERR_KORVU_LOST');
    }
  }
}

test('the connection breaks before the service answers', connected(async (settings, service) => {
  await service.command('hold');
  const rejected = assert.rejects(settings.setTiltSensitivity(37), { code: 'ERR_KORVU_LOST' });
  await untilStored(service, 'TiltSensitivity', '37');
  await service.command('drop');
  await service.command('release');
  await rejected;
}));

test('the service does not answer in time', connected(async (settings, service) => {
  await service.command('mute');
  await Promise.all([
    assert.rejects(
        settings.setTiltSensitivity(37, { timeoutMs: 20 }), { code: 'ERR_KORVU_TIMED_OUT' }),
    assert.rejects(
        settings.request('{"Connected":"?"}', { timeoutMs: 20 }), { code: 'ERR_KORVU_TIMED_OUT' }),
  ]);
  // The library gives its exchange up after two seconds, and connects anew.
  await service.command('unmute');
  await storesAgain(settings, 40);
}));

test('an object\'s own time-out counts where a call has none', connected(
    async (settings, service) => {
      await service.command('mute');
      await assert.rejects(settings.setTiltSensitivity(37), { code: 'ERR_KORVU_TIMED_OUT' });
      await service.command('unmute');
    }, { timeoutMs: 21 }));

test('the object is closed first', () => withService(async (service) => {
  const settings = new Settings();
  await settings.connect({ timeoutMs: 60_000 });
  await settings.ready({ timeoutMs: 60_000 });
  await service.command('mute');
  const outcomes = Promise.allSettled([
    settings.setTiltSensitivity(37), settings.ready(), settings.request('{"Connected":"?"}'),
    settings.read('MonitorOptionsList')]);
  await settings.close();
  for (const { reason } of await outcomes) assert.equal(reason?.code, 'ERR_KORVU_CLOSED');
}));

test('the object is closed while it waits for a service', async () => {
  const settings = new Settings();
  const rejected = assert.rejects(
      settings.connect({ timeoutMs: Infinity }), { code: 'ERR_KORVU_CLOSED' });
  await settings.close();
  await rejected;
});

test('the API version does not open it', async () => {
  const since = {
    setOpaqueModeEnabled: 1, setOpaqueModeOrientation: 1, setOpaqueModeInputMode: 1,
    setOpaqueModeMapping: 1, setOpaqueModeDisplayPath: 1, setMenuButtonLimit: 2,
    setOpaqueModeSetupState: 6, setOpaqueModeSetupSave: 6, setDockAlertTime: 7,
  };
  const parameters = {
    setOpaqueModeDisplayPath: ['path'], setMenuButtonLimit: [menuButtonId(0, 0), 1],
  };
  for (const apiVersion of [0, 1, 6, 8]) {
    await connected(async (settings) => {
      for (const [setter, least] of Object.entries(since)) {
        if (apiVersion >= least) continue;
        await assert.rejects(settings[setter](...parameters[setter] ?? [1]), {
          code: 'ERR_KORVU_API_VERSION',
        }, setter);
      }
      if (apiVersion < 2) {
        await assert.rejects(settings.setMenuOp(menuButtonId(1, 0), { function: 3 }), {
          code: 'ERR_KORVU_API_VERSION',
        });
      }
      for (const call of [
        settings.ready(), settings.read('key'), settings.request('{"Connected":"?"}')]) {
        await assert.rejects(call, { code: 'ERR_KORVU_API_VERSION' });
      }
    }, { apiVersion })();
  }
});

test('below API version 9 a change without an event is not confirmed in time', connected(
    async (settings, service) => {
      // A function that no other wedge has: the event does not tell which one it is about.
      const kFunction = -77;
      const changed = next(settings, 'radialWedgeEx', ({ function: code }) => code === kFunction);
      await service.command(`set ButtonRadialEast\\ButtonSingle\\ButtonFunction ${kFunction}`);
      await changed;
      await assert.rejects(
          settings.setMenuOp(menuButtonId(0, 0), { function: kFunction }, null, { timeoutMs: 30 }),
          { code: 'ERR_KORVU_TIMED_OUT' });
    }, { apiVersion: 8 }));

test('below API version 9 closing ends the wait for an event', () => withService(async (service) => {
  const settings = new Settings({ apiVersion: 8 });
  await settings.connect({ timeoutMs: 60_000 });
  await service.command('mute');
  const rejected = assert.rejects(
      settings.setMenuOp(menuButtonId(0, 0), { function: -99 }), { code: 'ERR_KORVU_CLOSED' });
  await settings.close();
  await rejected;
}));

test('objects of different API versions cannot be connected together', connected(async (first) => {
  const second = new Settings({ apiVersion: 3 });
  await assert.rejects(second.connect(), { code: 'ERR_KORVU_API_VERSION' });
  assert.equal(first.isConnected, true);
}));

test('arguments that are none name themselves', connected(async (settings, service) => {
  const id = menuButtonId(0, 0);
  const wrong = [
    [TypeError, /^value /, () => settings.setTiltSensitivity('37')],
    [TypeError, /^value /, () => settings.setTiltSensitivity()],
    [TypeError, /^value /, () => settings.setTiltSensitivity(true)],
    [RangeError, /^value /, () => settings.setTiltSensitivity(-1)],
    [RangeError, /^value /, () => settings.setTiltSensitivity(1.5)],
    [RangeError, /^value /, () => settings.setTiltSensitivity(NaN)],
    [RangeError, /^value /, () => settings.setTiltSensitivity(2 ** 31)],
    [RangeError, /^value /, () => settings.setMagnifierEnabled(2)],
    [RangeError, /^value /, () => settings.setDockAlertTime(35792)],
    [RangeError, /^value /, () => settings.setOpaqueModeOrientation(4)],
    [RangeError, /^value /, () => settings.setOpaqueModeInputMode(2)],
    [RangeError, /^value /, () => settings.setOpaqueModeMapping(2)],
    [RangeError, /^value /, () => settings.setOpaqueModeSetupState(3)],
    [TypeError, /^value /, () => settings.setEraserSinglePress(3)],
    [TypeError, /^value\.function /, () => settings.setEraserSinglePress({})],
    [RangeError, /^value\.function /, () => settings.setEraserSinglePress({ function: 2 ** 31 })],
    [TypeError, /^value\.text /, () => settings.setEraserSinglePress({ function: 8, text: 1 })],
    [RangeError, /^value\.text .*NUL/,
      () => settings.setEraserSinglePress({ function: 8, text: 'a\0b' })],
    [RangeError, /^value\.text /, () => settings.setEraserSinglePress({ function: 3, text: 'a' })],
    [RangeError, /^id /, () => settings.setMenuOp(-1, { function: 3 })],
    [RangeError, /^id /, () => settings.setMenuOp(menuButtonId(2, 0), { function: 3 })],
    [RangeError, /^id /, () => settings.setMenuOp(menuButtonId(1, 8), { function: 3 })],
    [TypeError, /^name /, () => settings.setMenuOp(id, { function: 3 }, 7)],
    [RangeError, /^name .*NUL/, () => settings.setMenuOp(id, { function: 3 }, '\0')],
    [RangeError, /^id /, () => settings.setMenuButtonLimit(menuButtonId(116, 0), 1)],
    [RangeError, /^limit /, () => settings.setMenuButtonLimit(id, 256)],
    [TypeError, /^value /, () => settings.setSlavedDisplayZoom(7)],
    [TypeError, /^value\.c /, () => settings.setSlavedDisplayZoom({ a: 1, b: 2, d: 4 })],
    [TypeError, /^path /, () => settings.setOpaqueModeDisplayPath(null)],
    [RangeError, /^path .*NUL/, () => settings.setOpaqueModeDisplayPath('a\0')],
    [TypeError, /^options /, () => settings.setTiltSensitivity(1, 1000)],
    [RangeError, /^options\.timeoutMs /, () => settings.setTiltSensitivity(1, { timeoutMs: -1 })],
    [RangeError, /^options\.timeoutMs /, () => settings.connect({ timeoutMs: NaN })],
    [TypeError, /^options\.timeoutMs /, () => settings.connect({ timeoutMs: '5' })],
    [TypeError, /^message /, () => settings.request(7)],
    [RangeError, /^message /, () => settings.request('\0')],
    [TypeError, /^key /, () => settings.read()],
    [RangeError, /^level /, () => settings.setLogLevel(4)],
    [RangeError, /^options\.apiVersion /, async () => new Settings({ apiVersion: 10 })],
    [RangeError, /^options\.watchIntervalMs /, async () => new Settings({ watchIntervalMs: 0 })],
    [RangeError, /^options\.watchIntervalMs .*API version/,
      async () => new Settings({ apiVersion: 8, watchIntervalMs: 5 })],
    [TypeError, /^options /, async () => new Settings(9)],
    [RangeError, /^menu /, async () => menuButtonId(256, 0)],
    [RangeError, /^button /, async () => menuButtonId(0, -1)],
    [TypeError, /^id /, async () => menuIndex('1')],
    [RangeError, /^id /, async () => buttonIndex(2 ** 32)],
  ];
  const before = await service.stored('TiltSensitivity');
  for (const [kind, message, call] of wrong) {
    await assert.rejects(call(), (error) => {
      assert.ok(error instanceof kind, `${error}`);
      assert.match(error.message, message);
      return true;
    });
  }
  assert.equal(await service.stored('TiltSensitivity'), before);
}));

test('identifiers of wedges come and go', () => {
  assert.equal(menuButtonId(1, 7), 0x10007);
  assert.equal(menuIndex(0xff01ff07), 1);
  assert.equal(buttonIndex(0xff01ff07), 7);
  assert.equal(menuButtonId(255, 255), 0xff00ff);
});
