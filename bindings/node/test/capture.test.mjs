// What the user types, as an async iterator.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Settings } from 'korvu-settings';
import { connected, withService } from './support/fixture.mjs';
import { until } from './support/wait.mjs';

const kSwitch = String.raw`ComponentsDriver\BTButtonHandler\KeystrokeCapture`;

async function isCapturing(settings) {
  return await settings.read(kSwitch) === '1';
}

test('the loop gets each text, and the sequence comes at the end', connected(
    async (settings, service) => {
      const capture = settings.captureKeys();
      await until(() => isCapturing(settings), 'the capture');
      const seen = [];
      await service.command('type Ctrl+A');
      for await (const text of capture) {
        seen.push(text);
        if (seen.length === 3) break;
        await service.command(seen.length === 1 ? 'type Ctrl+B' : 'type <Ctrl>+"\u{1f58a}"');
      }
      assert.deepEqual(seen, ['Ctrl+A', 'Ctrl+B', '<Ctrl>+"\u{1f58a}"']);
      assert.equal(await capture.finish(), '&lt;Ctrl&gt;+&quot;\u{1f58a}&quot;');
      assert.equal(await capture.finish(), await capture.finish());
      assert.equal(await isCapturing(settings), false);
      assert.deepEqual(await capture.next(), { value: undefined, done: true });
    }));

test('finish() ends a loop that waits', connected(async (settings, service) => {
  const capture = settings.captureKeys();
  await until(() => isCapturing(settings), 'the capture');
  const loop = (async () => {
    const seen = [];
    for await (const text of capture) seen.push(text);
    return seen;
  })();
  assert.equal(await capture.finish(), '');
  assert.deepEqual(await loop, []);
  assert.equal(await isCapturing(settings), false);
}));

test('texts that come faster than they are taken are kept', connected(async (settings, service) => {
  const capture = settings.captureKeys();
  await until(() => isCapturing(settings), 'the capture');
  for (const key of ['a', 'b', 'c']) await service.command(`type ${key}`);
  const seen = [];
  for await (const text of capture) {
    seen.push(text);
    if (text === 'c') break;
  }
  assert.deepEqual(seen, ['a', 'b', 'c']);
  assert.equal(await capture.finish(), 'c');
}));

test('what an earlier capture left is not the next one\'s', connected(async (settings, service) => {
  const first = settings.captureKeys();
  await until(() => isCapturing(settings), 'the capture');
  await service.command('type old');
  assert.deepEqual(await first.next(), { value: 'old', done: false });
  await first.finish();
  const second = settings.captureKeys();
  await until(() => isCapturing(settings), 'the capture');
  assert.equal(await second.finish(), '');
}));

test('keys are captured once at a time', connected(async (settings) => {
  const capture = settings.captureKeys();
  assert.throws(() => settings.captureKeys(), { code: 'ERR_KORVU_BUSY' });
  await capture.finish();
  await settings.captureKeys().finish();
}));

test('a captured sequence is set as a button\'s function', connected(async (settings, service) => {
  const capture = settings.captureKeys();
  await until(() => isCapturing(settings), 'the capture');
  await service.command('type Shift+F2');
  await capture.next();
  const text = await capture.finish();
  assert.equal((await settings.setEraserLongPress({ function: 8, text })).text, 'Shift+F2');
}));

test('close() and a loss end a capture with the reason', () => withService(async (service) => {
  for (const [end, code] of [
    [(settings) => settings.close(), 'ERR_KORVU_CLOSED'],
    [() => service.command('mute'), 'ERR_KORVU_LOST']]) {
    const settings = new Settings({ watchIntervalMs: 50 });
    await settings.connect({ timeoutMs: 60_000 });
    await settings.ready({ timeoutMs: 60_000 });
    const capture = settings.captureKeys();
    await until(() => isCapturing(settings), 'the capture');
    const rejected = assert.rejects(capture.next(), { code });
    await end(settings);
    await rejected;
    await assert.rejects(capture.next(), { code });
    await assert.rejects(capture.finish(), { code });
    await service.command('unmute');
    await settings.close();
  }
}));

test('a capture that the service does not confirm fails', connected(async (settings, service) => {
  await service.command('mute');
  const capture = settings.captureKeys({ timeoutMs: 30 });
  await assert.rejects(capture.next(), { code: 'ERR_KORVU_TIMED_OUT' });
  await service.command('unmute');
}));

test('below API version 9 keys are captured, too', connected(async (settings, service) => {
  const capture = settings.captureKeys();
  // Refused until the service has been told of the capture.
  await until(() => service.command('type Ctrl+Z').then(() => true, () => false), 'the capture');
  assert.deepEqual(await capture.next(), { value: 'Ctrl+Z', done: false });
  await capture.finish();
}, { apiVersion: 8 }));
