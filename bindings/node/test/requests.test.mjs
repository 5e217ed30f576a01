// Manual requests, and reading what no event tells.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Settings, menuButtonId } from 'korvu-settings';
import { connected, withService } from './support/fixture.mjs';

const kTilt = String.raw`ComponentsDriver\PenHandler\PenTransducer\TiltSensitivity`;

test('a message of one\'s own is answered', connected(async (settings, service) => {
  assert.deepEqual(
      await settings.request('{"Connected":"?"}'), { requestPart: '?', value: '1' });
  const doubled = kTilt.replaceAll('\\', '\\\\');
  assert.deepEqual(await settings.request(`{"${doubled}":"44"}`), { requestPart: '44', value: '1' });
  assert.deepEqual(
      await settings.request(`{"GetVal":"${doubled}"}`), { requestPart: doubled, value: '44' });
  assert.equal(await service.stored('TiltSensitivity'), '44');
}));

test('a value is read by its key, with single backslashes and with double ones', connected(
    async (settings) => {
      await settings.setTiltSensitivity(45);
      assert.equal(await settings.read(kTilt), '45');
      assert.equal(await settings.read(kTilt.replaceAll('\\', '\\\\')), '45');
      assert.equal(await settings.read('NoSuchKey'), '');
      // The connection stands after that.
      assert.equal(await settings.setTiltSensitivity(46), 46);
    }));

test('a wedge\'s text is read though no event tells it', connected(async (settings) => {
  await settings.setMenuOp(menuButtonId(1, 2), { function: 8, text: 'F5' }, 'Refresh');
  const place = String.raw`ComponentsDriver\PenHandler\PenTransducer\RadialMenuHandler` +
      String.raw`\ButtonRadialSouth2\ButtonSingle`;
  assert.equal(await settings.read(String.raw`${place}\ButtonFunctionKeystrokes`), 'F5');
  assert.equal(await settings.read(String.raw`${place}\ButtonFunctionName`), 'Refresh');
}));

test('texts come back with their lone surrogates', connected(async (settings) => {
  const text = 'a\ud800b\udfff\u{1f58a}';
  await settings.setEraserSinglePress({ function: 8, text });
  const key = String.raw`ComponentsDriver\BTButtonHandler\ButtonBTEraserEnd\ButtonSingle` +
      String.raw`\ButtonFunctionKeystrokes`;
  assert.equal(await settings.read(key), text);
}));

test('a request with the text of the package\'s own does not confirm a change too early', connected(
    async (settings, service) => {
      const fence = String.raw`{"GetVal":"ComponentsDriver\\ShowHoverClickUI"}`;
      const all = [];
      for (let value = 1; value <= 50; ++value) {
        all.push(settings.request(fence));
        all.push(settings.setTiltSensitivity(value).then(async (stored) => {
          assert.ok(stored >= value && stored <= 50, `${stored}`);
        }));
      }
      const answers = await Promise.all(all);
      assert.equal(answers[0].value, '1');
      assert.equal(await service.stored('TiltSensitivity'), '50');
    }));

test('ready waits for all values of the connection', () => withService(async (service) => {
  await service.command('delay 2');
  const settings = new Settings();
  await settings.connect({ timeoutMs: 60_000 });
  await settings.ready({ timeoutMs: 60_000 });
  for (const name of ['versions', 'tiltSensitivity', 'radialWedgeEx', 'magnifierEnabled',
                      'monitorOptions', 'autoUndockOptions', 'undockedTimerWait']) {
    assert.ok(name in settings.values, name);
  }
  await settings.close();
}));

test('a setter called right after connect() meets the values that are being asked for', () =>
    withService(async (service) => {
      await service.command('delay 1');
      const settings = new Settings();
      await settings.connect({ timeoutMs: 60_000 });
      assert.equal(await settings.setTiltSensitivity(61, { timeoutMs: 60_000 }), 61);
      await settings.close();
    }));
