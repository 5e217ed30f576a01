// What listeners may do: call setters, close, throw.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Settings } from 'korvu-settings';
import { connected, withService } from './support/fixture.mjs';
import { next, until } from './support/wait.mjs';

test('setters are called and awaited in listeners', connected(async (settings, service) => {
  const outcomes = [];
  let highest = 0;
  settings.on('tiltSensitivity', (value) => {
    // Once for each value: the announcement behind a receipt would begin a second chain.
    if (value > highest && value < 60) outcomes.push(settings.setTiltSensitivity(value + 1));
    highest = Math.max(highest, value);
    outcomes.push(settings.setTipSensitivity(value % 7));
  });
  settings.on('pressureCurve', async (value) => {
    const stored = settings.setEraserSinglePress({ function: value });
    outcomes.push(stored);
    await stored;
    outcomes.push(settings.setMagnifierEnabled(value % 2));
  });
  const done = next(settings, 'tiltSensitivity', (value) => value === 60);
  await service.command('set TiltSensitivity 30');
  await done;
  // The announcements of all steps come behind; what they would set is not of interest any more.
  settings.removeAllListeners();
  let count;
  do {
    count = outcomes.length;
    await Promise.all(outcomes);
  } while (outcomes.length > count);
  assert.equal(await service.stored('TiltSensitivity'), '60');
  assert.ok(outcomes.length > 100);
}));

test('an object is closed in its own listener, and hears no more', () =>
    withService(async (service) => {
      const settings = new Settings();
      let closed;
      let later = 0;
      settings.on('tiltSensitivity', () => {
        if (closed) ++later;
        closed ??= settings.close();
      });
      await assert.doesNotReject(settings.connect({ timeoutMs: 60_000 }).catch(({ code }) =>
          assert.equal(code, 'ERR_KORVU_CLOSED')));
      await until(() => closed !== undefined, 'the first value');
      await service.command('burst TiltSensitivity 100');
      await closed;
      assert.equal(later, 0);
    }));

test('what a listener throws is an uncaught exception, and nothing is lost by it', connected(
    async (settings, service) => {
      const listeners = process.listeners('uncaughtException');
      process.removeAllListeners('uncaughtException');
      const caught = [];
      process.on('uncaughtException', (error) => caught.push(error.message));
      try {
        const seen = [];
        settings.on('tiltSensitivity', (value) => {
          seen.push(value);
          throw new Error(`thrown at ${value}`);
        });
        await service.command('burst TiltSensitivity 50');
        await until(() => seen.includes(50), 'the last value', () => seen.length);
        assert.equal(await settings.setTiltSensitivity(51), 51);
        await until(() => seen.includes(51), 'the value after it', () => seen.length);
        assert.deepEqual(caught.slice(0, 2), ['thrown at 1', 'thrown at 2']);
        assert.equal(caught.length, seen.length);
      } finally {
        process.removeAllListeners('uncaughtException');
        for (const listener of listeners) process.on('uncaughtException', listener);
        settings.removeAllListeners();
      }
    }));

test('listeners come and go inside listeners', connected(async (settings, service) => {
  let calls = 0;
  const once = () => {
    ++calls;
    settings.removeListener('tiltSensitivity', once);
    settings.once('tiltSensitivity', () => ++calls);
  };
  settings.on('tiltSensitivity', once);
  const done = next(settings, 'tiltSensitivity', (value) => value === 20);
  await service.command('burst TiltSensitivity 20');
  await done;
  assert.equal(calls, 2);
}));
