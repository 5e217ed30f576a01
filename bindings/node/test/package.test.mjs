// What the package says of itself agrees: tables, header, declarations, version.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import * as korvu from 'korvu-settings';
import eventTable from '../lib/events.js';
import native from '../lib/native.js';
import setterTable from '../lib/setters.js';

const { events } = eventTable;
const { setters } = setterTable;
const read = (file) => readFileSync(new URL(file, import.meta.url), 'utf8');

const header = read('../../../include/KorvuTabletSettingsAPI.h');
const declarations = read('../index.d.ts');
const usesAll = read('types/uses_all.mts');
const decapitalized = (name) => name[0].toLowerCase() + name.slice(1);

const exported = [...header.matchAll(/KORVUISD_CALL (KorvuISD_\w+)\(/g)].map(([, name]) => name);

test('the events are the header\'s callbacks, in its order', () => {
  const record = /typedef struct KorvuISD_Callbacks \{(.*?)\} KorvuISD_Callbacks;/s.exec(header)[1];
  const callbacks = [...record.matchAll(/^  KorvuISD_\w+ On(\w+);/gm)].map(([, name]) => name);
  assert.equal(callbacks.length, 41);
  assert.deepEqual(events.map(({ name }) => name), callbacks.map(decapitalized));
});

test('the setters are the header\'s functions', () => {
  assert.equal(exported.length, 38);
  const others = {
    SetLogLevel: 'setLogLevel', SetAPIVersion: 'setApiVersion', RegisterCallbacks: 'register',
    Connect: 'connect', Shutdown: 'shutdown', SendManual: 'sendManual',
    BuildMenuButtonId: 'buildMenuButtonId', GetMenuIndex: 'getMenuIndex',
    GetButtonIndex: 'getButtonIndex', FinishKeyCapture: 'finishKeyCapture',
  };
  const names = exported.map((name) => name.slice('KorvuISD_'.length));
  for (const name of Object.keys(others)) assert.equal(typeof native[others[name]], 'function', name);
  assert.deepEqual(
      names.filter((name) => !(name in others) && name !== 'StartKeyCapture')
          .map(decapitalized).sort(),
      Object.keys(setters).sort());
  for (const name of Object.keys(setters)) {
    assert.equal(typeof korvu.Settings.prototype[name], 'function', name);
  }
});

test('all that there is, is declared, documented and used by the program that is compiled', () => {
  for (const { name } of events) {
    assert.match(declarations, new RegExp(`\\*/\\n  ${name}: `), name);
    assert.match(usesAll, new RegExp(`'${name}'`), name);
  }
  const methods = Object.getOwnPropertyNames(korvu.Settings.prototype)
      .filter((name) => name !== 'constructor');
  for (const name of methods) {
    assert.match(declarations, new RegExp(`\\*/\\n  (readonly )?${name}[(:]`), name);
    assert.match(usesAll, new RegExp(`\\.${name}\\b`), name);
  }
  for (const name of Object.keys(korvu)) {
    assert.match(declarations, new RegExp(`\\*/\\nexport (class|function|const) ${name}\\b`), name);
    assert.match(usesAll, new RegExp(`\\b${name}\\b`), name);
  }
  const declared = [...declarations.matchAll(/^export (?:interface|type|class) (\w+)/gm)];
  for (const [, name] of declared) assert.match(usesAll, new RegExp(`\\b${name}\\b`), name);
});

test('each code that is thrown is declared and in the README, and each of those is thrown', () => {
  const files = ['arguments', 'capture', 'connection', 'event_receipts', 'native', 'receipts', 'settings'];
  const sources = files.map((name) => read(`../lib/${name}.js`)).join('') + read('../src/addon.cpp');
  const codesIn = (text) => [...new Set(text.match(/ERR_KORVU_\w+/g))].sort();
  assert.deepEqual(codesIn(sources), codesIn(declarations));
  assert.deepEqual(codesIn(read('../README.md')), codesIn(declarations));
});

test('the package\'s version is the project\'s', () => {
  const [, version] = /project\(.*?VERSION (\S+)/s.exec(read('../../../CMakeLists.txt'));
  assert.equal(JSON.parse(read('../package.json')).version, version);
  const lock = JSON.parse(read('../package-lock.json'));
  assert.deepEqual([lock.version, lock.packages[''].version], [version, version]);
});

test('other systems are refused with the reason', () => {
  const source = read('../lib/native.js');
  const load = (platform, arch) => {
    const module = {};
    const process = { platform, arch };
    const require = (name) => name === 'worker_threads' ?
        { isMainThread: true } :
        name === './errors.js' ? { KorvuError: korvu.KorvuError } : assert.fail(name);
    new Function('require', 'module', 'process', source)(require, module, process);
  };
  for (const [platform, arch] of [['linux', 'x64'], ['win32', 'arm64'], ['win32', 'ia32']]) {
    assert.throws(() => load(platform, arch), { code: 'ERR_KORVU_PLATFORM' });
  }
});
