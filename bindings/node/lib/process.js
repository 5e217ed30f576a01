'use strict';
// What the process has one of. It hangs on the addon, of which there is one whatever a bundler or a
// test runner makes of this package: modules may be loaded twice.

const native = require('./native.js');
const { Connection } = require('./connection.js');
const { Hub } = require('./hub.js');
const { Receipts } = require('./receipts.js');

function make() {
  const hub = new Hub(native);
  const connection = new Connection(hub);
  const receipts = new Receipts(hub);
  connection.onShutdown = () => receipts.close();
  return { hub, connection, receipts };
}

native.shared ??= make();

module.exports = native.shared;
