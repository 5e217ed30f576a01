'use strict';
// Loads the addon. Its functions return at once:
//
//   nextNumber()                        a number for a registration, request or task
//   start(onLetters)                    called when letters have come
//   take(fieldLimit, mayEnd)            letters: [kind, address, fields]; see hub.js. If there are none
//                                       and mayEnd is true, the next one calls onLetters again
//   hold(isHeld)                        whether the addon keeps the process alive
//   buildMenuButtonId(menu, button), getMenuIndex(id), getButtonIndex(id)
//   sendManual(request, message)        answered by a letter
//
// and these tell their end by a letter. All but connect() run in the order of the calls:
//
//   setApiVersion(task, version), setLogLevel(task, level)
//   register(task, registration), unregister(task, registration)
//   connect(task, timeoutMs)            its letter has the result
//   shutdown(task)
//   set(task, name of the export, its arguments...)
//   finishKeyCapture(task)              its letter has the sequence

const { isMainThread } = require('worker_threads');
const { KorvuError } = require('./errors.js');

function load() {
  if (process.platform !== 'win32' || process.arch !== 'x64') {
    throw new KorvuError(
        'ERR_KORVU_PLATFORM',
        `korvu-settings is for 64-bit Windows, not for ${process.platform} on ${process.arch}`);
  }
  if (!isMainThread) {
    throw new KorvuError(
        'ERR_KORVU_WORKER_THREAD',
        'korvu-settings cannot be used in a worker thread: the library and its connection are one ' +
            'for the process. Use it on the main thread and post its values to the worker.');
  }
  return require('../bin/win32-x64/korvu_settings.node');
}

module.exports = load();
