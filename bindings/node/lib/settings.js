'use strict';

const { EventEmitter } = require('events');
const { duration, integer, option, text } = require('./arguments.js');
const { KeyCapture } = require('./capture.js');
const { KorvuError } = require('./errors.js');
const { EventReceipts } = require('./event_receipts.js');
const { connection, hub, receipts } = require('./process.js');
const { setters } = require('./setters.js');
const { Values } = require('./values.js');
const { Watch } = require('./watch.js');

const kHighestApiVersion = 9;  // which opens manual requests, too
const kConnectTimeoutMs = 5000;
const kReceiptTimeoutMs = 10000;

let activeCapture;  // the service knows one at a time

let set;  // Settings' own way to call a setter, for the methods that are made from the table

class Settings extends EventEmitter {
  static #_ = set = (settings, ...parameters) => settings.#set(...parameters);

  #apiVersion;
  #watchIntervalMs;
  #timeoutMs;
  #values = new Values();
  #eventReceipts = new EventReceipts();
  #member;         // what stands for this object while it is connected or about to be
  #connecting;
  #closing;
  #watch;
  #isUnreferenced = false;
  #isHolding = false;

  constructor(options) {
    super();
    this.#apiVersion = option(
        options, 'apiVersion', (name, value) => integer(name, value, 0, kHighestApiVersion),
        kHighestApiVersion);
    this.#timeoutMs = option(options, 'timeoutMs', duration, kReceiptTimeoutMs);
    this.#watchIntervalMs = option(
        options, 'watchIntervalMs', (name, value) => integer(name, value, 1, 0x7fffffff), undefined);
    if (this.#watchIntervalMs !== undefined && this.#apiVersion < kHighestApiVersion) {
      throw new RangeError(`options.watchIntervalMs needs API version ${kHighestApiVersion}`);
    }
  }

  get apiVersion() {
    return this.#apiVersion;
  }

  get values() {
    return this.#values.snapshot();
  }

  get isConnected() {
    return this.#member !== undefined && connection.isMember(this.#member);
  }

  async connect(options) {
    const timeoutMs = option(options, 'timeoutMs', duration, kConnectTimeoutMs);
    while (this.#closing) await this.#closing;
    this.#connecting ??= this.#connect(timeoutMs);
    await this.#connecting;
  }

  async #connect(timeoutMs) {
    const member = {
      apiVersion: this.#apiVersion,
      registration: hub.addReceiver((event, value) => this.#receive(event, value)),
      replay: (event, value) => {
        if (!this.#values.has(event, value)) this.#tell(event, value);
      },
    };
    this.#member = member;
    this.#values.clear();
    this.#hold();
    try {
      await connection.join(member, timeoutMs);
      if (!connection.isMember(member)) {
        throw new KorvuError('ERR_KORVU_CLOSED', 'closed just when it was connected');
      }
      if (this.#watchIntervalMs !== undefined) {
        this.#watch = new Watch(hub, this.#watchIntervalMs, (isThere) => this.#onWatch(isThere));
        this.#emitSafely('connected');
      }
    } catch (error) {
      if (this.#member === member) this.#forget();
      throw error;
    }
  }

  async close() {
    this.#closing ??= this.#close().finally(() => {
      this.#closing = undefined;
      this.#hold();
    });
    await this.#closing;
  }

  async #close() {
    const member = this.#member;
    if (!member) return;
    hub.removeReceiver(member.registration);
    this.#watch?.stop();
    this.#watch = undefined;
    this.#eventReceipts.close();
    if (activeCapture?.owner === this) {
      activeCapture.capture.fail(
          new KorvuError('ERR_KORVU_CLOSED', 'captureKeys: closed while keys were captured'));
    }
    await connection.leave(member);
    if (this.#member === member) this.#forget();
  }

  #forget() {
    hub.removeReceiver(this.#member.registration);
    this.#member = undefined;
    this.#connecting = undefined;
    this.#hold();
  }

  ref() {
    this.#isUnreferenced = false;
    this.#hold();
    return this;
  }

  unref() {
    this.#isUnreferenced = true;
    this.#hold();
    return this;
  }

  #hold() {
    const isHolding = (this.#member || this.#closing) !== undefined && !this.#isUnreferenced;
    if (isHolding === this.#isHolding) return;
    this.#isHolding = isHolding;
    hub.hold(isHolding);
  }

  // Resolves when all values that the service has for a new connection have come.
  async ready(options) {
    await this.#confirm('ready', options, { reads: [], judge: () => undefined });
  }

  async request(message, options) {
    text('message', message);
    const timeoutMs = this.#checkedTimeout('request', options, kHighestApiVersion);
    return receipts.request(message, timeoutMs);
  }

  async read(key, options) {
    const wanted = text('key', key);
    return this.#confirm('read', options, { reads: [wanted], judge: ([value]) => value });
  }

  captureKeys(options) {
    const timeoutMs = this.#checkedTimeout('captureKeys', options, 0);
    if (activeCapture) {
      throw new KorvuError('ERR_KORVU_BUSY', 'captureKeys: keys are being captured already');
    }
    const acknowledged = (what) => this.#apiVersion < kHighestApiVersion ?
        undefined :
        this.#confirm(what, { timeoutMs }, { reads: [], judge: () => undefined });
    const capture = new KeyCapture({
      start: async () => {
        // What an earlier capture has left is not this one's.
        hub.run('finishKeyCapture');
        hub.run('set', 'KorvuISD_StartKeyCapture');
        await acknowledged('captureKeys');
      },
      read: async (key) => this.#apiVersion < kHighestApiVersion ?
          'unknown' :
          this.read(key, { timeoutMs }),
      finish: async () => {
        const [sequence] = await hub.run('finishKeyCapture');
        await acknowledged('finish');
        return sequence;
      },
      onEnd: () => {
        if (activeCapture?.capture === capture) activeCapture = undefined;
      },
    });
    activeCapture = { owner: this, capture };
    return capture;
  }

  async setLogLevel(level) {
    integer('level', level, 0, 3);
    hub.hold(true);  // without a connection, nothing else keeps the process alive until it is done
    try {
      await hub.run('setLogLevel', level);
    } finally {
      hub.hold(false);
    }
  }

  #checkedTimeout(what, options, since) {
    const timeoutMs = option(options, 'timeoutMs', duration, this.#timeoutMs);
    if (!this.isConnected) {
      throw new KorvuError('ERR_KORVU_NOT_CONNECTED', `${what}: not connected`);
    }
    if (this.#apiVersion < since) {
      throw new KorvuError(
          'ERR_KORVU_API_VERSION',
          `${what}: opened by API version ${since}; this Settings object has ${this.#apiVersion}`);
    }
    return timeoutMs;
  }

  #confirm(what, options, receipt) {
    const timeoutMs = this.#checkedTimeout(what, options, kHighestApiVersion);
    return receipts.add({ what, timeoutMs, ...receipt });
  }

  // Calls a setter of the library, and finds out what became of it.
  async #set(what, { event, eventBelow2, since }, change, options) {
    const timeoutMs = this.#checkedTimeout(what, options, change.since ?? since ?? 0);
    hub.run('set', `KorvuISD_${what[0].toUpperCase()}${what.slice(1)}`, ...change.parameters);
    if (this.#apiVersion < kHighestApiVersion) {
      change.event = this.#apiVersion < 2 && eventBelow2 ? eventBelow2 : event;
      const standing = this.#values.of(change.event);
      return this.#eventReceipts.add({ what, change, standing, timeoutMs });
    }
    return receipts.add({
      what,
      timeoutMs,
      reads: change.reads,
      setting: change.setting,
      judge: (texts, isOvertaken) => {
        const stored = change.stored(texts);
        if (!isOvertaken && !change.isTaken(stored, this.values)) {
          throw new KorvuError(
              'ERR_KORVU_NOT_TAKEN',
              `${what}: the service did not store it; it has ${JSON.stringify(stored)}`,
              { stored });
        }
        return stored;
      },
    });
  }

  #receive(event, value) {
    connection.remember(event, value);
    if (event.isPerConnection) receipts.putInDoubt();
    this.#tell(event, value);
  }

  #tell(event, value) {
    this.#values.set(event, value);
    this.#eventReceipts.onEvent(event.name, value);
    if (event.name === 'capturedKeystrokes' && activeCapture?.owner === this) {
      activeCapture.capture.receive(value);
    }
    this.#emitSafely(event.name, value);
  }

  #onWatch(isThere) {
    if (!isThere && activeCapture?.owner === this) {
      activeCapture.capture.fail(new KorvuError(
          'ERR_KORVU_LOST', 'captureKeys: the connection was lost while keys were captured'));
    }
    this.#emitSafely(isThere ? 'connected' : 'lost');
  }

  // A listener's exception is an uncaught one, as from any other event, and not the affair of whoever
  // has called us: what comes behind is still delivered if the program goes on.
  #emitSafely(name, ...values) {
    try {
      this.emit(name, ...values);
    } catch (error) {
      queueMicrotask(() => { throw error; });
    }
  }
}

for (const [name, setter] of Object.entries(setters)) {
  const { form, arity = 1 } = setter;
  const method = {
    async [name](...parameters) {
      const change = form(...parameters.slice(0, arity));
      return set(this, name, setter, change, parameters[arity]);
    },
  }[name];
  Object.defineProperty(
      Settings.prototype, name, { value: method, writable: true, configurable: true });
}

module.exports = { Settings };
