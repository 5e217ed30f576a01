// A program that ends in the state that its argument names, while other things go on.
// Run by process.test.mjs.

import { setTimeout as pause } from 'node:timers/promises';
import { Settings } from 'korvu-settings';

const kEndCode = 7;

const settings = new Settings({ watchIntervalMs: 20 });
const connect = () => settings.connect({ timeoutMs: 60_000 });
const ignore = (promise) => promise.catch(() => {});
const end = () => process.exit(kEndCode);

// Those that end by themselves end with 0.
const states = {
  'loaded': end,
  'connecting without a service': async () => {
    ignore(settings.connect({ timeoutMs: Infinity }));
    await pause(50);
    end();
  },
  'connecting': () => {
    ignore(connect());
    setImmediate(end);
  },
  'connected': async () => {
    await connect();
    end();
  },
  'in a listener': async () => {
    settings.on('tiltSensitivity', end);
    await connect();
    await pause(60_000);
  },
  'while values come': async () => {
    await connect();
    await settings.ready({ timeoutMs: 60_000 });
    let count = 0;
    settings.on('tiltSensitivity', () => {
      if (++count === 100) end();
    });
    for (let value = 0; value < 1000; ++value) ignore(settings.setTiltSensitivity(value));
    await pause(60_000);
  },
  'while setters wait': async () => {
    await connect();
    for (let value = 0; value < 500; ++value) ignore(settings.setTiltSensitivity(value));
    end();
  },
  'while closing': async () => {
    await connect();
    ignore(settings.close());
    setImmediate(end);
  },
  'closed': async () => {
    await connect();
    await settings.close();
    end();
  },
  'while capturing': async () => {
    await connect();
    settings.captureKeys().next();
    await pause(20);
    end();
  },
  'by an exception': async () => {
    await connect();
    process.on('uncaughtException', end);
    settings.on('tiltSensitivity', () => { throw new Error('on purpose'); });
    await settings.setTiltSensitivity(3, { timeoutMs: 60_000 });
    await pause(60_000);
  },
  'in an exit handler': async () => {
    await connect();
    process.on('exit', () => {
      ignore(settings.close());
      ignore(settings.setTiltSensitivity(1));
      settings.on('tiltSensitivity', () => {});
    });
    end();
  },
  'by itself, closed': async () => {
    await connect();
    await settings.setTiltSensitivity(4, { timeoutMs: 60_000 });
    await settings.close();
  },
  'by itself, never connected': () => {},
  'by itself, without a service': async () => {
    await ignore(settings.connect({ timeoutMs: 10 }));
  },
  'by itself, without a service, after the log level was taken': async () => {
    await settings.setLogLevel(0);
    await settings.setLogLevel(0);
  },
  'by itself, unreferenced': async () => {
    await connect();
    await settings.ready({ timeoutMs: 60_000 });
    settings.unref();
  },
  'by itself, unreferenced before': async () => {
    settings.unref();
    ignore(connect());
  },
  'by itself, with setters that wait': async () => {
    settings.unref();
    const held = new Settings();
    await held.connect({ timeoutMs: 60_000 });
    ignore(held.setTiltSensitivity(5));
    held.unref();
  },
};

await states[process.argv[2]]();
