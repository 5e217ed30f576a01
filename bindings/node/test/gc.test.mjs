// Garbage is collected at every moment, and nothing that is still needed goes.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Settings } from 'korvu-settings';
import processWide from '../lib/process.js';
import { connected, withService } from './support/fixture.mjs';
import { next, until } from './support/wait.mjs';

const collect = globalThis.gc;

test('garbage is collected between all steps', () => withService(async (service) => {
  assert.equal(typeof collect, 'function', 'run with --expose-gc');
  for (let round = 0; round < 3; ++round) {
    const settings = new Settings({ watchIntervalMs: 10 });
    collect();
    const connecting = settings.connect({ timeoutMs: 60_000 });
    collect();
    await connecting;
    settings.on('tiltSensitivity', (value) => { if (value % 5 === 0) collect(); });
    collect();
    const setting = settings.setTiltSensitivity(round + 20);
    collect();
    assert.equal(await setting, round + 20);
    const capture = settings.captureKeys();
    collect();
    await capture.finish();
    const request = settings.request('{"Connected":"?"}');
    collect();
    assert.equal((await request).value, '1');
    const done = next(settings, 'tiltSensitivity', (value) => value === 100);
    await service.command('burst TiltSensitivity 100');
    await done;
    const closing = settings.close();
    collect();
    await closing;
    collect();
  }
}));

test('garbage is collected all the time while values come', connected(
    async (settings, service) => {
      let isRunning = true;
      const turn = () => {
        collect();
        if (isRunning) setImmediate(turn);
      };
      turn();
      const done = next(settings, 'tiltSensitivity', (value) => value === 1000);
      await service.command('burst TiltSensitivity 1000');
      const stored = [];
      for (let value = 0; value < 20; ++value) stored.push(settings.setBatteryAlertDelay(value));
      await Promise.all(stored);
      await done;
      await until(() => settings.values.batteryAlertDelay === 19, 'the last step\'s announcement');
      isRunning = false;
    }));

test('an object that nobody holds goes on while it is connected', () =>
    withService(async (service) => {
      const seen = [];
      const close = await (async () => {
        const settings = new Settings();
        settings.on('tiltSensitivity', (value) => seen.push(value));
        await settings.connect({ timeoutMs: 60_000 });
        await settings.ready({ timeoutMs: 60_000 });
        return settings.close.bind(settings);
      })();
      for (let round = 0; round < 10; ++round) collect();
      await service.command('set TiltSensitivity 77');
      await until(() => seen.includes(77), 'the value');
      await close();
    }));

test('objects that are closed, or never connected, are collected', () => withService(async () => {
  let collected = 0;
  const registry = new FinalizationRegistry(() => ++collected);
  const kObjects = 50;
  for (let made = 0; made < kObjects; ++made) {
    const settings = new Settings();
    registry.register(settings);
    if (made % 5 === 0) {
      await settings.connect({ timeoutMs: 60_000 });
      await settings.close();
    }
  }
  await until(() => {
    collect();
    return collected >= kObjects - 1;
  }, 'the objects to be collected', () => collected);
  assert.equal(processWide.hub.openCount, 0);
}));
