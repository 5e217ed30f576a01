// The process that has the package: how it ends, what keeps it, what its program is called.

import assert from 'node:assert/strict';
import { linkSync, readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { Worker } from 'node:worker_threads';
import * as korvu from 'korvu-settings';
import { run } from './support/child.mjs';
import { withService } from './support/fixture.mjs';

const here = (file) => fileURLToPath(new URL(file, import.meta.url));
const endsProgram = here('support/ends.mjs');
const states = [...readFileSync(endsProgram, 'utf8').matchAll(/^  '(.*)': /gm)].map(([, name]) => name);

const needsNoService = (state) => state.includes('without a service');

async function assertEnds(state) {
  const { code, output } = await run([endsProgram, state]);
  assert.equal(output, '', state);
  assert.equal(code, state.startsWith('by itself') ? 0 : 7, state);
}

test('a process ends in every state', () => withService(async () => {
  const left = states.filter((state) => !needsNoService(state));
  assert.ok(left.length > 12);
  const someInARow = async () => {
    while (left.length > 0) await assertEnds(left.shift());
  };
  await Promise.all([someInARow(), someInARow(), someInARow()]);
}));

test('a process ends in every state that has no service', async () => {
  await Promise.all(states.filter(needsNoService).map(assertEnds));
});

test('a process whose program has another name has the package, too', () =>
    withService(async () => {
      const program = join(process.env.KORVU_WORK, `another-program-${process.pid}.exe`);
      linkSync(process.execPath, program);
      const { code, output } = await run([endsProgram, 'by itself, closed'], { program });
      assert.equal(code, 0, output);
    }));

test('the addon imports no function of a program', () => {
  const addon = readFileSync(here('../bin/win32-x64/korvu_settings.node'), 'latin1');
  assert.ok(!/node\.exe|electron\.exe|KorvuTabletSettingsAPI\.dll\0.*KERNEL32/i.test(addon));
});

test('a worker thread is refused with the reason', async () => {
  const worker = new Worker(`
    const { parentPort } = require('worker_threads');
    const attempts = [];
    try { require(${JSON.stringify(here('../lib/index.js'))}); } catch ({ code }) { attempts.push(code); }
    // And so is one that goes around the package's own check.
    try {
      require(${JSON.stringify(here('../bin/win32-x64/korvu_settings.node'))});
    } catch ({ code }) { attempts.push(code); }
    parentPort.postMessage(attempts);
  `, { eval: true });
  const attempts = await new Promise((resolve, reject) => {
    worker.on('message', resolve).on('error', reject);
  });
  assert.deepEqual(attempts, ['ERR_KORVU_WORKER_THREAD', 'ERR_KORVU_WORKER_THREAD']);
  await worker.terminate();
});

test('modules that are loaded twice share the connection', () => withService(async () => {
  const require = createRequire(import.meta.url);
  for (const file of Object.keys(require.cache)) {
    if (!file.endsWith('.node')) delete require.cache[file];
  }
  delete require.cache[here('../bin/win32-x64/korvu_settings.node')];
  const again = require('korvu-settings');
  assert.notEqual(again.Settings, korvu.Settings);
  const [first, second] = [new korvu.Settings(), new again.Settings()];
  await Promise.all([first.connect({ timeoutMs: 60_000 }), second.connect({ timeoutMs: 60_000 })]);
  assert.equal(await second.setTiltSensitivity(15, { timeoutMs: 60_000 }), 15);
  await first.close();
  assert.equal(await second.setTiltSensitivity(16), 16);
  await second.close();
}));
