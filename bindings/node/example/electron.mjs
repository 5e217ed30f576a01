// How an Electron application starts main.mjs. "npm install electron korvu-settings", then
// "npx electron example/electron.mjs".

import { app, BrowserWindow, ipcMain } from 'electron';
import { fileURLToPath } from 'node:url';
import { shareSettings } from './main.mjs';

const shared = shareSettings(ipcMain);

// Not awaited here: Electron is ready only after this module has run.
app.whenReady().then(async () => {
  const window = new BrowserWindow({
    webPreferences: { preload: fileURLToPath(new URL('preload.cjs', import.meta.url)) },
  });
  shared.addWindow(window);
  await window.loadFile(fileURLToPath(new URL('window.html', import.meta.url)));
});

app.on('window-all-closed', () => app.quit());
app.on('will-quit', () => { shared.close(); });
