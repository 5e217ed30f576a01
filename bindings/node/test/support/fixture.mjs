// A service and a connected Settings object for one test.

import { Settings } from 'korvu-settings';
import processWide from '../../lib/process.js';
import { Service } from './service.mjs';

export async function withService(body) {
  const service = await Service.start();
  try {
    return await body(service);
  } catch (error) {
    // What the failed test has left open is not to keep the process.
    processWide.hub.native.hold(false);
    throw error;
  } finally {
    await service.stop();
  }
}

export function connected(body, options) {
  return () => withService(async (service) => {
    const settings = new Settings(options);
    await settings.connect({ timeoutMs: 60_000 });
    try {
      if (settings.apiVersion === 9) await settings.ready({ timeoutMs: 60_000 });
      await body(settings, service);
    } finally {
      await settings.close();
    }
  });
}
