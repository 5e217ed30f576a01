'use strict';
// The script's end of the addon: it takes the letters out of the mailbox and hands each to whom it is
// addressed. It knows nothing of what they mean. Whoever is called here throws nothing.
//
// A burst of letters does not hold up the event loop: after a few milliseconds of delivering, the
// rest waits for the loop's next round.

const { performance } = require('perf_hooks');
const { events } = require('./events.js');

// As in src/letter.h.
const kManualReply = 41;
const kTaskDone = 42;

// Fields in one portion: what is turned into script values before the clock is looked at.
const kPortion = 256;
const kSliceMs = 5;

class Hub {
  #native;
  #tasks = new Map();
  #requests = new Map();
  #receivers = new Map();
  #holderCount = 0;

  // When the service was last heard of, on the clock of performance.now().
  lastSign = 0;
  constructor(native) {
    this.#native = native;
    native.start(() => this.#deliver());
  }

  get native() {
    return this.#native;
  }

  // How many wait for a letter.
  get openCount() {
    return this.#tasks.size + this.#requests.size + this.#receivers.size;
  }

  // The fields of the letter that tells the end.
  run(name, ...parameters) {
    const task = this.#native.nextNumber();
    return new Promise((resolve) => {
      this.#tasks.set(task, resolve);
      this.#native[name](task, ...parameters);
    });
  }

  // Sends a manual request. `onAnswer` is called with the request part and the reply value; after a
  // shutdown, not at all.
  request(message, onAnswer) {
    const request = this.#native.nextNumber();
    this.#requests.set(request, onAnswer);
    this.#native.sendManual(request, message);
  }

  forgetRequests() {
    this.#requests.clear();
  }

  // From now on `receive(event, value)` is called for the callbacks of a new registration, whose
  // number this returns.
  addReceiver(receive) {
    const registration = this.#native.nextNumber();
    this.#receivers.set(registration, receive);
    return registration;
  }

  removeReceiver(registration) {
    this.#receivers.delete(registration);
  }

  // Calls of hold(true) and hold(false) come in pairs: the process stays alive in between.
  hold(isHeld) {
    this.#holderCount += isHeld ? 1 : -1;
    if (this.#holderCount === (isHeld ? 1 : 0)) this.#native.hold(isHeld);
  }

  // One slice. What comes after it waits for the loop's next round, even if the mailbox is empty now:
  // Node answers to wake-ups for as long as there are new ones, without a round in between.
  #deliver() {
    const begin = performance.now();
    let letters = this.#native.take(kPortion, true);
    if (letters.length === 0) return;
    while (letters.length > 0) {
      for (const letter of letters) this.#deliverOne(letter);
      this.lastSign = performance.now();
      if (this.lastSign - begin >= kSliceMs) break;
      letters = this.#native.take(kPortion, false);
    }
    const next = setImmediate(() => this.#deliver());
    if (this.#holderCount === 0) next.unref();
  }

  #deliverOne([kind, address, fields]) {
    if (kind === kTaskDone) {
      const resolve = this.#tasks.get(address);
      this.#tasks.delete(address);
      resolve?.(fields);
    } else if (kind === kManualReply) {
      const onAnswer = this.#requests.get(address);
      this.#requests.delete(address);
      onAnswer?.(fields[0], fields[1]);
    } else {
      this.#receivers.get(address)?.(events[kind], events[kind].read(fields));
    }
  }
}

module.exports = { Hub };
