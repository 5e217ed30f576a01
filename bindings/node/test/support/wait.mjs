// Waiting for what a test wants to see. Patience runs out only when nothing has happened for long.

const kPatienceMs = 60_000;

export async function patience(promise, what) {
  let timer;
  const late = new Promise((_, reject) => {
    timer = setTimeout(() => reject(new Error(`waited in vain for ${what}`)), kPatienceMs);
  });
  try {
    return await Promise.race([promise, late]);
  } finally {
    clearTimeout(timer);
  }
}

// The next value of an event for which `isIt` holds. Each event is progress.
export function next(emitter, name, isIt = () => true) {
  let end;
  const found = new Promise((resolve, reject) => {
    let timer;
    const restart = () => {
      clearTimeout(timer);
      timer = setTimeout(() => reject(new Error(`waited in vain for "${name}"`)), kPatienceMs);
    };
    const onEvent = (value) => {
      restart();
      if (isIt(value)) resolve(value);
    };
    restart();
    emitter.on(name, onEvent);
    end = () => {
      clearTimeout(timer);
      emitter.removeListener(name, onEvent);
    };
  });
  return found.finally(end);
}

export const pause = (milliseconds) =>
    new Promise((resolve) => { setTimeout(resolve, milliseconds); });

// Until it holds, looked at again and again; `progress` is whatever changes while things go on.
export async function until(condition, what, progress = () => undefined) {
  let last = progress();
  let since = performance.now();
  while (!await condition()) {
    const now = progress();
    if (now !== last) since = performance.now();
    last = now;
    if (performance.now() - since > kPatienceMs) throw new Error(`waited in vain for ${what}`);
    await pause(5);
  }
}
