'use strict';
// What the window's page sees: window.korvu.

const { contextBridge, ipcRenderer } = require('electron');

contextBridge.exposeInMainWorld('korvu', {
  values: () => ipcRenderer.invoke('korvu:values'),
  set: async (name, ...parameters) => {
    const { stored, error } = await ipcRenderer.invoke('korvu:set', name, ...parameters);
    if (error) throw Object.assign(new Error(error.message), error);
    return stored;
  },
  onEvent: (listener) => {
    ipcRenderer.on('korvu:event', (_event, name, value) => listener(name, value));
  },
});
