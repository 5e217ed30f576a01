// Objects that share the connection; a service that goes, comes, stalls and talks nonsense.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Settings } from 'korvu-settings';
import processWide from '../lib/process.js';
import { connected, withService } from './support/fixture.mjs';
import { Service } from './support/service.mjs';
import { next, patience, pause, until } from './support/wait.mjs';

test('several objects share the connection, and each is told', connected(
    async (first, service) => {
      const second = new Settings();
      const seen = [];
      second.on('tiltSensitivity', (value) => seen.push(value));
      await second.connect();
      // What the first one has received is told the second one, once.
      assert.deepEqual(seen, [12]);
      const { radialWedgeEx, ...rest } = first.values;
      assert.deepEqual({ ...second.values, radialWedgeEx: undefined }, { ...rest, radialWedgeEx: undefined });

      const both = [next(first, 'tiltSensitivity'), next(second, 'tiltSensitivity')];
      assert.equal(await second.setTiltSensitivity(70), 70);
      assert.deepEqual(await Promise.all(both), [70, 70]);

      await second.close();
      const arrives = next(first, 'tiltSensitivity');
      await service.command('set TiltSensitivity 71');
      await arrives;
      assert.equal(seen.at(-1), 70);
      assert.equal(first.isConnected, true);
      assert.equal(await first.setTiltSensitivity(72), 72);
    }));

test('connect() and close() may be called again, and at once', () => withService(async () => {
  const settings = new Settings();
  await Promise.all([settings.connect({ timeoutMs: 60_000 }), settings.connect()]);
  await settings.connect();
  const closed = settings.close();
  await Promise.all([settings.connect({ timeoutMs: 60_000 }), closed]);
  assert.equal(await settings.setTiltSensitivity(5, { timeoutMs: 60_000 }), 5);
  await Promise.all([settings.close(), settings.close()]);
  await settings.close();
  assert.equal(settings.isConnected, false);
}));

test('objects that come and go while others connect', () => withService(async () => {
  const objects = Array.from({ length: 20 }, () => new Settings());
  const outcomes = await Promise.allSettled(objects.map(async (settings, index) => {
    const connecting = settings.connect({ timeoutMs: 60_000 });
    if (index % 3 === 0) await Promise.allSettled([connecting, settings.close()]);
    if (index % 3 === 1) await connecting.then(() => settings.close());
    await connecting;
  }));
  outcomes.forEach(({ reason }, index) => {
    assert.equal(reason?.code, index % 3 === 0 ? 'ERR_KORVU_CLOSED' : undefined);
  });
  const [, , last] = objects;
  assert.equal(await last.setTiltSensitivity(9, { timeoutMs: 60_000 }), 9);
  await Promise.all(objects.map((settings) => settings.close()));
  assert.equal(processWide.hub.openCount, 0);
}));

test('a service that comes up later is waited for', async () => {
  const settings = new Settings();
  const connecting = settings.connect({ timeoutMs: Infinity });
  await pause(50);
  const service = await Service.start();
  await connecting;
  assert.equal(await settings.setTiltSensitivity(8, { timeoutMs: 60_000 }), 8);
  await settings.close();
  await service.stop();
});

test('closing does not wait for what others wait for', async () => {
  const waiting = new Settings();
  const rejected = assert.rejects(
      waiting.connect({ timeoutMs: Infinity }), { code: 'ERR_KORVU_CLOSED' });
  const closing = new Settings();
  const early = assert.rejects(
      closing.connect({ timeoutMs: Infinity }), { code: 'ERR_KORVU_CLOSED' });
  await patience(closing.close(), 'the end of one object');
  await early;
  const closed = waiting.close();
  const again = closing.connect({ timeoutMs: Infinity });
  await patience(Promise.all([closed, rejected]), 'the end of the other');
  await Promise.all([assert.rejects(again, { code: 'ERR_KORVU_CLOSED' }), closing.close()]);
});

test('half a service takes no connection, and is none in time', () => withService(async (service) => {
  await service.command('only send-only');
  const settings = new Settings();
  await assert.rejects(settings.connect({ timeoutMs: 100 }), { code: 'ERR_KORVU_NO_SERVICE' });
  const connecting = settings.connect({ timeoutMs: Infinity });
  await service.command('only both');
  await connecting;
  await settings.close();
}));

// Setters are lost until the connection stands again; then they are confirmed.
async function storesAgain(settings, value) {
  await until(async () => {
    try {
      return await settings.setTiltSensitivity(value) === value;
    } catch (error) {
      assert.ok(['ERR_KORVU_LOST', 'ERR_KORVU_TIMED_OUT'].includes(error.code), error.code);
      return false;
    }
  }, 'the service to store again');
}

test('a service that is killed and started again is told, and its values come', async () => {
  let service = await Service.start();
  const settings = new Settings({ watchIntervalMs: 50 });
  const states = [];
  settings.on('connected', () => states.push('connected'));
  settings.on('lost', () => states.push('lost'));
  await settings.connect({ timeoutMs: 60_000 });
  await settings.ready({ timeoutMs: 60_000 });
  await settings.setTiltSensitivity(33);
  assert.deepEqual(states, ['connected']);

  const lost = next(settings, 'lost');
  await service.kill();
  await lost;
  assert.equal(settings.isConnected, true);

  const back = next(settings, 'connected');
  const value = next(settings, 'tiltSensitivity', (tilt) => tilt === 12);
  service = await Service.start();
  await Promise.all([back, value]);
  await storesAgain(settings, 34);
  assert.equal(states[0], 'connected');
  assert.ok(states.every((state, at) => at === 0 || state !== states[at - 1]), states.join());

  // And with the service away, the end is not waited for by anybody who does not want to.
  await settings.close();
  await service.stop();
});

test('a service that stalls is told, and its return', connected(async (settings, service) => {
  const lost = next(settings, 'lost');
  await service.command('mute');
  await lost;
  const back = next(settings, 'connected');
  await service.command('unmute');
  await back;
  await storesAgain(settings, 35);
}, { watchIntervalMs: 50 }));

test('a service that talks nonsense costs no more than what was asked of it', connected(
    async (settings, service) => {
      const lost = next(settings, 'lost');
      await service.command('garble');
      const outcome = await settings.setTiltSensitivity(36).catch(({ code }) => code);
      assert.equal(outcome, 'ERR_KORVU_LOST');
      await service.command('set TiltSensitivity 90');
      await service.command('raw {"}{":[":"}');
      await lost;
      const back = next(settings, 'connected');
      await service.command('ungarble');
      await back;
      await storesAgain(settings, 37);
    }, { watchIntervalMs: 50 }));

test('without an interval nobody is told of the connection', connected(
    async (settings, service) => {
      settings.on('lost', () => assert.fail('lost'));
      settings.on('connected', () => assert.fail('connected'));
      await service.command('drop');
      await storesAgain(settings, 38);
    }));

test('replies in pieces mean the same', connected(async (settings, service) => {
  await service.command('split');
  assert.equal(await settings.setTiltSensitivity(39), 39);
  const path = 'y'.repeat(5000);
  assert.equal(await settings.setOpaqueModeDisplayPath(path), path);
}));

test('the log level is taken with and without a connection', async () => {
  const settings = new Settings();
  await settings.setLogLevel(3);
  await withService(async () => {
    await settings.connect({ timeoutMs: 60_000 });
    await settings.setLogLevel(3);
    await settings.close();
  });
});
