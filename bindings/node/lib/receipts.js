'use strict';
// How a setter's promise learns what became of it.
//
// The library's setters queue their messages and tell nothing. What tells is a manual request: its
// answer comes when all that was queued before it has been exchanged with the service, and is empty
// if the connection was lost on the way, the service's way of refusing a message included. So changes
// go in rounds:
//
//   1. the fence: a request for a value that nobody else asks for. Its answer says that the changes
//      called before it have been acknowledged.
//   2. the reads: a request for each key of these changes. They say what the service has stored now.
//   3. a probe, if one of these values is empty: an empty answer to that is a failed exchange, and
//      then the empty value may be one as well.
//
// One fence at a time: requests with the same text are answered together, by the first one sent. For
// the same reason the reads wait for the fence: an older request for the same key may still be queued
// before it. A change that is called meanwhile goes to the library at once, and into the next round.
//
// What is called while there is no connection is discarded when one opens, and a fence that is sent
// right then confirms nothing of it. So values that each connection brings put whatever is open in
// doubt: if something else is stored, it was lost rather than not taken.

const { KorvuError } = require('./errors.js');
const { kConnectionProbe, keys, valueRequest } = require('./keys.js');

const kFence = valueRequest(keys.unasked);

class Receipts {
  #hub;
  #next = [];     // called since the fence was sent
  #round;         // those that the fence and the reads are about
  #requests = new Set();  // of the application's own
  #latest = new Map();  // setting to the receipt of its latest change

  constructor(hub) {
    this.#hub = hub;
  }

  // Resolves with what judge(texts, isOvertaken) returns, the texts being the values of the keys in
  // `reads`; rejects with what it throws, and if the connection is lost or time runs out.
  add({ what, reads, setting, judge, timeoutMs }) {
    return new Promise((resolve, reject) => {
      const receipt = { what, reads, setting, judge, resolve, reject, isSettled: false,
                        isInDoubt: false };
      receipt.timer = startTimer(timeoutMs, () => this.#settle(receipt, () => {
        throw new KorvuError(
            'ERR_KORVU_TIMED_OUT', `${what}: the service did not confirm it within ${timeoutMs} ms`);
      }));
      if (setting !== undefined) this.#latest.set(setting, receipt);
      this.#next.push(receipt);
      this.#begin();
    });
  }

  // Sends a manual request of the application's own, and resolves with its answer. One with the
  // fence's text waits for its turn.
  request(message, timeoutMs) {
    return new Promise((resolve, reject) => {
      const request = { what: 'request', resolve, reject, isSettled: false };
      request.timer = startTimer(timeoutMs, () => this.#settle(request, () => {
        throw new KorvuError('ERR_KORVU_TIMED_OUT', `request: not answered within ${timeoutMs} ms`);
      }));
      const onAnswer = (requestPart, value) => {
        this.#requests.delete(request);
        this.#settle(request, () => ({ requestPart, value }));
      };
      this.#requests.add(request);
      if (message === kFence) {
        this.#next.push({ isSettled: false, onFence: onAnswer });
        this.#begin();
      } else {
        this.#hub.request(message, onAnswer);
      }
    });
  }

  // A connection may have been opened since the changes that are open were called.
  putInDoubt() {
    for (const receipt of [...this.#round ?? [], ...this.#next]) receipt.isInDoubt = true;
  }

  // All that is open is rejected: there is no connection any more that could confirm it.
  close() {
    const open = [...this.#requests, ...this.#round ?? [], ...this.#next];
    this.#requests.clear();
    this.#round = undefined;
    this.#next = [];
    for (const receipt of open.filter(({ onFence }) => !onFence)) {
      this.#settle(receipt, () => {
        throw new KorvuError(
            'ERR_KORVU_CLOSED', `${receipt.what}: closed before the service had confirmed it`);
      });
    }
  }

  #begin() {
    this.#next = this.#next.filter(({ isSettled }) => !isSettled);
    if (this.#round || this.#next.length === 0) return;
    const round = this.#next;
    this.#round = round;
    this.#next = [];
    this.#hub.request(kFence, (key, value) => {
      if (this.#round === round) this.#onFence(round, key, value);
    });
  }

  #onFence(round, key, value) {
    for (const { onFence } of round) onFence?.(key, value);
    const receipts = round.filter(({ onFence, isSettled }) => !onFence && !isSettled);
    if (key === '') this.#onLoss(receipts);
    if (key === '' || receipts.length === 0) {
      this.#end(round);
      return;
    }
    this.#read(round, receipts, value === '');
  }

  #read(round, receipts, isProbed) {
    const stored = new Map();  // key to its value, or undefined after a loss
    const wanted = new Set(receipts.flatMap(({ reads }) => reads));
    let unanswered = wanted.size;
    const onRead = () => {
      if (this.#round !== round) return;
      const isEmpty = [...stored.values()].some((value) => value === '' || value === undefined);
      if (!isEmpty && !isProbed) {
        this.#judge(round, receipts, stored);
        return;
      }
      this.#hub.request(kConnectionProbe, (_, answer) => {
        if (this.#round !== round) return;
        if (answer === '') {
          for (const [key, value] of stored) if (value === '') stored.set(key, undefined);
          this.#onLoss([]);
        }
        this.#judge(round, receipts, stored);
      });
    };
    if (unanswered === 0) onRead();
    for (const key of wanted) {
      this.#hub.request(valueRequest(key), (answeredKey, value) => {
        stored.set(key, answeredKey === '' ? undefined : value);
        if (--unanswered === 0) onRead();
      });
    }
  }

  #judge(round, receipts, stored) {
    for (const receipt of receipts) {
      const texts = receipt.reads.map((key) => stored.get(key));
      const isLost = texts.includes(undefined);
      const isOvertaken = receipt.setting !== undefined &&
          this.#latest.get(receipt.setting) !== receipt;
      this.#settle(receipt, () => {
        if (isLost) throw lost(receipt);
        try {
          return receipt.judge(texts, isOvertaken);
        } catch (error) {
          throw receipt.isInDoubt ? lost(receipt) : error;
        }
      });
    }
    this.#end(round);
  }

  // These have been lost; what was called meanwhile may have been.
  #onLoss(receipts) {
    for (const receipt of receipts) this.#settle(receipt, () => { throw lost(receipt); });
    this.putInDoubt();
  }

  #end() {
    this.#round = undefined;
    this.#begin();
  }

  #settle(receipt, result) {
    if (receipt.isSettled) return;
    receipt.isSettled = true;
    clearTimeout(receipt.timer);
    if (this.#latest.get(receipt.setting) === receipt) this.#latest.delete(receipt.setting);
    try {
      receipt.resolve(result());
    } catch (error) {
      receipt.reject(error);
    }
  }
}

function lost({ what }) {
  return new KorvuError(
      'ERR_KORVU_LOST',
      `${what}: the connection was lost before the service had confirmed it, or the service refused ` +
          'it. It may have been stored all the same');
}

// setTimeout takes no more than 31 bits; what is longer is without end here.
function startTimer(timeoutMs, onTime) {
  return timeoutMs > 0x7fffffff ? undefined : setTimeout(onTime, timeoutMs).unref();
}

module.exports = { Receipts, startTimer };
