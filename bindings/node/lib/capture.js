'use strict';
// The keys that the user types, as an async iterator over the texts that the service shows for them.

const { keys } = require('./keys.js');

const kPauseMs = 50;
const kPatienceMs = 2000;

class KeyCapture {
  #steps;
  #texts = [];
  #taker;       // { resolve, reject } of a next() that waits
  #isShown = false;
  #failure;
  #finished;    // the promise of the sequence
  #isOver = false;

  // `steps`: start(), read(key), finish(), which return promises, and onEnd().
  constructor(steps) {
    this.#steps = steps;
    steps.start().catch((error) => this.fail(error));
  }

  [Symbol.asyncIterator]() {
    return this;
  }

  async next() {
    if (this.#texts.length > 0) return { value: this.#texts.shift(), done: false };
    if (this.#failure) throw this.#failure;
    if (this.#finished || this.#isOver) return { value: undefined, done: true };
    return new Promise((resolve, reject) => {
      const before = this.#taker;
      this.#taker = {
        resolve: (result) => { before?.resolve({ value: undefined, done: true }); resolve(result); },
        reject: (error) => { before?.reject(error); reject(error); },
      };
    });
  }

  // A loop over the texts that ends before they do ends the capture.
  async return(value) {
    await this.finish();
    return { value, done: true };
  }

  finish() {
    this.#finished ??= this.#finish();
    return this.#finished;
  }

  // What the service shows. Empty texts come outside a capture, too.
  receive(text) {
    if (text === '' || this.#finished || this.#isOver) return;
    this.#isShown = true;
    const taker = this.#take();
    if (taker) {
      taker.resolve({ value: text, done: false });
    } else {
      this.#texts.push(text);
    }
  }

  // The capture is over, for a reason that next() tells.
  fail(error) {
    if (this.#isOver) return;
    this.#isOver = true;
    this.#failure = error;
    this.#steps.onEnd();
    this.#take()?.reject(error);
  }

  #take() {
    const taker = this.#taker;
    this.#taker = undefined;
    return taker;
  }

  async #finish() {
    this.#take()?.resolve({ value: undefined, done: true });
    if (this.#failure) throw this.#failure;
    try {
      if (this.#isShown) await this.#awaitKeys();
      return await this.#steps.finish();
    } finally {
      this.#isOver = true;
      this.#steps.onEnd();
    }
  }

  // The service announces the text and then the keys, of which no event tells. Asking for them brings
  // them into the library as well, if they are still on their way.
  async #awaitKeys() {
    for (let waited = 0; waited < kPatienceMs; waited += kPauseMs) {
      if (await this.#steps.read(keys.capturedKeys) !== '') return;
      await new Promise((resolve) => setTimeout(resolve, kPauseMs).unref());
    }
  }
}

module.exports = { KeyCapture };
