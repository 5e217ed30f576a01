'use strict';
// Whether the service is there. The library regains a lost connection without a word; a manual
// request tells: it is answered at once by a service that is there, with an empty value when the
// connection broke or was opened anew meanwhile, and not at all while there is none.

const { performance } = require('perf_hooks');
const { kConnectionProbe } = require('./keys.js');

// The library gives an exchange up after 3 s, 1 for the write and 2 for the reply.
const kAnswerLimitMs = 4000;

class Watch {
  #hub;
  #onChange;
  #timer;
  #isAsking = false;
  #askedAt = 0;
  #isThere = true;

  constructor(hub, intervalMs, onChange) {
    this.#hub = hub;
    this.#onChange = onChange;
    this.#timer = setInterval(() => this.#onTime(), intervalMs).unref();
  }

  stop() {
    clearInterval(this.#timer);
    this.#timer = undefined;
  }

  #onTime() {
    if (!this.#isAsking) {
      this.#ask();
    } else if (performance.now() - Math.max(this.#askedAt, this.#hub.lastSign) > kAnswerLimitMs) {
      this.#tell(false);
    }
  }

  #ask() {
    this.#isAsking = true;
    this.#askedAt = performance.now();
    this.#hub.request(kConnectionProbe, (_, value) => {
      this.#isAsking = false;
      if (this.#timer === undefined) return;
      this.#tell(value !== '');
      // The next answer tells of the return.
      if (value === '') this.#ask();
    });
  }

  #tell(isThere) {
    if (isThere === this.#isThere) return;
    this.#isThere = isThere;
    this.#onChange(isThere);
  }
}

module.exports = { Watch };
