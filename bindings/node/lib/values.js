'use strict';

const { events } = require('./events.js');

const hasOwn = (object, key) => Object.prototype.hasOwnProperty.call(object, key);

// The last value of each event; where an event tells of several things, that of each of them.
class Values {
  #last = new Map();
  #snapshot;

  set({ name, keyOf, isPassing }, value) {
    if (isPassing) return;
    this.#last.set(
        name,
        keyOf ? Object.freeze({ ...this.#last.get(name), [keyOf(value)]: value }) : value);
    this.#snapshot = undefined;
  }

  has({ name, keyOf }, value) {
    if (!this.#last.has(name)) return false;
    return keyOf === undefined || hasOwn(this.#last.get(name), keyOf(value));
  }

  // All that `set` was called with, but for what has been overtaken.
  *entries(wanted = events) {
    for (const event of wanted) {
      if (!this.#last.has(event.name)) continue;
      const last = this.#last.get(event.name);
      for (const value of event.keyOf ? Object.values(last) : [last]) yield [event, value];
    }
  }

  // All that an event of this name has told last.
  of(name) {
    const event = events.find((one) => one.name === name);
    return [...this.entries([event])].map(([, value]) => value);
  }

  snapshot() {
    this.#snapshot ??= Object.freeze(Object.fromEntries(this.#last));
    return this.#snapshot;
  }

  clear() {
    this.#last.clear();
    this.#snapshot = undefined;
  }
}

module.exports = { Values };
