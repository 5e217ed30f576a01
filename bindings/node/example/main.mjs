// The main module of an Electron application: it shares the tablet's settings with its windows.
//
// Windows get every event as a message 'korvu:event', and call setters by 'korvu:set'. What they may
// call is listed: a window is not to be trusted with more than it shows.

import { Settings } from 'korvu-settings';

const kForwarded = ['tiltSensitivity', 'pressureCurve', 'eraserSingle', 'upperSideSwitch', 'penInfo'];
const kSetters = ['setTiltSensitivity', 'setTipSensitivity', 'setEraserSinglePress'];

// `ipcMain` is Electron's. Returns the object's settings, and what to call for each new window.
export function shareSettings(ipcMain, settings = new Settings({ watchIntervalMs: 5000 })) {
  const windows = new Set();
  let isServiceThere = false;

  const tell = (name, value) => {
    // A message to a window that has gone throws.
    for (const window of windows) {
      if (!window.isDestroyed()) window.webContents.send('korvu:event', name, value);
    }
  };
  for (const name of kForwarded) settings.on(name, (value) => tell(name, value));
  for (const [name, isThere] of [['connected', true], ['lost', false]]) {
    settings.on(name, () => {
      isServiceThere = isThere;
      tell('isServiceThere', isThere);
    });
  }

  // Electron passes no more of an error than its message, so what went wrong is part of the result.
  ipcMain.handle('korvu:set', async (_event, name, ...parameters) => {
    if (!kSetters.includes(name)) return { error: { message: `no setter for windows: ${name}` } };
    try {
      return { stored: await settings[name](...parameters) };
    } catch (error) {
      return { error: { code: error.code, message: error.message, stored: error.stored } };
    }
  });

  // For a window that opens later than the values have come.
  ipcMain.handle('korvu:values', () => ({ isServiceThere, values: settings.values }));

  // Goes on until there is a service, and never holds up the application.
  const connect = async () => {
    try {
      await settings.connect({ timeoutMs: Infinity });
    } catch (error) {
      if (error.code !== 'ERR_KORVU_CLOSED') throw error;
    }
  };

  return {
    settings,
    connected: connect(),
    addWindow(window) {
      windows.add(window);
      window.once('closed', () => windows.delete(window));
    },
    // For 'will-quit'. Nobody need wait for it.
    close: () => settings.close(),
  };
}
