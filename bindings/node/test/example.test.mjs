// The example's main module, with doubles of Electron's parts.

import assert from 'node:assert/strict';
import { EventEmitter, once } from 'node:events';
import { test } from 'node:test';
import { Settings } from 'korvu-settings';
import { shareSettings } from '../example/main.mjs';
import { Service } from './support/service.mjs';
import { withService } from './support/fixture.mjs';
import { patience } from './support/wait.mjs';

class IpcMain {
  #handlers = new Map();

  handle(channel, handler) {
    this.#handlers.set(channel, handler);
  }

  // As in Electron, what passes between processes is a copy.
  async invoke(channel, ...parameters) {
    return structuredClone(await this.#handlers.get(channel)({}, ...structuredClone(parameters)));
  }
}

class Window extends EventEmitter {
  #isDestroyed = false;
  messages = new EventEmitter();

  webContents = {
    send: (channel, name, value) => {
      assert.equal(channel, 'korvu:event');
      assert.ok(!this.#isDestroyed, 'sent to a window that is gone');
      this.messages.emit(name, structuredClone(value));
    },
  };

  isDestroyed() {
    return this.#isDestroyed;
  }

  destroy() {
    this.#isDestroyed = true;
    this.emit('closed');
  }
}

test('windows get events, and set', () => withService(async (service) => {
  const ipcMain = new IpcMain();
  const shared = shareSettings(ipcMain);
  const window = new Window();
  const gone = new Window();
  shared.addWindow(window);
  shared.addWindow(gone);
  const arrives = once(window.messages, 'tiltSensitivity');
  await patience(shared.connected, 'the connection');
  assert.deepEqual(await patience(arrives, 'the first value'), [12]);
  await shared.settings.ready({ timeoutMs: 60_000 });
  gone.destroy();

  const changed = once(window.messages, 'tiltSensitivity');
  assert.deepEqual(await ipcMain.invoke('korvu:set', 'setTiltSensitivity', 21), { stored: 21 });
  assert.deepEqual(await changed, [21]);
  assert.equal(await service.stored('TiltSensitivity'), '21');

  const later = await ipcMain.invoke('korvu:values');
  assert.equal(later.isServiceThere, true);
  assert.equal(later.values.tiltSensitivity, 21);
  assert.equal(typeof later.values.eraserSingle.name, 'string');

  const { error } = await ipcMain.invoke('korvu:set', 'setTiltSensitivity', -1);
  assert.match(error.message, /^value /);
  assert.match((await ipcMain.invoke('korvu:set', 'close')).error.message, /no setter/);
  await shared.close();
  assert.equal(
      (await ipcMain.invoke('korvu:set', 'setTiltSensitivity', 1)).error.code,
      'ERR_KORVU_NOT_CONNECTED');
}));

test('windows are told that the service goes and comes back', async () => {
  let service = await Service.start();
  const shared = shareSettings(new IpcMain(), new Settings({ watchIntervalMs: 50 }));
  const window = new Window();
  shared.addWindow(window);
  const states = [];
  window.messages.on('isServiceThere', (isThere) => states.push(isThere));
  await patience(shared.connected, 'the connection');
  const lost = once(window.messages, 'isServiceThere');
  await service.kill();
  assert.deepEqual(await patience(lost, 'the loss'), [false]);
  const back = once(window.messages, 'isServiceThere');
  service = await Service.start();
  assert.deepEqual(await patience(back, 'the return'), [true]);
  assert.deepEqual(states, [true, false, true]);
  await shared.close();
  await service.stop();
});

test('closing ends the wait for a service', async () => {
  const shared = shareSettings(new IpcMain());
  await shared.close();
  await shared.connected;
});
