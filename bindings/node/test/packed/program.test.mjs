// The package as it is installed from its tarball, in a project that has nothing else.

import assert from 'node:assert/strict';
import { existsSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { run } from '../support/child.mjs';
import { withService } from '../support/fixture.mjs';

const project = process.env.KORVU_PROJECT;
const installed = join(project, 'node_modules', 'korvu-settings');

function blockOf(page, language) {
  return new RegExp(`^\`\`\`${language}\\n(.*?)^\`\`\`$`, 'ms').exec(page)[1];
}

test('the README\'s program runs', () => withService(async () => {
  const readme = readFileSync(join(installed, 'README.md'), 'utf8').replaceAll('\r\n', '\n');
  writeFileSync(join(project, 'program.mjs'), blockOf(readme, 'js'));
  const { code, output } = await run([join(project, 'program.mjs')]);
  assert.equal(code, 0, output);
  assert.match(output, /^37$/m);
}));

test('require has the same module as import', () => withService(async () => {
  writeFileSync(join(project, 'both.cjs'), `
    const { Settings } = require('korvu-settings');
    import('korvu-settings').then((module) => console.log(module.Settings === Settings));
  `);
  const { code, output } = await run([join(project, 'both.cjs')]);
  assert.equal(code, 0, output);
  assert.match(output, /^true$/m);
}));

test('the package has what its user needs, and no more', () => {
  for (const file of ['README.md', 'LICENSE', 'index.d.ts', 'index.mjs', 'lib/index.js',
                      'example/main.mjs', 'third-party/mingw-w64-x86-64-dev.txt',
                      'bin/win32-x64/korvu_settings.node',
                      'bin/win32-x64/KorvuTabletSettingsAPI.dll']) {
    assert.ok(existsSync(join(installed, file)), file);
  }
  for (const file of ['src', 'test', 'node_modules', 'CMakeLists.txt', 'scripts']) {
    assert.ok(!existsSync(join(installed, file)), file);
  }
});
