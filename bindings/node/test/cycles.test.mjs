// A thousand connects and closes, each of them the whole way, and what they leave behind: nothing.
// Each takes the library a tenth of a second to shut down, so these run beside all other files.

import assert from 'node:assert/strict';
import { readdirSync } from 'node:fs';
import { test } from 'node:test';
import { Settings } from 'korvu-settings';
import processWide from '../lib/process.js';
import { withService } from './support/fixture.mjs';
import { next } from './support/wait.mjs';

const kCycles = 1000;
const kGrowthLimit = 3 * 1024 * 1024;  // bytes in 600 cycles: 5 kB a cycle would be found

// Wine shows the system that it runs on; Windows has no such folder.
function threadCount() {
  try {
    return readdirSync('Z:\\proc\\self\\task').length;
  } catch {
    return 0;
  }
}

function usage() {
  for (let round = 0; round < 3; ++round) globalThis.gc();
  const { rss, heapUsed, external } = process.memoryUsage();
  return { rss, heapUsed, external, threads: threadCount() };
}

test('a thousand connects and closes leave nothing behind', (t) => withService(async () => {
  const used = [];
  for (let cycle = 0; cycle < kCycles; ++cycle) {
    const settings = new Settings();
    const arrives = cycle % 3 === 1 ? next(settings, 'tiltSensitivity') : undefined;
    await settings.connect({ timeoutMs: 60_000 });
    // Closed before the first values, among them, and after them.
    await arrives;
    if (cycle % 3 === 2) await settings.setTiltSensitivity(cycle, { timeoutMs: 60_000 });
    await settings.close();
    if (cycle % 100 === 99) {
      assert.equal(processWide.hub.openCount, 0);
      used.push(usage());
    }
  }
  const [before, after] = [used[3], used.at(-1)];
  const growth = Object.fromEntries(
      Object.keys(after).map((name) => [name, after[name] - before[name]]));
  t.diagnostic(`measured: growth in 600 cycles: ${JSON.stringify(growth)}`);
  assert.ok(growth.heapUsed < kGrowthLimit, JSON.stringify(used));
  assert.ok(growth.external < kGrowthLimit, JSON.stringify(used));
  assert.ok(growth.rss < 10 * kGrowthLimit, JSON.stringify(used));
  assert.ok(growth.threads <= 1, JSON.stringify(used));
}));
