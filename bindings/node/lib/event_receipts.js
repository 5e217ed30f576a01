'use strict';
// The receipts of setters below the API version that has manual requests: the event of the setting is
// all that tells. Where nothing changes there is none, so a value that is known to stand counts as
// stored at once.

const { KorvuError } = require('./errors.js');
const { startTimer } = require('./receipts.js');

class EventReceipts {
  #open = new Set();

  add({ what, change, standing, timeoutMs }) {
    if (change.canStand && standing.some(change.isReported)) {
      return Promise.resolve(change.ofEvent(standing.find(change.isReported)));
    }
    return new Promise((resolve, reject) => {
      const receipt = { what, change, resolve, reject };
      receipt.timer = startTimer(timeoutMs, () => {
        this.#open.delete(receipt);
        reject(new KorvuError(
            'ERR_KORVU_TIMED_OUT', `${what}: no event told of it within ${timeoutMs} ms`));
      });
      this.#open.add(receipt);
    });
  }

  onEvent(name, value) {
    for (const receipt of this.#open) {
      const { change, resolve, timer } = receipt;
      if (change.event !== name || !change.isReported(value)) continue;
      this.#open.delete(receipt);
      clearTimeout(timer);
      resolve(change.ofEvent(value));
    }
  }

  close() {
    for (const { what, reject, timer } of this.#open) {
      clearTimeout(timer);
      reject(new KorvuError(
          'ERR_KORVU_CLOSED', `${what}: closed before the service had confirmed it`));
    }
    this.#open.clear();
  }
}

module.exports = { EventReceipts };
