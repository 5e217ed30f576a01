'use strict';
// The process's one connection, and who uses it.
//
// The first member to join connects, the last one to leave shuts the library down; nothing is asked
// of the library while that runs, since it would drop it. A member that has not joined yet and does
// not want to wait any longer leaves, too.
//
// The wait for the service goes in pieces of a second, so that a member can leave without waiting for
// its time-out to pass in the library.

const { performance } = require('perf_hooks');
const { KorvuError } = require('./errors.js');
const { Values } = require('./values.js');

const kLongestPieceMs = 1000;
const kFirstPauseMs = 100;
const kLongestPauseMs = 1000;

class Connection {
  #hub;
  #waiting = new Map();  // member to { deadline, resolve, reject }
  #members = new Set();
  #attempt;   // the promise of the attempt that is under way
  #piece;     // the promise of its latest piece
  #shutdown;  // the promise of the shutdown that is under way
  #isOpen = false;
  #apiVersion;
  #values = new Values();

  // Called with the reason when the connection is shut down.
  onShutdown = () => {};

  constructor(hub) {
    this.#hub = hub;
  }

  isMember(member) {
    return this.#members.has(member);
  }

  // A member has `registration`, `apiVersion`, and `replay(event, value)` for what was received
  // before it came. `isRegistered` and `registered` are for this class.
  async join(member, timeoutMs) {
    const deadline = performance.now() + timeoutMs;
    const joined = new Promise((resolve, reject) => {
      this.#waiting.set(member, { deadline, resolve, reject });
    });
    this.#begin(member);
    await joined;
    for (const [event, value] of this.#values.entries()) member.replay(event, value);
  }

  async #begin(member) {
    while (this.#shutdown) await this.#shutdown;
    if (!this.#waiting.has(member)) return;
    if (this.#apiVersion !== undefined && this.#apiVersion !== member.apiVersion) {
      this.#refuse(member, new KorvuError(
          'ERR_KORVU_API_VERSION',
          `the process's connection has API version ${this.#apiVersion}, which is one for all; ` +
              `this Settings object asks for ${member.apiVersion}`));
      return;
    }
    if (this.#apiVersion === undefined) {
      this.#apiVersion = member.apiVersion;
      this.#hub.run('setApiVersion', member.apiVersion);
    }
    member.isRegistered = true;
    // Its end comes behind the letters of the registration's own callbacks.
    member.registered = this.#hub.run('register', member.registration);
    await member.registered;
    if (!this.#waiting.has(member)) return;
    if (this.#isOpen) {
      this.#admit(member);
    } else {
      this.#attempt ??= this.#connect();
    }
  }

  #admit(member) {
    const { resolve } = this.#waiting.get(member);
    this.#waiting.delete(member);
    this.#members.add(member);
    resolve();
  }

  #refuse(member, error) {
    const { reject } = this.#waiting.get(member);
    this.#waiting.delete(member);
    reject(error);
  }

  async #connect() {
    let pauseMs = kFirstPauseMs;
    while (this.#waiting.size > 0 && !this.#isOpen) {
      // What arrives first of all is for those who are registered by then.
      await Promise.all([...this.#waiting.keys()].map(({ registered }) => registered));
      if (this.#waiting.size === 0) break;
      const begin = performance.now();
      const pieceMs = Math.ceil(Math.min(kLongestPieceMs, Math.max(1, this.#timeLeft(begin))));
      this.#piece = this.#hub.run('connect', pieceMs);
      const [result] = await this.#piece;
      this.#isOpen = result === 0;
      if (this.#isOpen) break;
      this.#giveUp();
      // One that fails at once has found half a service; it must not be stormed.
      if (this.#waiting.size > 0 && performance.now() - begin < pieceMs / 2) {
        await pause(Math.min(pauseMs, this.#timeLeft(performance.now())));
        pauseMs = Math.min(2 * pauseMs, kLongestPauseMs);
      }
    }
    this.#attempt = undefined;
    if (this.#isOpen) {
      for (const member of [...this.#waiting.keys()]) {
        if (member.isRegistered) this.#admit(member);
      }
    }
    await this.#endIfUnused();
  }

  #timeLeft(now) {
    const deadlines = [...this.#waiting.values()].map(({ deadline }) => deadline);
    return Math.max(0, Math.min(...deadlines) - now);
  }

  #giveUp() {
    const now = performance.now();
    for (const [member, { deadline }] of [...this.#waiting]) {
      if (deadline > now) continue;
      this.#refuse(member, new KorvuError(
          'ERR_KORVU_NO_SERVICE',
          'the tablet driver\'s settings service did not appear in time, or takes no connection'));
      this.#unregister(member);
    }
  }

  #unregister(member) {
    if (!member.isRegistered) return undefined;
    member.isRegistered = false;
    return this.#hub.run('unregister', member.registration);
  }

  // Resolves when nothing of the member is left in the library.
  async leave(member) {
    if (this.#waiting.has(member)) {
      this.#refuse(member, new KorvuError('ERR_KORVU_CLOSED', 'closed before it was connected'));
    }
    this.#members.delete(member);
    const isLast = this.#members.size + this.#waiting.size === 0;
    if (isLast && this.#isOpen) {
      member.isRegistered = false;  // the shutdown drops it
    } else {
      await this.#unregister(member);
    }
    // One that connects just now has nobody any more, and is shut down at its end.
    if (isLast && this.#attempt) await this.#piece;
    await this.#endIfUnused();
  }

  async #endIfUnused() {
    if (this.#members.size + this.#waiting.size > 0 || this.#attempt) return;
    if (this.#isOpen && !this.#shutdown) {
      this.#isOpen = false;
      this.onShutdown();
      this.#shutdown = this.#hub.run('shutdown').then(() => {
        this.#shutdown = undefined;
        this.#hub.forgetRequests();
        this.#values.clear();
      });
    }
    this.#apiVersion = undefined;
    await this.#shutdown;
  }

  // What a member's registration has received; the others get the same.
  remember(event, value) {
    this.#values.set(event, value);
  }
}

function pause(milliseconds) {
  return new Promise((resolve) => setTimeout(resolve, milliseconds).unref());
}

module.exports = { Connection };
